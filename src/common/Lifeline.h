// Whether a control still exists, asked again after every call that runs foreign code.
//
// An event handler, a change notification, a resize that the container answers, a call into the framework: any of them
// may end with the control destroyed. All of them go through CallOut. When the control is gone afterwards, CallOut
// throws ControlGone, which unwinds to the control's entry point; nothing in between runs on. The lifeline and all else
// that the unwinding code touches is kept alive by that entry point.
#pragma once

#include <type_traits>
#include <utility>

#include "common/ControlGone.h"

namespace kiv {

class Lifeline {
public:
    bool IsCut() const noexcept { return m_bCut; }
    void Cut() noexcept { m_bCut = true; }

    /// Returns what call returns and throws what it throws, unless the control is gone before or after.
    template <typename Call>
    decltype(auto) CallOut(Call&& call) const {
        Check();
        try {
            if constexpr (std::is_void_v<decltype(std::forward<Call>(call)())>) {
                std::forward<Call>(call)();
                Check();
            } else {
                decltype(auto) result = std::forward<Call>(call)();
                Check();
                return result;
            }
        } catch (...) {
            Check();
            throw;
        }
    }

private:
    void Check() const {
        if (m_bCut) throw ControlGone{};
    }

    bool m_bCut = false;
};

}  // namespace kiv
