// "Errors are swallowed step by step": one step that may fail without the caller's caller hearing of it.
//
// Use it round each single step, never round a sequence: a failing step leaves its state as it was, and the next step
// still runs. True when the step ran to its end. The only thing that passes through is ControlGone: there is no next
// step for a control that no longer exists.
#pragma once

#include <utility>

#include "common/ControlGone.h"

namespace kiv {

template <typename Step>
bool Attempt(Step&& step) {
    try {
        std::forward<Step>(step)();
        return true;
    } catch (const ControlGone&) {
        throw;
    } catch (...) {
        return false;
    }
}

}  // namespace kiv
