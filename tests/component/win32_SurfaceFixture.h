// A surface with the set control's children, in a window of its own, and a listener that writes down what it hears.
// Sizes are those of the control at rest; the layout is the tests' own.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "comkit/Handle.h"
#include "platform/Widgets.h"
#include "win32/ControlSurface.h"

namespace kiv::win32::test {

/// What happened, as short texts: "click calendar", "down time 1 0", "focus 1".
class EventLog final : public WidgetListener, public SurfaceSite {
public:
    std::vector<std::string> lines;
    std::map<const Widget*, std::string> names;
    /// Called after each line is written: a handler that re-enters.
    std::function<void(const std::string&)> then;
    std::function<std::int16_t(std::int16_t)> alterKey;
    MouseArgs lastMouse;
    bool keepMoves = false;

    void OnClick(Widget& source) override { Write("click " + names[&source]); }
    void OnDblClick(Widget& source) override { Write("dblclick " + names[&source]); }
    void OnKeyDown(Widget& source, std::int16_t& key, std::int16_t shift) override {
        const std::int16_t asked = key;
        if (alterKey) key = alterKey(asked);
        Write("keydown " + names[&source] + " " + std::to_string(asked) + " " + std::to_string(shift));
    }
    void OnKeyUp(Widget& source, std::int16_t& key, std::int16_t shift) override {
        Write("keyup " + names[&source] + " " + std::to_string(key) + " " + std::to_string(shift));
    }
    void OnKeyPress(Widget& source, std::int16_t& key) override {
        Write("keypress " + names[&source] + " " + std::to_string(key));
    }
    void OnMouse(Widget& source, MouseAction action, const MouseArgs& args) override {
        if (action == MouseAction::Move && !keepMoves) return;
        static const std::map<MouseAction, std::string> Actions{
            {MouseAction::Down, "down "}, {MouseAction::Move, "move "}, {MouseAction::Up, "up "}};
        lastMouse = args;
        Write(Actions.at(action) + names[&source] + " " + std::to_string(args.button) + " " +
              std::to_string(args.shift));
    }
    void OnChange(Widget& source) override { Write("change " + names[&source]); }
    void OnResize() override { Write("resize"); }
    void OnSizeChanged(const Size&) override { Write("sizechanged"); }
    void OnFocus(bool gained) override { Write(gained ? "focus 1" : "focus 0"); }
    void OnMouseActivate() override {}

    /// How often a line was written; lines is emptied.
    std::size_t TakeCount(const std::string& line) {
        const auto count = static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
        lines.clear();
        return count;
    }

private:
    void Write(const std::string& line) {
        lines.push_back(line);
        // Copies: the handler may put another one in place, or end everything.
        const std::function<void(const std::string&)> handler = then;
        if (handler) handler(std::string(line));
    }
};

/// The surface and its children: destroyed as a control destroys them, children first.
struct Arrangement {
    explicit Arrangement(EventLog& log) : surface(log) {
        outer = surface.CreateFrame(surface, u"fraOuter");
        useSystem = surface.CreateCheckBox(*outer, u"chkUseSystem");
        inner = surface.CreateFrame(*outer, u"fraInner");
        daylight = surface.CreateCheckBox(*inner, u"chkUseDaylightSavings");
        calendar = surface.CreateCalendar(*inner, u"mvDate");
        time = surface.CreateTimeField(*inner, u"dtpTimeSP");
        log.names = {{&surface, "surface"},  {outer.get(), "outer"},       {useSystem.get(), "system"},
                     {inner.get(), "inner"}, {daylight.get(), "daylight"}, {calendar.get(), "calendar"},
                     {time.get(), "time"}};
        outer->SetCaption(u"Set Date/Time");
        useSystem->SetCaption(u"&Use PC System Date/Time?");
        inner->SetCaption(u"Custom Date/Time");
        daylight->SetCaption(u"&Automatically Adjust for Daylight Savings Time?");
        const Rect size = calendar->Bounds();
        outer->SetBounds({0, 0, size.width + 2000, size.height + 1500});
        useSystem->SetBounds({120, 315, size.width + 1500, 195});
        inner->SetBounds({120, 630, size.width + 1760, size.height + 750});
        daylight->SetBounds({120, 315, size.width + 1500, 195});
        calendar->SetBounds({120, 630, 0, 0});
        time->SetBounds({size.width + 240, 630, 1400, 495});
        surface.SetSize({size.width + 2000, size.height + 1500});
        surface.SetListener(&log);
    }

    ControlSurface surface;
    std::unique_ptr<Frame> outer;
    std::unique_ptr<CheckBox> useSystem;
    std::unique_ptr<Frame> inner;
    std::unique_ptr<CheckBox> daylight;
    std::unique_ptr<Calendar> calendar;
    std::unique_ptr<TimeField> time;
};

class SurfaceTest : public testing::Test {
protected:
    void SetUp() override {
        host = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"host", WS_POPUP | WS_CLIPCHILDREN, 40, 40, 600, 500,
                               nullptr, nullptr, nullptr, nullptr);
        ShowWindow(host, SW_SHOW);
        SetForegroundWindow(host);
        parts = std::make_unique<Arrangement>(log);
        log.lines.clear();
    }
    void TearDown() override {
        log.then = nullptr;
        parts.reset();
        DestroyWindow(host);
    }

    RECT PixelSize() const {
        const Rect size = parts->surface.Bounds();
        const double scale = parts->surface.Dpi() / 1440.0;
        return {0, 0, std::lround(size.width * scale), std::lround(size.height * scale)};
    }
    void Activate() {
        parts->surface.Activate(host, PixelSize());
        Pump();
        log.lines.clear();
    }
    static void Pump() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    /// The first child window of a class below the surface, in the order of creation.
    HWND Find(const wchar_t* className, int skip = 0) const {
        Search search{className, skip, nullptr};
        EnumChildWindows(parts->surface.Window(), &VisitWindow, reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    HWND CalendarWindow() const { return Find(L"SysMonthCal32"); }
    HWND TimeWindow() const { return Find(L"SysDateTimePick32"); }
    HWND SpinWindow() const { return Find(L"msctls_updown32"); }
    HWND ButtonWindow(int index) const { return Find(L"Button", index); }  ///< 0 outer, 1 system, 2 inner, 3 daylight

    static void Press(HWND window, int x, int y) { SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y)); }
    static void Release(HWND window, int x, int y) { SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y)); }
    static void Click(HWND window, int x, int y) {
        Press(window, x, y);
        Release(window, x, y);
    }
    static void Key(HWND window, WPARAM key) {
        SendMessageW(window, WM_KEYDOWN, key, 1);
        SendMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    }

    HWND host = nullptr;
    EventLog log;
    std::unique_ptr<Arrangement> parts;

private:
    struct Search {
        const wchar_t* name;
        int skip;
        HWND found;
    };
    static BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter) {
        auto& search = *reinterpret_cast<Search*>(parameter);
        wchar_t name[64] = {};
        GetClassNameW(window, name, 64);
        if (lstrcmpiW(name, search.name) != 0 || search.skip-- > 0) return TRUE;
        search.found = window;
        return FALSE;
    }
};

}  // namespace kiv::win32::test
