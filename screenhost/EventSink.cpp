#include "screenhost/EventSink.h"

#include <algorithm>
#include <array>

#include "comkit/Bstr.h"
#include "comkit/Errors.h"
#include "screenhost/TextCursor.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr UINT MaxNames = 32;

/// The default source interface of the control's class.
comkit::ComPtr<ITypeInfo> DefaultEvents(IUnknown& control) {
    const auto provider = comkit::ComPtr<IProvideClassInfo>::From(&control);
    comkit::ComPtr<ITypeInfo> classInfo;
    if (!provider || FAILED(provider->GetClassInfo(classInfo.Put())) || !classInfo) return nullptr;
    TYPEATTR* attributes = nullptr;
    if (FAILED(classInfo->GetTypeAttr(&attributes))) return nullptr;
    const UINT count = attributes->cImplTypes;
    classInfo->ReleaseTypeAttr(attributes);
    constexpr int Wanted = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
    for (UINT i = 0; i < count; ++i) {
        int flags = 0;
        HREFTYPE reference = 0;
        comkit::ComPtr<ITypeInfo> events;
        if (SUCCEEDED(classInfo->GetImplTypeFlags(i, &flags)) && (flags & Wanted) == Wanted &&
            SUCCEEDED(classInfo->GetRefTypeOfImplType(i, &reference)) &&
            SUCCEEDED(classInfo->GetRefTypeInfo(reference, events.Put())))
            return events;
    }
    return nullptr;
}

/// The event's name, then its arguments' names. Empty when the type information does not know it.
std::vector<std::string> NamesOf(ITypeInfo& events, DISPID id) {
    std::array<BSTR, MaxNames> raw{};
    UINT count = 0;
    std::vector<std::string> names;
    if (FAILED(events.GetNames(id, raw.data(), MaxNames, &count))) return names;
    for (UINT i = 0; i < count; ++i) {
        comkit::Bstr name;
        *name.Put() = raw[i];
        names.push_back(Narrow(name.Get()));
    }
    return names;
}

}  // namespace

VARIANT* EventCall::Argument(std::string_view argument) const noexcept {
    const auto found =
        std::ranges::find_if(arguments, [&](const auto& a) { return EqualWithoutCase(a.first, argument); });
    return found == arguments.end() ? nullptr : found->second;
}

EventSink::EventSink(comkit::ComPtr<ITypeInfo> events, IID iid, Handler handler)
    : m_events(std::move(events)), m_iid(iid), m_handler(std::move(handler)) {}

comkit::ComPtr<EventSink> EventSink::Connect(IUnknown& control, Handler handler) {
    auto events = DefaultEvents(control);
    TYPEATTR* attributes = nullptr;
    if (!events || FAILED(events->GetTypeAttr(&attributes))) return nullptr;
    const IID iid = attributes->guid;
    events->ReleaseTypeAttr(attributes);
    const auto container = comkit::ComPtr<IConnectionPointContainer>::From(&control);
    auto sink = comkit::MakeObject<EventSink>(std::move(events), iid, std::move(handler));
    if (!container || FAILED(container->FindConnectionPoint(sink->m_iid, sink->m_point.Put()))) return nullptr;
    if (FAILED(sink->m_point->Advise(sink.Get(), &sink->m_cookie))) return nullptr;
    return sink;
}

void EventSink::Disconnect() noexcept {
    if (m_point) m_point->Unadvise(m_cookie);
    m_point.Reset();
    m_handler = nullptr;
}

void* EventSink::FindInterface(REFIID iid) noexcept {
    return IsEqualIID(iid, m_iid) ? static_cast<IDispatch*>(this) : nullptr;
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*, UINT*) {
    if (result) VariantInit(result);
    if (!params || (params->cArgs && !params->rgvarg)) return E_INVALIDARG;
    if (!m_handler) return S_OK;
    const comkit::ComPtr<EventSink> alive(this);  // the handler may disconnect
    return comkit::Guarded([&] {
        const std::vector<std::string> names = NamesOf(*m_events, id);
        EventCall call;
        call.name = names.empty() ? "event " + std::to_string(id) : names.front();
        for (UINT i = 0; i < params->cArgs; ++i) {
            std::string name = i + 1 < names.size() ? names[i + 1] : "argument" + std::to_string(i + 1);
            call.arguments.emplace_back(std::move(name), &params->rgvarg[params->cArgs - 1 - i]);
        }
        const Handler handler = m_handler;
        handler(call);
    });
}

}  // namespace screenhost
