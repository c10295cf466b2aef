// Drawn labels: the same picture in a window, without one and inactive; what is painted again, what is drawn at once,
// and what is left alone.
#include "win32_LabelFixture.h"

#include <cmath>

#include "comkit/Bstr.h"
#include "win32/Dpi.h"
#include "win32/GdiFont.h"

namespace kiv::win32::test {

namespace {

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

TEST_F(LabelTest, WhatTheDeviceContextHasAlreadyIsUsedAndLeft) {
    const FontTraits serif{.name = u"Liberation Serif", .size = 60000};
    const FontTraits mono{.name = u"Liberation Mono", .size = 140000};
    caption->SetFont(MakeFont(serif));
    value->SetFont(MakeFont(mono));
    const std::vector<DWORD> expected = Drawn();
    for (const FontTraits& traits : {serif, mono}) {
        const Bitmap picture(Width, Height);
        const GdiFontPtr font = FindGdiFont(traits, 96);
        const comkit::GdiSelection selection(picture.Dc(), font->Handle());
        SetTextColor(picture.Dc(), Ink);
        SetBkColor(picture.Dc(), Paper);
        surface->Draw(picture.Dc(), {0, 0, Width, Height});
        EXPECT_EQ(picture.Part(0, 0, Width, Height), expected);
        EXPECT_EQ(GetCurrentObject(picture.Dc(), OBJ_FONT), font->Handle());
        EXPECT_EQ(GetTextColor(picture.Dc()), Ink);
        EXPECT_EQ(GetBkColor(picture.Dc()), Paper);
    }
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
