// Connection points: lists of sinks.
//
// Sinks() copies the list, so that a sink may unadvise itself, or any other, while it is being called. Cookies are
// never used twice during the life of a connection point.
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <utility>
#include <vector>

#include "comkit/ComObject.h"
#include "comkit/Enumerator.h"
#include "comkit/Errors.h"

namespace comkit {

/// A part of the object that fires. Sink is what Advise asks the sink for: IDispatch for an event set, whose iid is
/// then the event set's own.
template <class Sink>
class ConnectionPoint final : public ComPart<IConnectionPoint> {
public:
    ConnectionPoint(IUnknown& owner, REFIID iid) : ComPart(owner), m_iid(iid) {}

    REFIID Iid() const noexcept { return m_iid; }

    /// A connection point is an object of its own: its identity is not the control's.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IConnectionPoint)) return E_NOINTERFACE;
        *out = static_cast<IConnectionPoint*>(this);
        AddRef();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* out) override {
        if (!out) return E_POINTER;
        *out = m_iid;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** out) override {
        if (!out) return E_POINTER;
        return Owner().QueryInterface(__uuidof(IConnectionPointContainer), reinterpret_cast<void**>(out));
    }

    HRESULT STDMETHODCALLTYPE Advise(IUnknown* unknown, DWORD* cookie) override {
        if (!cookie) return E_POINTER;
        *cookie = 0;
        if (!unknown) return E_POINTER;
        // An event set's sink may answer to the set's own identifier, to IDispatch, or to both.
        ComPtr<Sink> sink;
        if (FAILED(unknown->QueryInterface(m_iid, sink.PutVoid()))) sink = ComPtr<Sink>::From(unknown);
        if (!sink) return CONNECT_E_CANNOTCONNECT;
        return Guarded([&] {
            m_sinks.emplace_back(m_nextCookie, std::move(sink));
            *cookie = m_nextCookie++;
        });
    }

    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
        for (auto it = m_sinks.begin(); it != m_sinks.end(); ++it) {
            if (it->first != cookie) continue;
            const ComPtr<Sink> last = std::move(it->second);  // released after the list is whole again
            m_sinks.erase(it);
            return S_OK;
        }
        return CONNECT_E_NOCONNECTION;
    }

    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        return Guarded([&] { *out = MakeObject<ConnectionList>(m_sinks).Detach(); });
    }

    bool HasSinks() const noexcept { return !m_sinks.empty(); }

    std::vector<ComPtr<Sink>> Sinks() const {
        std::vector<ComPtr<Sink>> result;
        result.reserve(m_sinks.size());
        for (const auto& [cookie, sink] : m_sinks) result.push_back(sink);
        return result;
    }

    void DropAll() noexcept {
        const auto dropped = std::move(m_sinks);
        m_sinks.clear();
    }

private:
    using Connection = std::pair<DWORD, ComPtr<Sink>>;
    static void Copy(const Connection& item, CONNECTDATA& element) {
        element.dwCookie = item.first;
        element.pUnk = item.second.Get();
        element.pUnk->AddRef();
    }
    static void Drop(CONNECTDATA& element) noexcept { std::exchange(element.pUnk, nullptr)->Release(); }
    using ConnectionList =
        Enumerator<IEnumConnections, CONNECTDATA, Connection, &ConnectionPoint::Copy, &ConnectionPoint::Drop>;

    IID m_iid;
    DWORD m_nextCookie = 1;
    std::vector<Connection> m_sinks;
};

}  // namespace comkit
