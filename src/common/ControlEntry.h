// Where calls from outside come into a control.
//
// Shared ownership keeps the inside of a control alive while any of its functions runs, also when the control was
// destroyed meanwhile: Enter holds it, and ends the call quietly as soon as that is noticed (see Lifeline.h).
#pragma once

#include <memory>
#include <type_traits>

#include "common/ControlGone.h"

namespace kiv {

/// The derived object must be owned by a shared pointer before anything calls it.
class ControlEntry : public std::enable_shared_from_this<ControlEntry> {
public:
    ControlEntry(const ControlEntry&) = delete;
    ControlEntry& operator=(const ControlEntry&) = delete;

    /// Runs a call from outside. Where the control is destroyed meanwhile, the rest of the call is left out and the
    /// result is a default one. Other exceptions pass.
    template <typename Call>
    auto Enter(Call&& call) -> std::decay_t<decltype(call())> {
        const std::shared_ptr<ControlEntry> alive = shared_from_this();
        try {
            return call();
        } catch (const ControlGone&) {
            return std::decay_t<decltype(call())>();
        }
    }

protected:
    ControlEntry() = default;
    ~ControlEntry() = default;
};

}  // namespace kiv
