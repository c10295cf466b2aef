// A calendar whose title and months have one background, as the disabled one has by default: nothing may vanish in it.
#include <algorithm>
#include <vector>

#include "win32_SurfaceFixture.h"

namespace kiv::win32::test {

namespace {

constexpr COLORREF Ground = RGB(250, 250, 200);
constexpr COLORREF TitleInk = RGB(0, 150, 0);
constexpr COLORREF DayInk = RGB(200, 0, 0);
constexpr int CellHeight = 12;

class LegibilityTest : public SurfaceTest {
protected:
    void SetUp() override {
        SurfaceTest::SetUp();
        Calendar& calendar = *parts->calendar;
        calendar.SetBackColor(Ground);
        calendar.SetMonthBackColor(Ground);
        calendar.SetTitleBackColor(Ground);
        calendar.SetTitleForeColor(TitleInk);
        calendar.SetTrailingForeColor(RGB(0, 0, 200));
        calendar.SetForeColor(DayInk);
        calendar.SetValue({2026, 11, 18});
    }

    /// The rows of the surface's picture.
    std::vector<std::vector<COLORREF>> Picture() const {
        const RECT size = PixelSize();
        const comkit::WindowDc screen(nullptr);
        const comkit::UniqueMemoryDc dc(CreateCompatibleDC(screen.Get()));
        const comkit::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), size.right, size.bottom));
        const comkit::GdiSelection selection(dc.Get(), bitmap.Get());
        parts->surface.Draw(dc.Get(), size);
        std::vector<std::vector<COLORREF>> rows(static_cast<std::size_t>(size.bottom));
        for (int y = 0; y < size.bottom; ++y)
            for (int x = 0; x < size.right; ++x) rows[static_cast<std::size_t>(y)].push_back(GetPixel(dc.Get(), x, y));
        return rows;
    }

    /// Rows of text in a colour: runs of picture rows that contain it.
    static int LinesIn(const std::vector<std::vector<COLORREF>>& rows, COLORREF color) {
        int lines = 0;
        bool inside = false;
        for (const auto& row : rows) {
            const bool has = std::ranges::count(row, color) > 0;
            if (has && !inside) ++lines;
            inside = has;
        }
        return lines;
    }

    /// The longest vertical stroke in a colour. (The native calendar draws a horizontal one below the weekdays.)
    static int LongestStroke(const std::vector<std::vector<COLORREF>>& rows, COLORREF color) {
        int longest = 0;
        for (std::size_t x = 0; x < rows.front().size(); ++x) {
            int length = 0;
            for (const auto& row : rows) {
                length = row[x] == color ? length + 1 : 0;
                longest = std::max(longest, length);
            }
        }
        return longest;
    }
};

TEST_F(LegibilityTest, TheWeekdaysStandBelowTheTitleAndTheChosenDayIsFramed) {
    const auto rows = Picture();
    EXPECT_EQ(LinesIn(rows, TitleInk), 2) << "the month's name and the weekdays";
    EXPECT_GE(LongestStroke(rows, DayInk), CellHeight) << "a frame is higher than any digit";
}

TEST_F(LegibilityTest, ATitleWithABackgroundOfItsOwnIsLeftToTheNativeCalendar) {
    parts->calendar->SetTitleBackColor(RGB(0, 0, 90));
    const auto rows = Picture();
    EXPECT_EQ(LinesIn(rows, TitleInk), 1);
    EXPECT_LT(LongestStroke(rows, DayInk), CellHeight);
}

}  // namespace

}  // namespace kiv::win32::test
