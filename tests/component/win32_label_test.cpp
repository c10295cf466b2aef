// Drawn labels: the same picture in a window, without one and inactive; what the mouse does to them; what is painted
// again and what is not; the end of everything inside any call out.
#include <windows.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "comkit/Bstr.h"
#include "comkit/Handle.h"
#include "win32/Dpi.h"
#include "win32/GdiFont.h"
#include "win32/LabelSurface.h"
#include "win32/OleFont.h"
#include "win32_TestAnswers.h"

namespace kiv::win32::test {

namespace {

constexpr COLORREF Paper = RGB(250, 240, 200);
constexpr COLORREF Ink = RGB(200, 0, 0);
constexpr COLORREF Ground = RGB(0, 90, 140);

/// What happened, as short texts; a handler may act on each.
class LabelLog final : public WidgetListener, public WindowlessSite {
public:
    std::vector<std::string> lines;
    std::vector<RECT> outdated;
    HDC given = nullptr;  ///< to draw at once with
    std::vector<RECT> drawn;
    Point lastPosition;
    std::function<std::string(const Widget&)> nameOf;
    std::function<void(const std::string&)> then;

    void OnClick(Widget& source) override { Write("click " + nameOf(source)); }
    void OnDblClick(Widget& source) override { Write("dblclick " + nameOf(source)); }
    void OnKeyDown(Widget&, std::int16_t&, std::int16_t) override {}
    void OnKeyUp(Widget&, std::int16_t&, std::int16_t) override {}
    void OnKeyPress(Widget&, std::int16_t&) override {}
    void OnMouse(Widget& source, MouseAction action, const MouseArgs& args) override {
        lastPosition = args.position;
        const char* const what = action == MouseAction::Down ? "down " : action == MouseAction::Up ? "up " : "move ";
        Write(what + nameOf(source));
    }
    void OnChange(Widget&) override {}
    void OnResize() override { Write("resize"); }
    void OnSizeChanged(const Size&) override { Write("sizechanged"); }
    void OnFocus(bool) override {}
    void OnMouseActivate() override { Write("activate"); }
    void OnInvalidate(const RECT& pixels) override { outdated.push_back(pixels); }
    bool OnDraw(const RECT& pixels, const Drawing& draw) override {
        if (!given) return false;
        drawn.push_back(pixels);
        draw(given, {0, 0});
        return true;
    }
    void OnSettingsChanged() override { Write("settings"); }
    void OnCapture(bool wanted) override { Write(wanted ? "capture 1" : "capture 0"); }

