#include "simulator/EventSource.h"

#include "comkit/Dispatch.h"

namespace vexa {

using comkit::ComPtr;

HRESULT EventSource::EnumConnectionPoints(IEnumConnectionPoints** out) {
    using List = comkit::PointerEnumerator<IEnumConnectionPoints, IConnectionPoint>;
    if (!out) return E_POINTER;
    *out = nullptr;
    return comkit::Guarded([&] {
        std::vector<ComPtr<IConnectionPoint>> points{ComPtr<IConnectionPoint>(&m_point)};
        *out = comkit::MakeObject<List>(std::move(points)).Detach();
    });
}

HRESULT EventSource::FindConnectionPoint(REFIID iid, IConnectionPoint** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (!IsEqualIID(iid, m_point.Iid())) return CONNECT_E_NOCONNECTION;
    ComPtr<IConnectionPoint>(&m_point).CopyTo(out);
    return S_OK;
}

void EventSource::Send(DISPID id, VARIANT* arguments, UINT count) const {
    for (const auto& sink : m_point.Sinks()) {
        DISPPARAMS params{arguments, nullptr, count, 0};
        comkit::Variant result;
        comkit::ExceptionInfo info;
        sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, result.Put(), info.Put(), nullptr);
    }
}

}  // namespace vexa
