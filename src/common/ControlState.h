// What both controls keep about themselves while they live.
#pragma once

#include <cstdint>

namespace kiv {

struct ControlState {
    bool m_bTerminated = false;  ///< no more use of framework and services, until properties are loaded again
    bool m_bInResize = false;
    std::int32_t m_lLoading = 0;  ///< loads in progress; an event may start one within another

    bool IsLoading() const noexcept { return m_lLoading > 0; }
};

/// Marks the state as loading while it exists.
class LoadingScope {
public:
    explicit LoadingScope(ControlState& state) : m_state(state) { ++m_state.m_lLoading; }
    ~LoadingScope() { --m_state.m_lLoading; }
    LoadingScope(const LoadingScope&) = delete;
    LoadingScope& operator=(const LoadingScope&) = delete;

private:
    ControlState& m_state;
};

/// Marks a layout pass as running while it exists.
class ResizeScope {
public:
    explicit ResizeScope(ControlState& state) : m_state(state) { m_state.m_bInResize = true; }
    ~ResizeScope() { m_state.m_bInResize = false; }
    ResizeScope(const ResizeScope&) = delete;
    ResizeScope& operator=(const ResizeScope&) = delete;

private:
    ControlState& m_state;
};

}  // namespace kiv