    std::vector<std::string> Take() { return std::exchange(lines, {}); }

private:
    void Write(const std::string& line) {
        lines.push_back(line);
        const auto handler = then;
        if (handler) handler(std::string(line));
    }
};

class Bitmap {
public:
    Bitmap(int width, int height)
        : m_width(width),
          m_height(height),
          m_dc(CreateCompatibleDC(nullptr)),
          m_bitmap(Make(width, height, m_bits)),
          m_selection(m_dc.Get(), m_bitmap.Get()) {}
    HDC Dc() const { return m_dc.Get(); }
    COLORREF At(int x, int y) const { return GetPixel(m_dc.Get(), x, y); }
    std::vector<DWORD> Part(int left, int top, int width, int height) const {
        GdiFlush();
        std::vector<DWORD> pixels;
        for (int y = top; y < top + height; ++y)
            for (int x = left; x < left + width; ++x) pixels.push_back(m_bits[y * m_width + x] & 0xFFFFFF);
        return pixels;
    }
    long Count(COLORREF color) const {
        const DWORD wanted = RGB(GetBValue(color), GetGValue(color), GetRValue(color));
        const auto all = Part(0, 0, m_width, m_height);
        return static_cast<long>(std::count(all.begin(), all.end(), wanted));
    }

private:
    static HBITMAP Make(int width, int height, DWORD*& bits) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* memory = nullptr;
        const HBITMAP result = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
        bits = static_cast<DWORD*>(memory);
        return result;
    }
    int m_width;
    int m_height;
    DWORD* m_bits = nullptr;
    comkit::UniqueMemoryDc m_dc;
    comkit::UniqueBitmap m_bitmap;
    comkit::GdiSelection m_selection;
};

constexpr int Width = 200;
constexpr int Height = 40;
constexpr RECT Place{20, 30, 20 + Width, 30 + Height};

/// Two labels side by side, with a strip of ground round them: caption at (10, 5) to (90, 30), value to (180, 30).
class LabelTest : public testing::Test {
protected:
    void SetUp() override {
        TestAnswers::UseDpi(96);
        host = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"host", WS_POPUP | WS_CLIPCHILDREN | WS_VISIBLE, 40, 40,
                               400, 200, nullptr, nullptr, nullptr, nullptr);
        surface = std::make_unique<LabelSurface>(log);
        caption = surface->CreateLabel(u"lblCaption");
        value = surface->CreateLabel(u"lblValue");
        log.nameOf = [this](const Widget& w) {
            return &w == caption.get() ? "caption" : &w == value.get() ? "value" : "surface";
        };
        surface->SetBackColor(Ground);
        for (Label* const label : {caption.get(), value.get()}) {
            label->SetBackColor(Paper);
            label->SetForeColor(Ink);
            label->SetFont(MakeFont({.name = u"Liberation Sans", .size = 120000, .weight = 700}));
        }
        caption->SetBounds({150, 75, 1200, 375});
        value->SetBounds({1350, 75, 1350, 375});
        caption->SetCaption(u"Device");
        value->SetCaption(u"12:34:56");
        value->SetSunkenBorder(true);
        surface->SetSize({Width * 15, Height * 15});
        surface->SetListener(&log);
        log.Take();
        log.outdated.clear();
    }
    void TearDown() override {
        log.then = nullptr;
        Destroy();
        DestroyWindow(host);
    }
    void Destroy() {
        caption.reset();
        value.reset();
        surface.reset();
    }
    std::vector<DWORD> Drawn() const {
        const Bitmap bitmap(Width, Height);
        surface->Draw(bitmap.Dc(), {0, 0, Width, Height});
        return bitmap.Part(0, 0, Width, Height);
    }
    /// A mouse message at a place of the surface, by the way that it takes: to the window or through the container.
    void Mouse(UINT message, int x, int y, WPARAM keys = MK_LBUTTON) {
        if (const HWND window = surface->Window()) {
            SendMessageW(window, message, keys, MAKELPARAM(x, y));
        } else {
            surface->OnWindowMessage(message, keys, MAKELPARAM(x + Place.left, y + Place.top));
        }
    }
    static void Pump() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    using Lines = std::vector<std::string>;

    TestAnswers answers;
    HWND host = nullptr;
    LabelLog log;
    std::unique_ptr<LabelSurface> surface;
    std::unique_ptr<Label> caption;
    std::unique_ptr<Label> value;
};

TEST_F(LabelTest, WindowWindowlessAndInactiveDrawingGiveTheSamePixels) {
    const std::vector<DWORD> inactive = Drawn();

    surface->ActivateWindowless(host, Place);
    EXPECT_EQ(surface->Window(), nullptr);
    EXPECT_EQ(Drawn(), inactive);
    surface->Deactivate();

    surface->Activate(host, Place);
    ASSERT_NE(surface->Window(), nullptr);
    const Bitmap painted(Width, Height);
    SendMessageW(surface->Window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(painted.Dc()), PRF_CLIENT);
    EXPECT_EQ(painted.Part(0, 0, Width, Height), inactive);
    surface->Deactivate();

    // Anywhere in a device context that is set up for something else.
    const Bitmap moved(Width + 100, Height + 100);
    SetViewportOrgEx(moved.Dc(), 13, 7, nullptr);
    SetTextAlign(moved.Dc(), TA_RIGHT | TA_BASELINE);
    SetTextCharacterExtra(moved.Dc(), 5);
    SetBkMode(moved.Dc(), TRANSPARENT);
    SetTextColor(moved.Dc(), 0x112233);
    SetBkColor(moved.Dc(), 0x445566);
    const HGDIOBJ font = GetCurrentObject(moved.Dc(), OBJ_FONT);
    surface->Draw(moved.Dc(), {30, 20, 30 + Width, 20 + Height});
    EXPECT_EQ(moved.Part(43, 27, Width, Height), inactive);
    // Left as it was.
    EXPECT_EQ(GetTextAlign(moved.Dc()), UINT{TA_RIGHT | TA_BASELINE});
    EXPECT_EQ(GetTextCharacterExtra(moved.Dc()), 5);
    EXPECT_EQ(GetTextColor(moved.Dc()), COLORREF{0x112233});
    EXPECT_EQ(GetBkColor(moved.Dc()), COLORREF{0x445566});
    EXPECT_EQ(GetCurrentObject(moved.Dc(), OBJ_FONT), font);
    POINT origin{};
    GetViewportOrgEx(moved.Dc(), &origin);
    EXPECT_EQ(origin.x, 13);

    // In a mapping of the container's own, where a picture of the same size in its units is another one in pixels.
    const Bitmap large(2 * Width, 2 * Height);
    surface->Draw(large.Dc(), {0, 0, 2 * Width, 2 * Height});
    const Bitmap mapped(2 * Width, 2 * Height);
    SetMapMode(mapped.Dc(), MM_ANISOTROPIC);
    SetWindowExtEx(mapped.Dc(), 1, 1, nullptr);
    SetViewportExtEx(mapped.Dc(), 2, 2, nullptr);
    surface->Draw(mapped.Dc(), {0, 0, Width, Height});
    EXPECT_EQ(mapped.Part(0, 0, 2 * Width, 2 * Height), large.Part(0, 0, 2 * Width, 2 * Height));
}

