// What the show control costs beside the least that could do its work: a static window for each text, and the system's
// own formatting of dates and times.
#include <KivDateTime.h>
#include <oleauto.h>
#include <olectl.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "Benchmarks.h"
#include "benchmarks/Comparison.h"
#include "comkit/ComPtr.h"
#include "showcontrol/DisplayFormatter.h"
#include "win32/SystemRegionalNames.h"
#include "WindowlessSite.h"

namespace bench {

namespace {

using comkit::ComPtr;

struct ShownControl {
    ComPtr<WindowlessSite> site;
    ComPtr<IUnknown> control;
};

constexpr RECT PlaceOf(int index) {
    const int left = (index % 10) * 118;
    const int top = (index / 10 % 60) * 14;
    return {left, top, left + 116, top + 13};
}

/// What a form saved for a control with a caption, a mode and a slot in use.
ComPtr<IStream> SavedControl(IClassFactory& factory) {
    ComPtr<_KivShowDateTime> control;
    factory.CreateInstance(nullptr, __uuidof(_KivShowDateTime), control.PutVoid());
    const auto persist = ComPtr<IPersistStreamInit>::From(control.Get());
    persist->InitNew();
    BSTR caption = SysAllocString(L"Device:");
    control->put_Caption(caption);
    SysFreeString(caption);
    control->put_ShowSeconds(VARIANT_TRUE);
    control->put_CaptionWidth(800);
    control->put_ValueWidth(900);
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.Put());
    persist->Save(stream.Get(), TRUE);
    return stream;
}

void Rewind(IStream& stream) {
    stream.Seek({}, STREAM_SEEK_SET, nullptr);
}

/// Created, sited, loaded and active in the form's window.
ShownControl Open(IClassFactory& factory, IStream& saved, WindowlessForm& form, const RECT& place) {
    ShownControl shown;
    shown.site = comkit::MakeObject<WindowlessSite>(form, place);
    ComPtr<IOleObject> object;
    factory.CreateInstance(nullptr, IID_IOleObject, object.PutVoid());
    object->SetClientSite(shown.site.Get());
    Rewind(saved);
    ComPtr<IPersistStreamInit>::From(object.Get())->Load(&saved);
    object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, shown.site.Get(), 0, form.Window(), &place);
    form.Show(ComPtr<IViewObject>::From(object.Get()));
    shown.control = ComPtr<IUnknown>::From(object.Get());
    return shown;
}

void Close(ShownControl& shown) {
    const auto object = ComPtr<IOleObject>::From(shown.control.Get());
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
    shown.control.Reset();
}

