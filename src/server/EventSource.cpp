#include "server/EventSource.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <utility>

#include "comkit/Dispatch.h"

namespace kiv::server {

EventSource::EventSource(IUnknown& owner, REFIID eventInterface)
    : m_owner(owner), m_events(owner, eventInterface), m_notifications(owner, IID_IPropertyNotifySink) {}

HRESULT EventSource::Fire(DISPID event, std::span<const VARIANT> args) {
    if (m_lFrozen > 0 || !m_events.HasSinks()) return S_OK;
    const comkit::ComPtr<IUnknown> keepAlive(&m_owner);
    std::array<VARIANT, 4> reversed;
    assert(args.size() <= reversed.size());
    std::reverse_copy(args.begin(), args.end(), reversed.begin());

    HRESULT first = S_OK;
    for (const auto& sink : m_events.Sinks()) {
        DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(args.size()), 0};
        comkit::Variant ignored;
        comkit::ExceptionInfo info;
        UINT argument = 0;
        const HRESULT hr = sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, ignored.Put(),
                                        info.Put(), &argument);
        const bool unhandled = hr == DISP_E_MEMBERNOTFOUND || hr == E_NOTIMPL;
        if (FAILED(hr) && !unhandled && SUCCEEDED(first)) first = hr;
    }
    return first;
}

void EventSource::RaiseChanged(DISPID member) {
    if (m_lFrozen == 0) {
        NotifyChanged(member);
    } else if (std::find(m_waiting.begin(), m_waiting.end(), member) == m_waiting.end()) {
        m_waiting.push_back(member);
    }
}

void EventSource::NotifyChanged(DISPID member) {
    if (!m_notifications.HasSinks()) return;
    const comkit::ComPtr<IUnknown> keepAlive(&m_owner);
    for (const auto& sink : m_notifications.Sinks()) sink->OnChanged(member);
}

bool EventSource::RequestEdit(DISPID member) {
    if (!m_notifications.HasSinks()) return true;
    const comkit::ComPtr<IUnknown> keepAlive(&m_owner);
    const auto sinks = m_notifications.Sinks();
    return std::none_of(sinks.begin(), sinks.end(),
                        [member](const auto& sink) { return sink->OnRequestEdit(member) == S_FALSE; });
}

void EventSource::Freeze(bool freeze) {
    if (freeze) {
        ++m_lFrozen;
        return;
    }
    if (m_lFrozen == 0 || --m_lFrozen > 0) return;
    const comkit::ComPtr<IUnknown> keepAlive(&m_owner);
    for (const DISPID member : std::exchange(m_waiting, {})) RaiseChanged(member);
}

void EventSource::DropSinks() noexcept {
    m_events.DropAll();
    m_notifications.DropAll();
}

}  // namespace kiv::server
