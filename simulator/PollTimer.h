// Looks at the simulated device from the message loop of the thread: one timer, on a message-only window, for all
// hidden controls. Made with the first of them, gone with the last.
#pragma once

#include <memory>

#include "comkit/Handle.h"

namespace vexa {

class PollTimer {
public:
    /// Throws ComError when the window or the timer cannot be had.
    static std::shared_ptr<PollTimer> Share();

    PollTimer();

    /// The interval of Simulation may have changed.
    void Restart() const;
    /// Restarts the timer where there is one.
    static void RestartShared();

private:
    comkit::UniqueWindow m_window;
};

}  // namespace vexa