HWND OpenStatic(HWND parent, HFONT font, const wchar_t* text, const RECT& place) {
    const HWND window =
        CreateWindowExW(0, L"STATIC", text, WS_CHILD | WS_VISIBLE, place.left, place.top, place.right - place.left,
                        place.bottom - place.top, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return window;
}

class StaticPair {
public:
    StaticPair(HWND parent, HFONT font, const RECT& place) {
        const LONG middle = (place.left + place.right) / 2;
        m_windows[0].Reset(OpenStatic(parent, font, L"Device:", {place.left, place.top, middle, place.bottom}));
        m_windows[1].Reset(OpenStatic(parent, font, L"12:00 AM", {middle, place.top, place.right, place.bottom}));
    }

private:
    std::array<comkit::UniqueWindow, 2> m_windows;
};

void DrawAnew(const WindowlessForm& form) {
    InvalidateRect(form.Window(), nullptr, FALSE);
    UpdateWindow(form.Window());
}

comkit::UniqueFont LabelFont() {
    return comkit::UniqueFont(CreateFontW(-11, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, L"MS Sans Serif"));
}

/// A few at a time, so that the container's own painting, which both sides need, is shared as on a real screen.
void CompareOpeningOne(IClassFactory& factory, IStream& saved) {
    constexpr int Few = 20;
    const comkit::UniqueFont font = LabelFont();
    WindowlessForm form;
    WindowlessForm other;
    UpdateWindow(form.Window());
    UpdateWindow(other.Window());
    Comparison comparison;
    for (int i = 0; i < 51; ++i) {
        std::vector<ShownControl> controls;
        const double ours = Timed([&] {
            for (int n = 0; n < Few; ++n) controls.push_back(Open(factory, saved, form, PlaceOf(n)));
            DrawAnew(form);
        });
        form.Clear();
        for (ShownControl& shown : controls) Close(shown);
        std::vector<comkit::UniqueWindow> windows;
        const double bare = Timed([&] {
            for (int n = 0; n < Few; ++n)
                windows.emplace_back(OpenStatic(other.Window(), font.Get(), L"12:00:00 AM", PlaceOf(n)));
            RedrawWindow(other.Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        });
        if (i > 0) comparison.Add(ours, bare);
    }
    comparison.Print({"a show control created, loaded, shown, no window", "a static window created and shown", 0.2},
                     "us", Few);
}

void CompareOpeningAScreen(IClassFactory& factory, IStream& saved) {
    constexpr int Count = 1000;
    const comkit::UniqueFont font = LabelFont();
    Comparison comparison;
    for (int i = 0; i < 4; ++i) {
        double ours = 0;
        double bare = 0;
        {
            WindowlessForm form;
            std::vector<ShownControl> controls;
            ours = Timed([&] {
                for (int n = 0; n < Count; ++n) controls.push_back(Open(factory, saved, form, PlaceOf(n)));
                DrawAnew(form);
            });
            form.Clear();
            for (ShownControl& shown : controls) Close(shown);
        }
        {
            const WindowlessForm form;
            std::vector<std::unique_ptr<StaticPair>> pairs;
            bare = Timed([&] {
                for (int n = 0; n < Count; ++n)
                    pairs.push_back(std::make_unique<StaticPair>(form.Window(), font.Get(), PlaceOf(n)));
                RedrawWindow(form.Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
            });
        }
        if (i > 0) comparison.Add(ours, bare);
    }
    comparison.Print({"a screen of 1,000 show controls opened", "1,000 pairs of static windows", 0.25}, "ms", 1000);
}

/// The processor time that a screen of 1,000 takes while nothing happens.
void MeasureIdling(IClassFactory& factory, IStream& saved) {
    WindowlessForm form;
    std::vector<ShownControl> controls;
    controls.reserve(1000);
    for (int n = 0; n < 1000; ++n) controls.push_back(Open(factory, saved, form, PlaceOf(n)));
    UpdateWindow(form.Window());
    const auto used = [] {
        FILETIME made{};
        FILETIME ended{};
        FILETIME kernel{};
        FILETIME user{};
        GetProcessTimes(GetCurrentProcess(), &made, &ended, &kernel, &user);
        return (static_cast<double>(kernel.dwLowDateTime) + static_cast<double>(user.dwLowDateTime)) / 10;
    };
    constexpr DWORD Idle = 3000;
    const double before = used();
    const DWORD start = GetTickCount();
    for (DWORD now = start; now - start < Idle; now = GetTickCount()) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, Idle - (now - start), QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    std::printf("note|1,000 show controls in which nothing happens took %.0f us of processor time in %lu s.\n",
                used() - before, Idle / 1000);
    form.Clear();
    for (ShownControl& shown : controls) Close(shown);
}

void CompareFormatting() {
    const kiv::win32::SystemRegionalNames names;
    kiv::DisplayFormatter date;
    date.Configure({.dayFirst = true, .showLongDay = true}, names);
    kiv::DisplayFormatter time;
    time.Configure({.showSeconds = true}, names);
    kiv::DateTimeNumbers numbers{13, 5, 9, 11, 5, 2026};
    const SYSTEMTIME now{2026, 11, 4, 5, 13, 5, 9, 0};
    constexpr int Texts = 1000;
    std::size_t written = 0;
    Compare(
        {"the text of a date, in the component", "the system's date and upper case calls", 0.1}, 201, Texts,
        [&] {
            for (int i = 0; i < Texts; ++i) {
                numbers.day = 1 + i % 28;
                written += date.FormatDateText(numbers).size();
            }
        },
        [&] {
            std::array<wchar_t, 80> text{};
            for (int i = 0; i < Texts; ++i) {
                SYSTEMTIME day = now;
                day.wDay = static_cast<WORD>(1 + i % 28);
                const int length = GetDateFormatW(LOCALE_USER_DEFAULT, 0, &day, L"dddd', 'dd'-'MMM'-'yyyy", text.data(),
                                                  static_cast<int>(text.size()));
                CharUpperBuffW(text.data(), static_cast<DWORD>(length));
                written += static_cast<std::size_t>(length);
            }
        });
    Compare(
        {"the text of a time, in the component", "the system's time and upper case calls", 0.1}, 201, Texts,
        [&] {
            for (int i = 0; i < Texts; ++i) {
                numbers.second = i % 60;
                written += time.FormatTimeText(numbers).size();
            }
        },
        [&] {
            std::array<wchar_t, 80> text{};
            for (int i = 0; i < Texts; ++i) {
                SYSTEMTIME second = now;
                second.wSecond = static_cast<WORD>(i % 60);
                const int length = GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &second, L"hh':'mm':'ss tt", text.data(),
                                                  static_cast<int>(text.size()));
                CharUpperBuffW(text.data(), static_cast<DWORD>(length));
                written += static_cast<std::size_t>(length);
            }
        });
    if (written == 0) std::printf("nothing was written\n");
}

}  // namespace

void RunShowControl(IClassFactory& factory) {
    const auto saved = SavedControl(factory);
    CompareFormatting();
    CompareOpeningOne(factory, *saved.Get());
    MeasureIdling(factory, *saved.Get());
    CompareOpeningAScreen(factory, *saved.Get());
}

}  // namespace bench
