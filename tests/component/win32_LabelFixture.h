// Two labels on a surface, with a listener and site that writes down what happens, and pictures to look at them.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "comkit/Handle.h"
#include "win32/LabelSurface.h"
#include "win32/OleFont.h"
#include "win32_TestAnswers.h"

namespace kiv::win32::test {

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

}  // namespace kiv::win32::test
