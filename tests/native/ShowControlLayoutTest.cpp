// Where the labels stand after the container, or a program, changed a size.
#include "showcontrol/ShowControlLayout.h"

#include <limits>
#include <random>

#include "ShowControlFixture.h"

namespace kiv {
namespace {

enum Lock { LockNone = 0, LockCaption = 1, LockValue = 2, LockBoth = 3 };

ShowControlMeasures Measures(Twips control, Twips caption, Twips value, int locks = LockNone) {
    ShowControlMeasures m;
    m.control = {control, 195};
    m.caption = {caption, 195};
    m.value = {value, 195};
    m.lockCaption = (locks & LockCaption) != 0;
    m.lockValue = (locks & LockValue) != 0;
    return m;
}

TEST(ShowControlLayoutRules, TheWidthIsTakenFromAndGivenToTheLabelsByTheirLocksAndMinimums) {
    struct Case {
        const char* name;
        Twips control, caption, value;
        int locks;
        Twips newCaption, newValue, newControl;
    };
    const Case cases[] = {
        {"same size", 4890, 2445, 2445, LockNone, 2445, 2445, 4890},
        {"the value shrinks first", 4000, 2445, 2445, LockNone, 2445, 1555, 4000},
        {"then the caption", 2000, 2445, 2445, LockNone, 1250, 750, 2000},
        {"not below the minimum of the control", 100, 2445, 2445, LockNone, 495, 750, 1245},
        {"a locked value leaves it to the caption", 4000, 2445, 2445, LockValue, 1555, 2445, 4000},
        {"which has a minimum", 1300, 2445, 2445, LockValue, 435, 2445, 2880},
        {"a locked caption leaves it to the value", 4000, 2445, 2445, LockCaption, 2445, 1555, 4000},
        {"which has one too", 1300, 2445, 2445, LockCaption, 2445, 750, 3195},
        {"two locks hold", 1300, 2445, 2445, LockBoth, 2445, 2445, 4890},
        {"the value grows", 6000, 2445, 2445, LockNone, 2445, 3555, 6000},
        {"the caption grows up to its preferred width", 3000, 1500, 1000, LockNone, 2000, 1000, 3000},
        {"and the value takes the rest", 6000, 1500, 1000, LockNone, 2445, 3555, 6000},
        {"all to the caption while the value is locked", 6000, 1500, 1000, LockValue, 5000, 1000, 6000},
        {"all to the value while the caption is locked", 6000, 1500, 1000, LockCaption, 1500, 4500, 6000},
        {"two locks hold here too", 6000, 1500, 1000, LockBoth, 1500, 1000, 6000},
        {"a value below its minimum grows first", 2000, 1500, 300, LockNone, 1500, 500, 2000},
        {"then the caption after it", 3000, 1500, 300, LockNone, 2250, 750, 3000},
        {"a locked one below its minimum stays", 3000, 1500, 300, LockValue, 2700, 300, 3000},
        {"a value below its minimum never shrinks", 1800, 2000, 300, LockNone, 1500, 300, 1800},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const ShowControlPlaces places = ComputeShowControlLayout(Measures(c.control, c.caption, c.value, c.locks));
        EXPECT_EQ(places.lblCaption, (Rect{0, 0, c.newCaption, 195}));
        EXPECT_EQ(places.lblValue, (Rect{c.newCaption, 0, c.newValue, 195}));
        EXPECT_EQ(places.control, (Size{c.newControl, 195}));
    }
}

TEST(ShowControlLayoutRules, BothLabelsAreAsHighAsTheControlAndNeitherTextIsCut) {
    struct Case {
        Twips control;
        std::int16_t minCaption, minValue;
        Twips caption, value;
        bool set;
        Twips height;
    };
    const Case cases[] = {
        {300, 195, 195, 195, 195, false, 300}, {100, 195, 195, 195, 195, false, 195},
        {100, 255, 195, 195, 195, false, 255}, {100, 195, 290, 195, 195, false, 290},
        {300, 195, 195, 900, 800, false, 300}, {300, 195, 195, 900, 800, true, 900},
        {300, 195, 195, 800, 900, true, 900},  {300, 195, 195, 200, 250, true, 300},
    };
    for (const Case& c : cases) {
        ShowControlMeasures m = Measures(4890, 2445, 2445);
        m.control.height = c.control;
        m.minimum.captionHeight = c.minCaption;
        m.minimum.valueHeight = c.minValue;
        m.caption.height = c.caption;
        m.value.height = c.value;
        m.sizeSetExplicitly = c.set;
        const ShowControlPlaces places = ComputeShowControlLayout(m);
        EXPECT_EQ(places.lblCaption.height, c.height) << &c - cases;
        EXPECT_EQ(places.lblValue.height, c.height);
        EXPECT_EQ(places.control.height, c.height);
    }
}

TEST(ShowControlLayoutRules, AnySequenceOfSizesAndLocksKeepsTheRules) {
    std::mt19937 random(20260417);  // NOLINT(*-msc51-cpp, cert-msc32-c): the same sequence each time
    std::uniform_int_distribution<int> width(0, 9000);
    std::uniform_int_distribution<int> lock(0, 3);
    std::uniform_int_distribution<std::int16_t> minimum(750, 3000);
    Twips caption = 2445;
    Twips value = 2445;
    for (int i = 0; i < 20000; ++i) {
        const int locks = lock(random);
        ShowControlMeasures m = Measures(width(random) / 3.0, caption, value, locks);
        m.minimum.valueWidth = minimum(random);
        const ShowControlPlaces places = ComputeShowControlLayout(m);
        ASSERT_TRUE(!m.lockCaption || places.lblCaption.width == caption);
        ASSERT_TRUE(!m.lockValue || places.lblValue.width == value);
        ASSERT_GE(places.lblCaption.width, std::min<Twips>(caption, MinCaptionWidth));
        ASSERT_GE(places.lblValue.width, std::min<Twips>(value, m.minimum.valueWidth));
        ASSERT_EQ(places.lblValue.left, places.lblCaption.width);
        ASSERT_GE(places.control.width, m.control.width);
        ASSERT_GE(places.control.width + 1e-6, places.lblCaption.width + places.lblValue.width);
        if (locks != LockBoth) {
            ASSERT_NEAR(places.control.width, places.lblCaption.width + places.lblValue.width, 1e-6);
        }
        caption = places.lblCaption.width;
        value = places.lblValue.width;
    }
}

class ShowControlLayoutTest : public ShowControlTest {
protected:
    Size Control() const { return {world.area.Bounds().width, world.area.Bounds().height}; }
};

TEST_F(ShowControlLayoutTest, ShrinkingTooFarAndGrowingBackEndsWhereItBegan) {
    for (const auto& [key, locked] : {std::pair{u"LockValWidth", true}, {u"LockValWidth", false}}) {
        Load(With(BoundBag(), key, locked));
        const Rect caption = CaptionLabel().Bounds();
        for (const Twips width : {100, 2000, 300, 4890}) world.area.Resize({width, 195});
        EXPECT_EQ(CaptionLabel().Bounds(), caption);
        EXPECT_EQ(ValueLabel().Bounds().width, 2445);
        EXPECT_EQ(Control(), (Size{4890, 195}));
    }
}

TEST_F(ShowControlLayoutTest, AWidthSetByProgramMovesTheValueAlongAndSizesTheControl) {
    Load(BoundBag());
    control->SetCaptionWidth(1000);
    EXPECT_EQ(ValueLabel().Bounds(), (Rect{1000, 0, 2445, 195}));
    EXPECT_EQ(Control(), (Size{3445, 195}));
    control->SetValueWidth(3000);
    EXPECT_EQ(ValueLabel().Bounds(), (Rect{1000, 0, 3000, 195}));
    EXPECT_EQ(Control(), (Size{4000, 195}));
    // Locks are for the container's handles only.
    control->SetLockCaptionWidth(true);
    control->SetLockValueWidth(true);
    control->SetCaptionWidth(1200);
    control->SetValueWidth(1300);
    EXPECT_EQ(Control(), (Size{2500, 195}));
}

TEST_F(ShowControlLayoutTest, SizesSetByProgramAreRaisedToWhatTheTextNeedsAtThatMoment) {
    Load(BoundBag());
    ASSERT_EQ(Text(), "Jan-01-2000");  // 11 units of 75 twips
    control->SetCaptionWidth(0);
    control->SetValueWidth(-32768);
    EXPECT_EQ(control->CaptionWidth(), 435);
    EXPECT_EQ(control->ValueWidth(), 825);
    world.container.TakeChanges();
    control->SetValueWidth(10);
    EXPECT_EQ(world.container.TakeChanges(), Keys{});  // raised to what it is already
    control->SetBorderStyle(1);
    control->SetValueWidth(0);
    EXPECT_EQ(control->ValueWidth(), 885);
    control->SetShowLongDay(true);  // with the border's blanks now
    EXPECT_EQ(control->ValueWidth(), 885);
    control->SetValueWidth(0);
    EXPECT_EQ(control->ValueWidth(), 23 * 75 + 60);
    control->SetFont(headless::MakeFont(u"Tahoma", 165000));
    EXPECT_EQ(control->CaptionHeight(), 255);  // follows at the next resize
    control->SetCaptionHeight(0);
    EXPECT_EQ(control->CaptionHeight(), 450);
    EXPECT_EQ(control->ValueHeight(), 450);
}

TEST_F(ShowControlLayoutTest, AHeightSetByProgramGrowsBothLabelsAndTheControlButShrinksNeither) {
    Load(BoundBag());
    control->SetValueHeight(600);
    EXPECT_EQ(control->CaptionHeight(), 600);
    EXPECT_EQ(Control(), (Size{4890, 600}));
    EXPECT_EQ(world.container.TakeChanges(), Keys{u"ValueHeight"});
    control->SetCaptionHeight(300);
    EXPECT_EQ(control->CaptionHeight(), 600);
    EXPECT_EQ(world.container.TakeChanges(), Keys{});
    world.area.Resize({4890, 400});  // only the container makes it lower
    EXPECT_EQ(control->CaptionHeight(), 400);
}

TEST_F(ShowControlLayoutTest, ABorderLeavesEveryOuterSizeAlone) {
    Load(BoundBag());
    const Rect before = ValueLabel().Bounds();
    control->SetBorderStyle(1);
    EXPECT_TRUE(ValueLabel().HasSunkenBorder());
    EXPECT_EQ(ValueLabel().Bounds(), before);
    EXPECT_EQ(Control(), (Size{4890, 195}));
    world.area.Resize({4890, 195});
    EXPECT_EQ(Control(), (Size{4890, 255}));
}

TEST_F(ShowControlLayoutTest, AFontThatNeedsMoreRoomGetsItWithTheNextResize) {
    Load(BoundBag());
    control->SetFont(headless::MakeFont(u"Tahoma", 825000));
    EXPECT_EQ(Control(), (Size{4890, 195}));
    world.area.Resize({4890, 195});
    EXPECT_EQ(Control(), (Size{8250 + 435 + 60, 1950}));
    EXPECT_EQ(CaptionLabel().Bounds(), (Rect{0, 0, 2445, 1950}));
    EXPECT_EQ(ValueLabel().Bounds(), (Rect{2445, 0, 6300, 1950}));
}

TEST_F(ShowControlLayoutTest, SizesAre16BitNumbersHoweverLargeTheControlIs) {
    Load(BoundBag());
    world.area.Resize({1e6, 1e6});
    EXPECT_EQ(control->ValueWidth(), 32767);
    EXPECT_EQ(control->ValueHeight(), 32767);
    world.area.Resize({4890.5, 196.5});
    EXPECT_EQ(control->ValueWidth(), 2446);  // halves to even
    EXPECT_EQ(control->ValueHeight(), 196);
    // A text wider than any 16-bit number is cut, not refused.
    control->SetCaption(std::u16string(100000, u'x'));
    MemoryBag bag = BoundBag(2);
    bag.Put(u"AMPMFormat", std::u16string(100000, u'x') + u",y");
    bag.Put(u"ValueWidth", std::int16_t{750});
    Load(bag);
    EXPECT_EQ(control->ValueWidth(), 32767);
    control->SetValueWidth(1);
    EXPECT_EQ(control->ValueWidth(), 32767);
}

TEST_F(ShowControlLayoutTest, AResizeDuringALayoutPassIsIgnored) {
    Load(BoundBag());
    world.area.onSetSize = [&] { world.area.Resize({2000, 100}); };
    control->SetValueWidth(5000);
    EXPECT_EQ(control->ValueWidth(), 5000);
    EXPECT_EQ(Control(), (Size{2000, 100}));  // what the container insisted on
    world.area.onSetSize = nullptr;
    world.area.Resize({2000, 100});
    EXPECT_EQ(Control(), (Size{2000, 195}));
    EXPECT_EQ(control->ValueWidth(), 825);
}

TEST_F(ShowControlLayoutTest, ASizeSetDuringALayoutPassIsHonouredByTheNextOne) {
    Load(BoundBag());
    world.area.onSetSize = [&] {
        world.area.onSetSize = nullptr;
        control->SetCaptionWidth(1000);
    };
    control->SetValueWidth(3000);
    EXPECT_EQ(control->CaptionWidth(), 1000);
    world.area.Resize({5000, 195});
    EXPECT_EQ(ValueLabel().Bounds(), (Rect{1000, 0, 3000, 195}));
    EXPECT_EQ(Control(), (Size{4000, 195}));
}

}  // namespace
}  // namespace kiv
