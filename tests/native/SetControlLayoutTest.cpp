#include "setcontrol/SetControlLayout.h"

#include "SetControlFixture.h"

namespace kiv {
namespace {

class SetControlLayoutTest : public SetControlTest {
protected:
    /// From the control's top left corner.
    static Rect Within(const Rect& child, const Rect& parent) {
        return {child.left + parent.left, child.top + parent.top, child.width, child.height};
    }
    static void ExpectInside(const Rect& inner, const Rect& outer, const char* what) {
        EXPECT_GE(inner.left, outer.left) << what;
        EXPECT_GE(inner.top, outer.top) << what;
        EXPECT_LE(inner.left + inner.width, outer.left + outer.width) << what;
        EXPECT_LE(inner.top + inner.height, outer.top + outer.height) << what;
    }
    void ExpectNothingClipped() {
        const Rect outer = Outer().Bounds();
        const Rect inner = Within(Inner().Bounds(), outer);
        ExpectInside(outer, {0, 0, world.surface.Bounds().width, world.surface.Bounds().height}, "fraOuter");
        ExpectInside(inner, outer, "fraInner");
        ExpectInside(Within(UseSystem().Bounds(), outer), outer, "chkUseSystem");
        if (Dst().IsVisible()) ExpectInside(Within(Dst().Bounds(), inner), inner, "chkUseDaylightSavings");
        if (Calendar().IsVisible()) ExpectInside(Within(Calendar().Bounds(), inner), inner, "mvDate");
        if (Time().IsVisible()) ExpectInside(Within(Time().Bounds(), inner), inner, "dtpTimeSP");
    }
};

TEST_F(SetControlLayoutTest, NothingIsClippedInAnyModeFontOrFormat) {
    for (const std::int32_t mode : {sdtSetDateTime, sdtSetDateOnly, sdtSetTimeOnly}) {
        for (const bool seconds : {false, true}) {
            for (const std::int64_t fontSize : {60000, 82500, 120000, 360000}) {
                MemoryBag bag;
                bag.Put(u"Mode", mode);
                bag.Put(u"ShowSeconds", seconds);
                bag.Put(u"Font", headless::MakeFont(u"Tahoma", fontSize));
                world.surface.SetSize({});
                LoadInDesigner(bag);
                SCOPED_TRACE(testing::Message() << mode << seconds << fontSize);
                ExpectNothingClipped();
                control.reset();
            }
        }
    }
}

TEST_F(SetControlLayoutTest, HasTheRequiredSizeAndPlacesOfEachMode) {
    // A line of text is 195 high, the calendar 2700 by 2370, the time field 1095 by 495.
    const struct {
        std::int32_t mode;
        bool dst;
        Size control;
        Point calendar;
        Point time;
    } cases[] = {
        {sdtSetDateTime, true, {4395, 3 * 195 + 600 + 2370 + 315}, {120, 630}, {2940, 630}},
        {sdtSetDateTime, false, {4395, 3 * 195 + 600 + 2370}, {120, 315}, {2940, 315}},
        {sdtSetDateOnly, false, {3180, 3 * 195 + 600 + 2370}, {120, 315}, {2940, 315}},
        {sdtSetTimeOnly, true, {1575, 3 * 195 + 600 + 495 + 315}, {120, 630}, {120, 630}},
        {sdtSetTimeOnly, false, {1575, 3 * 195 + 600 + 495}, {120, 315}, {120, 315}},
    };
    for (const auto& c : cases) {
        MemoryBag bag;
        bag.Put(u"Mode", c.mode);
        bag.Put(u"ShowDST", c.dst);
        world.surface.SetSize({});
        LoadInDesigner(bag);
        SCOPED_TRACE(testing::Message() << "mode " << c.mode << " dst " << c.dst);
        const Rect size = world.surface.Bounds();
        EXPECT_EQ((Size{size.width, size.height}), c.control);
        EXPECT_EQ((Point{Calendar().Bounds().left, Calendar().Bounds().top}), c.calendar);
        EXPECT_EQ((Point{Time().Bounds().left, Time().Bounds().top}), c.time);
        EXPECT_EQ(Inner().Bounds().height, size.height - Inner().Bounds().top - 120);
        EXPECT_EQ(Dst().Bounds().width, size.width - 480);
        control.reset();
    }
}

TEST_F(SetControlLayoutTest, ItGrowsNeverShrinksItselfAndSnapsBackWhenMadeTooSmall) {
    LoadInDesigner();
    const Rect required = world.surface.Bounds();
    world.surface.Resize({required.width + 500, required.height + 700});
    EXPECT_EQ(world.surface.Bounds().height, required.height + 700);
    EXPECT_EQ(Outer().Bounds().width, required.width + 500);
    EXPECT_EQ(Inner().Bounds().height, required.height + 700 - Inner().Bounds().top - 120);
    control->SetMode(sdtSetTimeOnly);
    EXPECT_EQ(world.surface.Bounds().height, required.height + 700);
    control->SetMode(sdtSetDateTime);
    world.surface.Resize({10, 10});
    EXPECT_EQ(world.surface.Bounds().width, required.width);
    EXPECT_EQ(world.surface.Bounds().height, required.height);
}

TEST_F(SetControlLayoutTest, TheTimeFieldIsWidenedForItsTextAndNeverNarrowed) {
    LoadInDesigner();
    EXPECT_EQ(control->TimeWidth(), 1095);
    control->SetShowSeconds(true);
    EXPECT_EQ(control->TimeWidth(), 13 * 75 + 255 + 30);
    control->SetShowSeconds(false);
    control->SetTimeFormat(1);
    EXPECT_EQ(control->TimeWidth(), 13 * 75 + 255 + 30);
    control->SetFont(headless::MakeFont(u"Tahoma", 165000));
    EXPECT_EQ(control->TimeWidth(), 7 * 150 + 255 + 30);
}

TEST_F(SetControlLayoutTest, TheSpinButtonsHaveTheirRoomAtTheResolutionOfTheWindowNotOfTheFirstScreen) {
    LoadInDesigner();
    world.surface.twipsPerPixel = 5;
    world.surface.scrollBarWidth = 60;
    control->SetShowSeconds(true);
    EXPECT_EQ(control->TimeWidth(), 13 * 75 + 5 * 60 + 30);
}

TEST_F(SetControlLayoutTest, AContainerThatAnswersEachResizeWithAnotherDoesNotLoop) {
    LoadInDesigner();
    int answers = 0;
    world.surface.onSetSize = [&] {
        ++answers;
        world.surface.Resize({50, 50});
    };
    control->SetTimeWidth(4000);
    EXPECT_EQ(answers, 1);
}

TEST_F(SetControlLayoutTest, CaptionsFollowTheMode) {
    LoadInDesigner();
    const struct {
        std::int32_t mode;
        const char16_t* useSystem;
        const char16_t* inner;
    } cases[] = {{sdtSetDateTime, u"&Use PC System Date/Time?", u"Custom Date/Time"},
                 {sdtSetDateOnly, u"&Use PC System Date ?", u"Custom Date"},
                 {sdtSetTimeOnly, u"&Use PC System Time ?", u"Custom Time"}};
    for (const auto& c : cases) {
        control->SetMode(c.mode);
        EXPECT_EQ(UseSystem().Caption(), c.useSystem);
        EXPECT_EQ(Inner().Caption(), c.inner);
        EXPECT_EQ(Dst().Caption(), u"&Automatically Adjust for Daylight Savings Time?");
        EXPECT_EQ(Calendar().IsVisible(), c.mode != sdtSetTimeOnly);
        EXPECT_EQ(Time().IsVisible(), c.mode != sdtSetDateOnly);
        EXPECT_EQ(Dst().IsVisible(), c.mode != sdtSetDateOnly);
    }
}

}  // namespace
}  // namespace kiv
