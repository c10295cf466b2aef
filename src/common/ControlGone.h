// Thrown where a call out of a control returns and finds that the control was destroyed meanwhile. It unwinds to the
// control's own entry point, which swallows it: nobody outside ever sees it.
//
// Not derived from std::exception, so that no handler for ordinary errors takes it for one.
#pragma once

namespace kiv {

struct ControlGone {};

}  // namespace kiv