TEST_F(LabelTest, ThePictureHasTheLabelsColorsPlacesAndEdges) {
    const Bitmap bitmap(2 * Width, 2 * Height);
    surface->Draw(bitmap.Dc(), {0, 0, 2 * Width, 2 * Height});
    EXPECT_EQ(bitmap.At(4, 4), Ground);
    EXPECT_EQ(bitmap.At(2 * 89, 2 * 29), Paper) << "scaled with the rectangle";
    EXPECT_EQ(bitmap.At(2 * 185, 2 * 20), Ground);
    EXPECT_EQ(bitmap.At(2 * 90 + 1, 12), GetSysColor(COLOR_BTNSHADOW)) << "the sunken edge";
    EXPECT_GT(bitmap.Count(Ink), 100);

    caption->SetEnabled(false);
    value->SetVisible(false);
    const Bitmap grey(Width, Height);
    surface->Draw(grey.Dc(), {0, 0, Width, Height});
    EXPECT_EQ(grey.Count(Ink), 0);
    EXPECT_GT(grey.Count(GetSysColor(COLOR_GRAYTEXT)), 20);
    EXPECT_EQ(grey.At(120, 20), Ground) << "nothing is left of a hidden label";

    TestAnswers::UseHighContrast(true);
    const Bitmap contrast(Width, Height);
    surface->Draw(contrast.Dc(), {0, 0, Width, Height});
    EXPECT_EQ(contrast.Count(Paper) + contrast.Count(Ground), 0);
}

TEST_F(LabelTest, APartIsDrawnAsItIsInTheWhole) {
    const std::vector<DWORD> whole = Drawn();
    const Bitmap parts(Width, Height);
    for (int left = 0; left < Width; left += 30) {
        const int saved = SaveDC(parts.Dc());
        IntersectClipRect(parts.Dc(), left, 0, left + 30, Height);
        surface->Draw(parts.Dc(), {0, 0, Width, Height});
        RestoreDC(parts.Dc(), saved);
    }
    EXPECT_EQ(parts.Part(0, 0, Width, Height), whole);
}

TEST_F(LabelTest, LabelsOfDifferentFontsEachHaveTheirOwn) {
    caption->SetFont(MakeFont({.name = u"Liberation Serif", .size = 60000}));
    value->SetFont(MakeFont({.name = u"Liberation Mono", .size = 140000}));
    const std::vector<DWORD> both = Drawn();
    caption->SetVisible(false);
    const Bitmap alone(Width, Height);
    surface->Draw(alone.Dc(), {0, 0, Width, Height});
    const Bitmap together(Width, Height);
    caption->SetVisible(true);
    surface->Draw(together.Dc(), {0, 0, Width, Height});
    EXPECT_EQ(together.Part(90, 5, 90, 25), alone.Part(90, 5, 90, 25));
    value->SetVisible(false);
    surface->Draw(alone.Dc(), {0, 0, Width, Height});
    EXPECT_EQ(together.Part(10, 5, 80, 25), alone.Part(10, 5, 80, 25));
    EXPECT_EQ(together.Part(0, 0, Width, Height), both);
}

