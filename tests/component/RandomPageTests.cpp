// Random user input on property pages.
#include <array>
#include <cstdio>

#include "ModalEnder.h"
#include "PageFixture.h"
#include "RandomLives.h"
#include "tests/Effort.h"

namespace component {
namespace {

class RandomPageInput : public PageFixture {
protected:
    /// The page's text boxes. Wine's keep a heap block each once they have looked for words in their text, as for a
    /// double click.
    long TextBoxes() const {
        long count = 0;
        for (HWND child = GetWindow(PageWindow(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            std::array<wchar_t, 8> name{};
            GetClassNameW(child, name.data(), static_cast<int>(name.size()));
            count += wcscmp(name.data(), L"Edit") == 0;
        }
        return count;
    }
};

TEST_F(RandomPageInput, WithoutAnyAPageThatIsFilledInAppliedAndClosedLeavesNothing) {
    const kiv::Share share = kiv::OurShare();
    for (int number = 0; number < 8; ++number) {
        if (!share.Has(number)) continue;
        SCOPED_TRACE(number);
        const auto which = static_cast<kiv::PageId>(number);
        const Holdings gain = Gain(
            20,
            [&] {
                Open(which, {set.object.Get(), show.object.Get()});
                for (HWND child = GetWindow(PageWindow(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
                    SendMessageW(child, WM_SETFOCUS, 0, 0);
                    SendMessageW(child, WM_CHAR, L'1', 0);
                    SendMessageW(child, BM_CLICK, 0, 0);
                    SendMessageW(child, WM_KILLFOCUS, 0, 0);
                }
                page->Apply();
                Close();
            },
            10);
        EXPECT_LE(gain.heapBlocks, 2);
        EXPECT_LE(gain.gdiObjects, 0);
    }
}

TEST_F(RandomPageInput, LeavesEachPageOnItsFeet) {
    Choices choices(Seed());
    RandomUser user(choices);
    const ModalEnder boxes;
    user.filter = [this](MSG& message) {
        const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        return isKey && page && page->TranslateAccelerator(&message) == S_OK;
    };
    const long lives = kiv::Effort(8);
    long textBoxes = 0;
    const Holdings gain = GainOfLives(lives, user, [&] {
        const auto which = static_cast<kiv::PageId>(choices.Below(8));
        Open(which, {set.object.Get(), show.object.Get()});
        textBoxes += TextBoxes();
        for (int done = 0; done < EventsOfALife; done += EventsOfABatch) {
            for (int i = 0; i < EventsOfABatch; ++i) user.Act(frame.Get(), PageWindow());
            user.Pump();
            if (choices.OneIn(3)) page->Apply();
            if (choices.OneIn(3)) page->Show(choices.OneIn(2) ? SW_HIDE : SW_SHOW);
            ASSERT_TRUE(PageWindow());
            EXPECT_EQ(nullptr, GetWindow(PageWindow(), GW_HWNDNEXT));
        }
        SetKeyboardState(std::array<BYTE, 256>{}.data());
        ReleaseCapture();
        Close();
        user.Pump();
        EXPECT_EQ(nullptr, PageWindow());
        for (const DesignedControl* const control : {&set, &show}) {
            control->Put(L"Caption", u"alive");
            EXPECT_EQ(L"alive", control->Text(L"Caption"));
        }
    });
    EXPECT_LT(gain.heapBlocks, textBoxes / 2 + lives / 4 + Noise);
    EXPECT_LT(gain.gdiObjects, lives / 4 + Noise);
    std::printf("%ld events on property pages, seed %u: %+ld heap blocks, %+ld drawing objects in the second half\n",
                lives * EventsOfALife, Seed(), gain.heapBlocks, gain.gdiObjects);
}

}  // namespace
}  // namespace component
