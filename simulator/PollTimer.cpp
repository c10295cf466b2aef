#include "simulator/PollTimer.h"

#include "comkit/ComObject.h"
#include "comkit/Errors.h"
#include "simulator/Simulation.h"

namespace vexa {

namespace {

std::weak_ptr<PollTimer>& Shared() {
    static std::weak_ptr<PollTimer> shared;
    return shared;
}

constexpr UINT_PTR TimerId = 1;

void CALLBACK Poll(HWND, UINT, UINT_PTR, DWORD) noexcept {
    // A handler may drop the last object of this server; the server must not be unloaded below its own feet.
    ++comkit::g_liveObjects;
    comkit::Guarded([] { Simulation::Instance().Framework().Poll(); });
    --comkit::g_liveObjects;
}

}  // namespace

std::shared_ptr<PollTimer> PollTimer::Share() {
    auto timer = Shared().lock();
    if (!timer) {
        timer = std::make_shared<PollTimer>();
        Shared() = timer;
    }
    return timer;
}

// A system class with a timer procedure: no window class of this server's own outlives it.
PollTimer::PollTimer()
    : m_window(CreateWindowExW(0, L"Static", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
    if (!m_window) throw comkit::ComError(comkit::LastErrorResult());
    Restart();
}

void PollTimer::Restart() const {
    if (!SetTimer(m_window.Get(), TimerId, Simulation::Instance().PollInterval(), &Poll))
        throw comkit::ComError(comkit::LastErrorResult());
}

void PollTimer::RestartShared() {
    if (const auto timer = Shared().lock()) timer->Restart();
}

}  // namespace vexa