TEST_F(LabelTest, EachTextIsAsWideAsTheSystemMakesItHoweverOftenItIsMeasured) {
    const comkit::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
    for (const std::int64_t size : {82500, 240000, 82500}) {
        const FontPtr font = MakeFont({.name = u"Liberation Sans", .size = size});
        surface->SetFont(font);
        const GdiFontPtr handle = FindGdiFont(font->Traits(), 96);
        const comkit::GdiSelection selection(dc.Get(), handle->Handle());
        for (int round = 0; round < 2; ++round) {
            std::u16string text = u"W";
            for (const char16_t last : std::u16string_view(u"iWmlx09: ,Ww.-")) {
                text.push_back(last);
                SIZE pixels{};
                GetTextExtentPoint32W(dc.Get(), comkit::ToWide(text).data(), static_cast<int>(text.size()), &pixels);
                const Size measured = surface->MeasureText(text);
                EXPECT_EQ(measured, (Size{pixels.cx * 15.0, pixels.cy * 15.0})) << text.size();
                EXPECT_EQ(surface->MeasureText(text), measured);
            }
            EXPECT_EQ(surface->MeasureText(u"").width, 0);
            EXPECT_GT(surface->MeasureText(std::u16string(100, u'x')).width, surface->MeasureText(text).width);
        }
    }
}

TEST(PixelTest, LengthsGoToTheNearestPixelAndHalvesUp) {
    for (const int dpi : {96, 120, 288}) {
        for (int twips = -4000; twips <= 4000; ++twips) {
            const double length = twips / 4.0;
            EXPECT_EQ(PixelsFromTwips(length, dpi), static_cast<int>(std::floor(length * dpi / 1440 + 0.5))) << length;
        }
    }
    EXPECT_EQ(PixelsFromTwips(1e300, 96), 32767);
    EXPECT_EQ(PixelsFromTwips(-1e300, 96), -32767);
    EXPECT_EQ(PixelsFromTwips(std::nan(""), 96), 0);
}

TEST_F(LabelTest, TextIsClippedAtTheLabelsEdge) {
    caption->SetCaption(u"MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM");
    value->SetCaption(u"");
    const Bitmap bitmap(Width, Height);
    surface->Draw(bitmap.Dc(), {0, 0, Width, Height});
    const auto beyond = bitmap.Part(92, 7, 86, 20);
    EXPECT_TRUE(std::all_of(beyond.begin(), beyond.end(),
                            [](DWORD p) { return p == RGB(GetBValue(Paper), GetGValue(Paper), GetRValue(Paper)); }));
}

TEST_F(LabelTest, OnlyWhatReallyChangesIsPaintedAgain) {
    surface->ActivateWindowless(host, Place);
    log.outdated.clear();
    EXPECT_FALSE(caption->SetCaption(u"Device"));
    caption->SetForeColor(Ink);
    caption->SetBounds(caption->Bounds());
    surface->SetBackColor(Ground);
    EXPECT_TRUE(log.outdated.empty());

    EXPECT_TRUE(value->SetCaption(u"12:34:57"));
    ASSERT_EQ(log.outdated.size(), 1u);
    const RECT expected{90, 5, 180, 30};
    EXPECT_TRUE(EqualRect(log.outdated.data(), &expected));
    value->SetVisible(false);
    log.outdated.clear();
    value->SetCaption(u"hidden");
    value->SetForeColor(Paper);
    EXPECT_TRUE(log.outdated.empty()) << "a hidden label changes nothing to see";
    surface->Deactivate();

    surface->Activate(host, Place);
    Pump();
    UpdateWindow(surface->Window());
    EXPECT_FALSE(GetUpdateRect(surface->Window(), nullptr, FALSE));
    caption->SetCaption(u"Device");
    EXPECT_FALSE(GetUpdateRect(surface->Window(), nullptr, FALSE));
    caption->SetForeColor(Paper);
    RECT update{};
    EXPECT_TRUE(GetUpdateRect(surface->Window(), &update, FALSE));
    const RECT label{10, 5, 90, 30};
    EXPECT_TRUE(EqualRect(&update, &label));
}

