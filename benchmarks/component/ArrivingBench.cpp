// A value that arrives and is painted, beside the drawing of the same text and beside a static window that is given it.
// The control is the library's own, with its drawn labels; what delivers the values is in memory.
#include <windows.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "Benchmarks.h"
#include "benchmarks/Comparison.h"
#include "comkit/Bstr.h"
#include "comkit/Handle.h"
#include "headless/HeadlessContainer.h"
#include "headless/HeadlessEvents.h"
#include "headless/HeadlessFramework.h"
#include "headless/HeadlessHelp.h"
#include "showcontrol/ShowControl.h"
#include "win32/GdiFont.h"
#include "win32/LabelSurface.h"
#include "win32/OleFont.h"
#include "win32/SystemClock.h"
#include "win32/SystemRegionalNames.h"

namespace bench {

namespace {

using namespace kiv;

constexpr int ScreenWidth = 1200;
constexpr int ScreenHeight = 900;

enum class Lies { InThePlaceGiven, InAWindowOfItsOwn };

/// A control in a place of a window that others paint, or in a window of its own inside it.
class Placed final : private win32::WindowlessSite {
public:
    Placed(HWND window, const RECT& place, Lies lies) : m_window(window), m_place(place) {
        m_surface.SetFont(win32::DefaultFont());
        m_control.InitProperties();
        static_cast<void>(m_control.DataVariableName(0));  // the framework is there from now on
        if (lies == Lies::InThePlaceGiven) {
            m_surface.ActivateWindowless(window, place);
        } else {
            m_surface.Activate(window, place);
        }
        m_framework.TakeCalls();
    }
    const RECT& Place() const noexcept { return m_place; }
    HWND OwnWindow() const noexcept { return m_surface.Window(); }
    /// The day of the month is another one with each call.
    void Deliver() {
        m_bOdd = !m_bOdd;
        m_framework.Deliver(5, m_bOdd ? u"11" : u"12");
    }
    void Draw(HDC dc) { m_surface.Draw(dc, m_place); }
    /// A device context that the container has at hand; null: it gets one each time.
    void Give(HDC dc) noexcept { m_given = dc; }
    std::wstring Text() const { return std::wstring(comkit::ToWide(m_control.Value())); }

private:
    void OnSizeChanged(const Size& /*twips*/) override {}
    void OnFocus(bool /*gained*/) override {}
    void OnMouseActivate() override {}
    void OnInvalidate(const RECT& pixels) override {
        RECT area = pixels;
        OffsetRect(&area, m_place.left, m_place.top);
        InvalidateRect(m_window, &area, FALSE);
    }
    bool OnDraw(const RECT& /*pixels*/, const Drawing& draw) override {
        const POINT origin{m_place.left, m_place.top};
        if (m_given) {
            draw(m_given, origin);
            return true;
        }
        const comkit::WindowDc dc(m_window);
        draw(dc.Get(), origin);
        return true;
    }
    void OnCapture(bool /*wanted*/) override {}
    void OnSettingsChanged() override {}

