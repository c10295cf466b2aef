// The control on paper: drawn on a printer's device context it is all there, as large as asked for, in its colours.
#include <windows.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "ControlFixture.h"
#include "Sheet.h"
#include "TestPrinter.h"

namespace component {
namespace {

// Surround, two frames, captions, title, its text, days, trailing days.
constexpr std::size_t FewestColors = 5;

/// What a container hands over with a device context, to say which device it draws for.
class TargetDevice {
public:
    TargetDevice() : m_bytes(sizeof(DVTARGETDEVICE) + 2 * MaxName * sizeof(wchar_t)) {
        auto* device = Get();
        device->tdSize = static_cast<DWORD>(m_bytes.size());
        device->tdDriverNameOffset = Add(0, L"winspool");
        device->tdDeviceNameOffset = Add(1, TestPrinter::Name());
    }
    DVTARGETDEVICE* Get() { return reinterpret_cast<DVTARGETDEVICE*>(m_bytes.data()); }

private:
    static constexpr std::size_t MaxName = 40;
    WORD Add(std::size_t slot, const wchar_t* text) {
        const std::size_t offset = sizeof(DVTARGETDEVICE) + slot * MaxName * sizeof(wchar_t);
        std::memcpy(m_bytes.data() + offset, text, (wcslen(text) + 1) * sizeof(wchar_t));
        return static_cast<WORD>(offset);
    }
    std::vector<std::byte> m_bytes;
};

class Printing : public ControlFixture {
protected:
    explicit Printing(const TestedClass& what = SetClass) : ControlFixture(what) {}
    void SetUp() override {
        if (!m_printer.IsThere()) GTEST_SKIP() << "no printer can be installed here";
    }
    SIZEL Extent() {
        SIZEL extent{};
        EXPECT_EQ(S_OK, As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent));
        return extent;
    }
    HRESULT DrawInto(HDC dc, const RECTL& bounds, DVTARGETDEVICE* device = nullptr, HDC deviceDc = nullptr) {
        return As<IViewObject2>()->Draw(DVASPECT_DOCPRINT, -1, nullptr, device, deviceDc, dc, &bounds, nullptr, nullptr,
                                        0);
    }
    /// Its natural size at the printer's resolution, two inches from the edges of the page.
    RECTL PlaceOnPage() {
        const SIZEL extent = Extent();
        return {1200, 1200, 1200 + MulDiv(extent.cx, 600, 2540), 1200 + MulDiv(extent.cy, 600, 2540)};
    }
    Sheet OnScreen(const PrintedPicture& printed) {
        return Sheet({printed.width, printed.height}, [&](HDC dc) {
            EXPECT_EQ(S_OK, DrawInto(dc, {0, 0, printed.width, printed.height}));
        });
    }

