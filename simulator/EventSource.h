// The connection point container of an object with one event set.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <array>
#include <vector>

#include "comkit/ConnectionPoint.h"
#include "comkit/Variant.h"

namespace vexa {

/// A part of the object that fires; answers IConnectionPointContainer for it.
class EventSource final : public comkit::ComPart<IConnectionPointContainer> {
public:
    EventSource(IUnknown& owner, REFIID iid) : ComPart(owner), m_point(owner, iid) {}

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** out) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** out) override;

    /// Calls each sink; what a sink returns is its own affair. The caller keeps the object alive meanwhile.
    template <class... Args>
    void Fire(DISPID id, const Args&... args) const {
        std::array<comkit::Variant, sizeof...(Args)> owned{comkit::Variant(args)...};
        std::array<VARIANT, sizeof...(Args)> reversed;
        for (std::size_t i = 0; i < owned.size(); ++i) reversed[owned.size() - 1 - i] = owned[i].Get();
        Send(id, reversed.data(), static_cast<UINT>(reversed.size()));
    }

    void Send(DISPID id, VARIANT* arguments, UINT count) const;

private:
    comkit::ConnectionPoint<IDispatch> m_point;
};

}  // namespace vexa
