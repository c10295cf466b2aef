// A user, a system and other programs that do what they happen to do to the windows of a control, from a seed.
#pragma once

#include <windows.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace component {

/// Choices that come again with the same seed.
class Choices {
public:
    explicit Choices(std::uint32_t seed) : m_numbers(seed) {}
    std::uint32_t Next() { return static_cast<std::uint32_t>(m_numbers()); }
    /// 0 to count - 1.
    std::uint32_t Below(std::uint32_t count) { return Next() % count; }
    int Between(int first, int last) {
        return first + static_cast<int>(Below(static_cast<unsigned>(last - first + 1)));
    }
    bool OneIn(std::uint32_t count) { return Below(count) == 0; }
    template <class List>
    const auto& Of(const List& list) {
        return list[Below(static_cast<std::uint32_t>(std::size(list)))];
    }

private:
    std::mt19937 m_numbers;
};

class RandomUser {
public:
    /// Where a control without a window gets its messages.
    using Windowless = std::function<void(UINT, WPARAM, LPARAM)>;
    /// What a container does with a message of its loop before it is dispatched; true: it is done with.
    using Filter = std::function<bool(MSG&)>;

    explicit RandomUser(Choices& choices) : m_choices(choices) {}
    Windowless windowless;
    Filter filter;

    /// One event at one of the windows in root, or at the control without a window if that is null.
    void Act(HWND host, HWND root);
    /// As a container's message loop does.
    void Pump() const;
    /// The latest events, for a message about what failed.
    std::string Recent() const;

    /// How many accessible objects were asked for and let go of. Wine's own passing of them loses a heap block each
    /// time.
    long AccessAnswers() const noexcept { return m_lAccessAnswers; }

    static constexpr int EventsRemembered = 25;

private:
    struct Event {
        HWND window;
        UINT id;
        WPARAM wParam;
        LPARAM lParam;
    };
    using Kind = void (RandomUser::*)();
    struct Weighted {
        unsigned weight;
        Kind act;
    };
    static const Weighted Kinds[];

    void Send(UINT id, WPARAM wParam, LPARAM lParam);
    void Note(const Event& event);
    void PickWindow();
    LPARAM Point();

    void MouseAnywhere();
    void Click();
    void Drag();
    void Wheel();
    void Key();
    void PostedKey();
    void Character();
    void Focus();
    void Capture();
    void WindowState();
    void SystemChange();
    void Timer();
    void ForeignNotification();
    void Question();
    void AskForAccess();
    void Paint();
    void Raw();

    Choices& m_choices;
    HWND m_host = nullptr;
    HWND m_root = nullptr;
    HWND m_window = nullptr;  ///< the one of this event
    bool m_bNative = false;   ///< which is the system's own
    long m_lAccessAnswers = 0;
    std::deque<Event> m_recent;
};

}  // namespace component