    TestPrinter m_printer;
};

TEST_F(Printing, APageShowsTheWholeControlInItsColoursAsLargeAsAskedFor) {
    for (const bool active : {false, true}) {
        SCOPED_TRACE(active);
        Place(true);
        Put(L"UsePCDateTime", false);
        Put(L"BackColor", 0x00C0FF);
        if (active) {
            ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        }
        const SIZEL extent = Extent();
        const RECTL bounds = PlaceOnPage();
        TargetDevice device;
        const PrintedPage page = m_printer.Print([&](HDC dc) {
            EXPECT_EQ(600, GetDeviceCaps(dc, LOGPIXELSX));
            const comkit::UniqueMemoryDc information(CreateICW(L"WINSPOOL", TestPrinter::Name(), nullptr, nullptr));
            EXPECT_EQ(S_OK, DrawInto(dc, bounds, device.Get(), information.Get()));
        });
        ASSERT_EQ(1u, page.pictures.size());
        const PrintedPicture& printed = page.pictures[0];
        EXPECT_NEAR(bounds.left, printed.pageLeft, 1);
        EXPECT_NEAR(bounds.top, printed.pageTop, 1);
        EXPECT_NEAR(bounds.right - bounds.left, printed.pageWidth, 1);
        EXPECT_NEAR(bounds.bottom - bounds.top, printed.pageHeight, 1);
        EXPECT_NEAR(MulDiv(extent.cx, 96, 2540), printed.width, 1);
        EXPECT_NEAR(MulDiv(extent.cy, 96, 2540), printed.height, 1);
        const Sheet paper(printed.pixels);
        ASSERT_EQ(static_cast<std::size_t>(printed.width) * static_cast<std::size_t>(printed.height),
                  paper.PixelCount());
        EXPECT_GE(paper.Colors(), FewestColors);
        EXPECT_LT(paper.DifferenceTo(OnScreen(printed)), 0.01);
        Remove();
    }
}

TEST_F(Printing, AMetafileForThePrinterHoldsThePictureInThePrintersMeasures) {
    Place(false);
    const SIZEL extent = Extent();
    const comkit::UniqueMemoryDc printer(CreateDCW(L"WINSPOOL", TestPrinter::Name(), nullptr, nullptr));
    ASSERT_TRUE(printer);
    const HDC recording = CreateEnhMetaFileW(printer.Get(), nullptr, nullptr, nullptr);
    ASSERT_TRUE(recording);
    const LONG width = MulDiv(extent.cx, 600, 2540);
    const LONG height = MulDiv(extent.cy, 600, 2540);
    EXPECT_EQ(S_OK, DrawInto(recording, {0, 0, width, height}));
    const HENHMETAFILE file = CloseEnhMetaFile(recording);
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(file, sizeof(header), &header);
    EXPECT_NEAR(width, header.rclBounds.right - header.rclBounds.left, 2);
    EXPECT_NEAR(height, header.rclBounds.bottom - header.rclBounds.top, 2);
    const SIZE pixels{MulDiv(extent.cx, 96, 2540), MulDiv(extent.cy, 96, 2540)};
    const Sheet played(pixels, [&](HDC dc) {
        const RECT whole{0, 0, pixels.cx, pixels.cy};
        PlayEnhMetaFile(dc, file, &whole);
    });
    DeleteEnhMetaFile(file);
    EXPECT_GE(played.Colors(), FewestColors);
    const Sheet direct(pixels, [&](HDC dc) { DrawInto(dc, {0, 0, pixels.cx, pixels.cy}); });
    EXPECT_LT(played.DifferenceTo(direct), 0.25) << "scaled down and up again";
}

class ShowPrinting : public Printing {
protected:
    ShowPrinting() : Printing(ShowClass) {}
};

// Its texts are printed as texts: in the printer's resolution, not in the screen's.
TEST_F(ShowPrinting, APageShowsBothTextsInTheirFontPlaceAndColours) {
    for (const bool windowless : {false, true}) {
        SCOPED_TRACE(windowless);
        site->offersNoWindow = windowless;
        Place(true);
        Put(L"Caption", u"Device: 12,5");
        Put(L"BackColor", 0x0080FF);
        Put(L"ForeColor", 0x800000);
        Put(L"BorderStyle", 1);
        if (windowless) {
            ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        }
        const RECTL bounds = PlaceOnPage();
        TargetDevice device;
        const PrintedPage page = m_printer.Print([&](HDC dc) {
            const comkit::UniqueMemoryDc information(CreateICW(L"WINSPOOL", TestPrinter::Name(), nullptr, nullptr));
            EXPECT_EQ(S_OK, DrawInto(dc, bounds, device.Get(), information.Get()));
        });
        EXPECT_TRUE(page.pictures.empty());
        ASSERT_EQ(2u, page.texts.size());
        const std::wstring shown = TextOf(L"Value");
        std::string value(shown.begin(), shown.end());
        const LONG border = bounds.left + MulDiv(Get(L"CaptionWidth").Get().iVal, 600, 1440);
        for (const PrintedText& printed : page.texts) {
            SCOPED_TRACE(printed.text);
            const bool isValue = printed.left > border;
            EXPECT_EQ(isValue ? value : "Device: 12,5", printed.text);
            EXPECT_EQ(0x000080u, printed.color);
            EXPECT_NEAR(8.25 * 600 / 72, printed.fontHeight, 4) << "the size of the default font";
            EXPECT_GT(printed.base - printed.fontHeight / 2, bounds.top);
            EXPECT_LT(printed.base, bounds.bottom);
            EXPECT_GE(printed.left, printed.clip.left);
            EXPECT_GE(printed.clip.left, isValue ? border - 1 : bounds.left - 1);
            EXPECT_LE(printed.clip.right, (isValue ? bounds.right : border) + 1);
        }
        EXPECT_NE(page.texts[0].text, page.texts[1].text);

        LONGLONG ground = 0;
        for (const PrintedArea& area : page.areas) {
            const RECT& place = area.place;
            EXPECT_GE(place.left, bounds.left - 1);
            EXPECT_GE(place.top, bounds.top - 1);
            EXPECT_LE(place.right, bounds.right + 1);
            EXPECT_LE(place.bottom, bounds.bottom + 1);
            if (area.color == 0xFF8000)
                ground += LONGLONG{place.right - place.left} * LONGLONG{place.bottom - place.top};
        }
        const LONGLONG whole = LONGLONG{bounds.right - bounds.left} * LONGLONG{bounds.bottom - bounds.top};
        EXPECT_GT(ground, whole * 8 / 10) << "all but the edge round the value";
        EXPECT_LE(ground, whole * 101 / 100);
        Remove();
    }
}

}  // namespace
}  // namespace component