// A paint message costs the system several times as much as the text.
TEST_F(LabelTest, AnotherTextIsDrawnAtOnceWhereNothingIsInItsWay) {
    const Bitmap picture(Width, Height);
    const auto look = [&](const RECT& part) {
        return picture.Part(part.left, part.top, part.right - part.left, part.bottom - part.top);
    };
    const RECT captionPart{10, 5, 90, 30};
    const RECT valuePart{90, 5, 180, 30};
    surface->ActivateWindowless(host, Place);
    log.given = picture.Dc();
    log.outdated.clear();
    caption->SetCaption(u"Other");
    EXPECT_TRUE(log.outdated.empty());
    ASSERT_EQ(log.drawn.size(), 1u);
    EXPECT_TRUE(EqualRect(log.drawn.data(), &captionPart));
    EXPECT_GT(picture.Count(Paper), 0) << "drawn, with its own ground";
    const auto drawn = look(captionPart);
    EXPECT_EQ(look(valuePart), std::vector<DWORD>(drawn.size() / 80 * 90)) << "and nothing else";
    surface->Draw(picture.Dc(), {0, 0, Width, Height});
    EXPECT_EQ(look(captionPart), drawn) << "as it is painted";

    value->SetBounds({1200, 75, 1500, 375});
    log.drawn.clear();
    log.outdated.clear();
    value->SetCaption(u"on top of each other");
    EXPECT_TRUE(log.drawn.empty());
    EXPECT_EQ(log.outdated.size(), 1u);
    surface->Deactivate();
    value->SetCaption(u"nowhere");
    EXPECT_TRUE(log.drawn.empty());

    value->SetBounds({1350, 75, 1350, 375});
    surface->Activate(host, Place);
    Pump();
    UpdateWindow(surface->Window());
    const auto photograph = [&] {
        const comkit::WindowDc window(surface->Window());
        BitBlt(picture.Dc(), 0, 0, Width, Height, window.Get(), 0, 0, SRCCOPY);
    };
    photograph();
    const auto before = look(valuePart);
    value->SetCaption(u"12:34:57");
    EXPECT_FALSE(GetUpdateRect(surface->Window(), nullptr, FALSE));
    photograph();
    EXPECT_NE(look(valuePart), before);
    EXPECT_EQ(look(captionPart), drawn);
    ShowWindow(surface->Window(), SW_HIDE);
    value->SetCaption(u"hidden");
    ShowWindow(surface->Window(), SW_SHOWNA);
    UpdateWindow(surface->Window());
    photograph();
    EXPECT_NE(look(valuePart), before);
}

class LabelMouseTest : public LabelTest, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        LabelTest::SetUp();
        if (GetParam()) {
            surface->ActivateWindowless(host, Place);
        } else {
            surface->Activate(host, Place);
        }
        log.Take();
    }
    /// The capture is asked of the container only where there is no window.
    Lines Expect(Lines lines) const {
        if (!GetParam()) std::erase_if(lines, [](const std::string& l) { return l.starts_with("capture"); });
        return lines;
    }
};

TEST_P(LabelMouseTest, SourcesAndPositionsAreThoseOfTheLabelUnderTheMouse) {
    struct Case {
        int x, y;
        const char* source;
        Point position;
    };
    for (const Case& c : {Case{15, 10, "caption", {75, 75}}, Case{100, 10, "value", {150, 75}},
                          Case{3, 2, "surface", {45, 30}}, Case{190, 35, "surface", {2850, 525}}}) {
        Mouse(WM_MOUSEMOVE, c.x, c.y, 0);
        EXPECT_EQ(log.Take(), (Lines{std::string("move ") + c.source}));
        EXPECT_EQ(log.lastPosition, c.position);
    }
    // A label that is disabled or hidden lets the mouse through.
    caption->SetEnabled(false);
    value->SetVisible(false);
    for (const int x : {15, 100}) {
        Mouse(WM_MOUSEMOVE, x, 10, 0);
        EXPECT_EQ(log.Take(), (Lines{"move surface"}));
        EXPECT_EQ(log.lastPosition, (Point{x * 15.0, 150}));
    }
}

TEST_P(LabelMouseTest, AClickIsAPressAndAReleaseOverTheSameLabel) {
    Mouse(WM_LBUTTONDOWN, 15, 10);
    Mouse(WM_LBUTTONUP, 20, 12, 0);
    EXPECT_EQ(log.Take(),
              Expect({"activate", "capture 1", "down caption", "capture 0", "up caption", "click caption"}));

    Mouse(WM_LBUTTONDOWN, 15, 10);
    Mouse(WM_MOUSEMOVE, 100, 10);
    EXPECT_EQ(log.lastPosition, (Point{1350, 75})) << "counted from the label that has the mouse";
    Mouse(WM_LBUTTONUP, 100, 10, 0);
    EXPECT_EQ(log.Take(), Expect({"activate", "capture 1", "down caption", "move caption", "capture 0", "up caption"}));

    Mouse(WM_RBUTTONDOWN, 15, 10, MK_RBUTTON);
    Mouse(WM_RBUTTONUP, 15, 10, 0);
    EXPECT_EQ(log.Take(), (Lines{"activate", "down caption", "up caption"}));
}

