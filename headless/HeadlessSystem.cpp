#include "headless/HeadlessSystem.h"

namespace kiv::headless {

class HeadlessTimers::HeadlessTimer final : public Timer {
public:
    HeadlessTimer(HeadlessTimers& owner, std::function<void()> tick) : m_owner(owner), m_tick(std::move(tick)) {
        m_owner.m_timers.push_back(this);
    }
    ~HeadlessTimer() override { std::erase(m_owner.m_timers, this); }
    HeadlessTimer(const HeadlessTimer&) = delete;
    HeadlessTimer& operator=(const HeadlessTimer&) = delete;

    bool IsEnabled() const override { return m_bEnabled; }
    void SetEnabled(bool enabled) override { m_bEnabled = enabled; }
    std::function<void()> Tick() const { return m_tick; }

private:
    HeadlessTimers& m_owner;
    std::function<void()> m_tick;
    bool m_bEnabled = false;
};

std::unique_ptr<Timer> HeadlessTimers::CreateTimer(std::uint32_t /*milliseconds*/, std::function<void()> tick) {
    return std::make_unique<HeadlessTimer>(*this, std::move(tick));
}

void HeadlessTimers::Fire() {
    const std::vector<HeadlessTimer*> present = m_timers;
    for (HeadlessTimer* timer : present) {
        const bool lives = std::ranges::find(m_timers, timer) != m_timers.end();
        if (lives && timer->IsEnabled()) timer->Tick()();
    }
}

std::size_t HeadlessTimers::EnabledCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(m_timers, [](const auto* t) { return t->IsEnabled(); }));
}

}  // namespace kiv::headless