    HWND m_window;
    RECT m_place;
    HDC m_given = nullptr;
    bool m_bOdd = false;
    headless::HeadlessContainer m_container;
    win32::SystemClock m_clock;
    win32::SystemRegionalNames m_names;
    headless::HeadlessFramework m_framework;
    headless::HeadlessApplicationHelp m_help;
    headless::NoShowEvents m_events;
    win32::LabelSurface m_surface{*this};
    ShowControl m_control{{m_surface, m_container, m_clock, m_names, m_framework, m_help}, m_events};
};

/// A window that draws those of its controls that are out of date, as a container does.
class Form {
public:
    Form() {
        WNDCLASSW form{};
        form.lpfnWndProc = &Procedure;
        form.hInstance = GetModuleHandleW(nullptr);
        form.lpszClassName = L"KivBenchArriving";
        RegisterClassW(&form);
        m_window.Reset(CreateWindowExW(0, form.lpszClassName, L"bench", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                                       ScreenWidth, ScreenHeight, nullptr, nullptr, form.hInstance, nullptr));
        SetWindowLongPtrW(m_window.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    ~Form() { SetWindowLongPtrW(m_window.Get(), GWLP_USERDATA, 0); }

    HWND Window() const noexcept { return m_window.Get(); }
    void Update() const noexcept { UpdateWindow(Window()); }
    std::vector<std::unique_ptr<Placed>> controls;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
        auto* const form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (id != WM_PAINT || !form) return DefWindowProcW(window, id, wParam, lParam);
        PAINTSTRUCT paint{};
        const HDC dc = BeginPaint(window, &paint);
        for (const auto& control : form->controls) {
            RECT outdated{};
            if (IntersectRect(&outdated, &control->Place(), &paint.rcPaint)) control->Draw(dc);
        }
        EndPaint(window, &paint);
        return 0;
    }

    comkit::UniqueWindow m_window;
};

constexpr RECT PlaceOf(int index) {
    const LONG left = (index % 10) * 118;
    const LONG top = (index / 10 % 60) * 14;
    return {left, top, left + 116, top + 13};
}

HWND NewStatic(HWND parent, HFONT font, const RECT& place) {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, place.left, place.top, place.right - place.left,
                        place.bottom - place.top, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return window;
}

void CompareOne() {
    constexpr int Times = 50;
    Form form;
    const auto font = win32::FindGdiFont(win32::DefaultFontTraits(), USER_DEFAULT_SCREEN_DPI);
    form.controls.push_back(std::make_unique<Placed>(form.Window(), RECT{0, 0, 330, 13}, Lies::InThePlaceGiven));
    form.Update();
    Placed& control = *form.controls.front();
    const comkit::WindowDc screen(form.Window());
    const comkit::GdiSelection selection(screen.Get(), font->Handle());
    {
        // The container's paint is the same for both, and left out: what is outdated is the right half.
        const int saved = SaveDC(screen.Get());
        IntersectClipRect(screen.Get(), 170, 0, 330, 13);
        bool odd = false;
        const auto deliver = [&] {
            control.Give(screen.Get());
            for (int i = 0; i < Times; ++i) control.Deliver();
            GdiFlush();
            control.Give(nullptr);
        };
        const auto write = [&] {
            const RECT place{170, 0, 330, 13};
            odd = !odd;
            ExtTextOutW(screen.Get(), 170, 0, ETO_OPAQUE | ETO_CLIPPED, &place, odd ? L"JAN-11-2000" : L"JAN-12-2000",
                        11, nullptr);
        };
        constexpr const char* Arrives = "a value arrives, the text changes and is drawn";
        Compare({Arrives, "one text draw call of the same text", 1.5}, 101, Times, deliver, [&] {
            for (int i = 0; i < Times; ++i) write();
            GdiFlush();
        });
        // A device context may well have another font.
        const comkit::GdiSelection systems(screen.Get(), GetStockObject(SYSTEM_FONT));
        Compare({"the same where another font is selected",
                 "its font selected, one text draw call, the former font selected", 1.5},
                101, Times, deliver, [&] {
                    for (int i = 0; i < Times; ++i) {
                        const comkit::GdiSelection own(screen.Get(), font->Handle());
                        write();
                    }
                    GdiFlush();
                });
        RestoreDC(screen.Get(), saved);
    }
    const comkit::UniqueWindow window(NewStatic(form.Window(), font->Handle(), {400, 0, 560, 13}));
    bool odd = false;
    const auto giveText = [&] {
        for (int i = 0; i < Times; ++i) {
            odd = !odd;
            SetWindowTextW(window.Get(), odd ? L"JAN-11-2000" : L"JAN-12-2000");
            UpdateWindow(window.Get());
        }
    };
    constexpr const char* GivenText = "a static window is given the text and painted";
    Placed windowed(form.Window(), {0, 20, 330, 33}, Lies::InAWindowOfItsOwn);
    Compare(
        {"a value arrives, the control's own window is painted", GivenText, 0.5}, 101, Times,
        [&] {
            for (int i = 0; i < Times; ++i) {
                windowed.Deliver();
                UpdateWindow(windowed.OwnWindow());
            }
        },
        giveText);
    Compare(
        {"a value arrives, the container's window is painted", GivenText, 0.5}, 101, Times,
        [&] {
            for (int i = 0; i < Times; ++i) {
                control.Deliver();
                form.Update();
            }
        },
        giveText);
}

/// What the system takes for its own part of the two comparisons.
void NoteTheSystemsPart() {
    constexpr int Times = 2000;
    const Form empty;
    const RECT place{170, 0, 330, 13};
    const auto perTime = [](auto step) {
        return Timed([&] {
                   for (int i = 0; i < Times; ++i) step();
               }) /
               Times;
    };
    empty.Update();
    const double painted = perTime([&] {
        InvalidateRect(empty.Window(), &place, FALSE);
        empty.Update();
    });
    const double invalidated = perTime([&] { InvalidateRect(empty.Window(), &place, FALSE); });
    std::printf(
        "note|A part of a window invalidated: %.0f us; invalidated, and painted without anything being drawn: %.0f "
        "us.\n",
        invalidated, painted);
}

double ProcessorTime() {
    FILETIME made{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(GetCurrentProcess(), &made, &ended, &kernel, &user);
    const auto ticks = [](const FILETIME& time) {
        return static_cast<double>(time.dwLowDateTime) + 4294967296.0 * static_cast<double>(time.dwHighDateTime);
    };
    return (ticks(kernel) + ticks(user)) / 10;
}

/// Processor time of a minute's values, in three parts. Nothing happens between them, so the waiting is left out.
void CompareAScreen() {
    constexpr int Count = 1000;
    Form form;
    Form other;
    const auto font = win32::FindGdiFont(win32::DefaultFontTraits(), USER_DEFAULT_SCREEN_DPI);
    std::vector<comkit::UniqueWindow> windows;
    for (int i = 0; i < Count; ++i) {
        form.controls.push_back(std::make_unique<Placed>(form.Window(), PlaceOf(i), Lies::InThePlaceGiven));
        windows.emplace_back(NewStatic(other.Window(), font->Handle(), PlaceOf(i)));
    }
    form.Update();
    RedrawWindow(other.Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const auto giveControls = [&](int /*second*/) {
        for (const auto& control : form.controls) {
            control->Deliver();
            form.Update();
        }
    };
    const auto giveWindows = [&](int second) {
        for (const auto& window : windows) {
            SetWindowTextW(window.Get(), second % 2 == 0 ? L"JAN-11-2000" : L"JAN-12-2000");
            UpdateWindow(window.Get());
        }
    };
    giveControls(0);
    giveWindows(0);
    Comparison comparison;
    for (int part = 0; part < 3; ++part) {
        double ours = 0;
        double theirs = 0;
        for (int second = 1; second <= 20; ++second) {
            const double start = ProcessorTime();
            giveControls(second);
            const double middle = ProcessorTime();
            giveWindows(second);
            ours += middle - start;
            theirs += ProcessorTime() - middle;
        }
        comparison.Add(ours / 20, theirs / 20);
    }
    comparison.Print({"1,000 show controls given a value a second for a minute, processor time",
                      "the same texts set on static windows", 0.5},
                     "ms", 1000);
}

}  // namespace

void RunArriving() {
    NoteTheSystemsPart();
    CompareOne();
    CompareAScreen();
}

}  // namespace bench
