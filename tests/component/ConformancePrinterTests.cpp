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
        // Its natural size at the printer's resolution, two inches from the edges.
        const RECTL bounds{1200, 1200, 1200 + MulDiv(extent.cx, 600, 2540), 1200 + MulDiv(extent.cy, 600, 2540)};
        TargetDevice device;
        const auto pictures = m_printer.Print([&](HDC dc) {
            EXPECT_EQ(600, GetDeviceCaps(dc, LOGPIXELSX));
            const comkit::UniqueMemoryDc information(CreateICW(L"WINSPOOL", TestPrinter::Name(), nullptr, nullptr));
            EXPECT_EQ(S_OK, DrawInto(dc, bounds, device.Get(), information.Get()));
        });
        ASSERT_EQ(1u, pictures.size());
        const PrintedPicture& printed = pictures[0];
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

}  // namespace
}  // namespace component