TEST_P(LabelMouseTest, ADoubleClickIsOneClickAndOneDoubleClick) {
    Mouse(WM_LBUTTONDOWN, 15, 10);
    Mouse(WM_LBUTTONUP, 15, 10, 0);
    log.Take();
    Mouse(WM_LBUTTONDBLCLK, 15, 10);
    Mouse(WM_LBUTTONUP, 15, 10, 0);
    EXPECT_EQ(log.Take(),
              Expect({"activate", "capture 1", "down caption", "dblclick caption", "capture 0", "up caption"}));
}

TEST_P(LabelMouseTest, AMouseThatIsTakenAwayIsNoClick) {
    Mouse(WM_LBUTTONDOWN, 15, 10);
    if (GetParam()) {
        surface->OnWindowMessage(WM_CAPTURECHANGED, 0, 0);
    } else {
        EXPECT_EQ(GetCapture(), surface->Window());
        SetCapture(host);
        ReleaseCapture();
    }
    log.Take();
    Mouse(WM_LBUTTONUP, 15, 10, 0);
    const Lines lines = log.Take();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "click caption"), 0);

    // Whoever ends while it has the mouse gives it back.
    Mouse(WM_LBUTTONDOWN, 15, 10);
    log.Take();
    surface->Deactivate();
    EXPECT_EQ(log.Take(), Expect({"capture 0"}));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_P(LabelMouseTest, TheSurfaceOrALabelMayEndInsideAnyCall) {
    const std::vector<std::string> lines = Expect({"activate", "capture 1", "down caption", "dblclick caption",
                                                   "move caption", "capture 0", "up caption", "click caption"});
    for (const std::string& fatal : lines) {
        for (const bool onlyTheLabel : {false, true}) {
            TearDown();
            SetUp();
            bool ended = false;
            log.then = [&](const std::string& line) {
                if (line != fatal || ended) return;
                ended = true;
                if (onlyTheLabel) {
                    caption.reset();
                } else {
                    Destroy();
                }
            };
            for (const UINT first : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONDBLCLK}})
                for (const UINT message : {first, UINT{WM_MOUSEMOVE}, UINT{WM_LBUTTONUP}})
                    if (surface) Mouse(message, 15, 10, message == WM_LBUTTONUP ? 0 : MK_LBUTTON);
            EXPECT_TRUE(ended) << fatal;
            if (surface) {
                Mouse(WM_LBUTTONUP, 15, 10, 0);
                Mouse(WM_MOUSEMOVE, 15, 10, 0);
                EXPECT_EQ(log.Take().back(), "move surface") << "the label's place is the surface's now";
            }
        }
    }
}

TEST_P(LabelMouseTest, ADisabledSurfaceTakesNoMouseWithoutAWindow) {
    surface->SetEnabled(false);
    if (GetParam()) {
        EXPECT_FALSE(surface->OnWindowMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(40, 45)).has_value());
        EXPECT_TRUE(log.Take().empty());
    } else {
        EXPECT_FALSE(IsWindowEnabled(surface->Window()));
    }
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutAWindow, LabelMouseTest, testing::Bool());

TEST_F(LabelTest, SizesComeFromTheContainerAndTheResolutionOfItsWindow) {
    surface->ActivateWindowless(host, {0, 0, 300, 50});
    EXPECT_EQ(log.Take(), (Lines{"resize"}));
    EXPECT_EQ(surface->Bounds(), (Rect{0, 0, 4500, 750}));
    surface->SetPixelRect({5, 5, 305, 55});
    EXPECT_TRUE(log.Take().empty()) << "moved only";
    surface->SetSize({3000, 600});
    EXPECT_EQ(log.Take(), (Lines{"sizechanged"}));

    TestAnswers::UseDpi(192);
    surface->SetPixelRect({0, 0, 400, 80});
    EXPECT_EQ(surface->Dpi(), 192);
    EXPECT_EQ(surface->Bounds(), (Rect{0, 0, 3000, 600})) << "the same size on a finer screen";
    EXPECT_EQ(log.Take(), (Lines{"resize"}));
}

}  // namespace

}  // namespace kiv::win32::test
