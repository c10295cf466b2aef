// A sink that is connected to an object's events for as long as this exists.
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <utility>

#include "comkit/ComPtr.h"
#include "comkit/Errors.h"

namespace kiv::win32 {

/// Sink knows its EventSet() and can Detach() from its listener.
template <class Sink>
class EventConnection final {
public:
    /// Throws comkit::ComError.
    EventConnection(IUnknown& source, comkit::ComPtr<Sink> sink) : m_pSink(std::move(sink)) {
        const auto container = comkit::ComPtr<IConnectionPointContainer>::From(&source);
        if (!container) throw comkit::ComError(CONNECT_E_NOCONNECTION);
        comkit::ThrowIfFailed(container->FindConnectionPoint(Sink::EventSet(), m_pEvents.Put()));
        const HRESULT hr = m_pEvents->Advise(m_pSink.Get(), &m_lCookie);
        if (SUCCEEDED(hr)) return;
        m_pSink->Detach();
        throw comkit::ComError(hr);
    }
    EventConnection(EventConnection&& other) noexcept
        : m_pSink(std::move(other.m_pSink)), m_pEvents(std::move(other.m_pEvents)), m_lCookie(other.m_lCookie) {}
    EventConnection(const EventConnection&) = delete;
    EventConnection& operator=(const EventConnection&) = delete;
    EventConnection& operator=(EventConnection&&) = delete;
    /// The listener hears nothing from here on, whatever the source does with the sink.
    ~EventConnection() {
        if (!m_pSink) return;
        m_pSink->Detach();
        m_pEvents->Unadvise(m_lCookie);
    }

private:
    comkit::ComPtr<Sink> m_pSink;
    comkit::ComPtr<IConnectionPoint> m_pEvents;
    DWORD m_lCookie = 0;
};

}  // namespace kiv::win32
