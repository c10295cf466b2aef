#include "SetControlFixture.h"

namespace kiv {
namespace {

class EventForwardingTest : public SetControlTest {
protected:
    void SetUp() override { Load(BoundBag()); }
    /// What the host hears of every kind of action on a child, in one line.
    template <typename Child>
    std::string HeardOf(Child& child) {
        host.Take();
        child.UserClicks();
        child.UserDblClicks();
        child.UserPressesKey(65, 1);
        child.UserTypes(97);
        child.UserReleasesKey(65);
        for (const MouseAction action : {MouseAction::Down, MouseAction::Move, MouseAction::Up}) {
            child.UserMoves(action, {1, 2, {}});
        }
        std::string all;
        for (const std::string& event : host.Take()) all += event + ";";
        return all;
    }
};

TEST_F(EventForwardingTest, EachChildForwardsItsOwnSelection) {
    const std::string keys = "KeyDown 65;KeyPress 97;KeyUp 65;";
    const std::string mouse = "MouseDown 1 2;MouseMove 1 2;MouseUp 1 2;";
    EXPECT_EQ(HeardOf(world.surface), "Click;DblClick;" + keys + mouse);
    EXPECT_EQ(HeardOf(Outer()), "Click;DblClick;" + mouse);
    EXPECT_EQ(HeardOf(Inner()), "Click;DblClick;" + mouse);
    EXPECT_EQ(HeardOf(Calendar()), "Click;DblClick;" + keys + mouse);
    EXPECT_EQ(HeardOf(Time()), "Click;DblClick;" + keys + mouse);
    EXPECT_EQ(HeardOf(UseSystem()), "GetDeviceDateTime;Click;" + keys + mouse);
    EXPECT_EQ(HeardOf(Dst()), "Click;" + keys + mouse);
}

TEST_F(EventForwardingTest, MousePositionsAreTheControlsOwnInTheContainersUnits) {
    const auto expectAt = [&](Twips x, Twips y) {
        EXPECT_FLOAT_EQ(host.mouseX, static_cast<float>(x * 10));
        EXPECT_FLOAT_EQ(host.mouseY, static_cast<float>(y * 10));
    };
    const MouseArgs args{1, 0, {10, 20}};
    const Rect inner = Inner().Bounds();
    world.surface.UserMoves(MouseAction::Move, args);
    expectAt(10, 20);
    Outer().UserMoves(MouseAction::Move, args);
    expectAt(10, 20);
    Inner().UserMoves(MouseAction::Down, args);
    expectAt(inner.left + 10, inner.top + 20);
    UseSystem().UserMoves(MouseAction::Up, args);
    expectAt(UseSystem().Bounds().left + 10, UseSystem().Bounds().top + 20);
    Dst().UserMoves(MouseAction::Move, args);
    expectAt(inner.left + Dst().Bounds().left + 10, inner.top + Dst().Bounds().top + 20);
    Calendar().UserMoves(MouseAction::Move, args);
    expectAt(inner.left + Calendar().Bounds().left + 10, inner.top + Calendar().Bounds().top + 20);
    Time().UserMoves(MouseAction::Move, args);
    expectAt(inner.left + Time().Bounds().left + 10, inner.top + Time().Bounds().top + 20);
}

TEST_F(EventForwardingTest, HandlersMayAlterAndSwallowKeys) {
    host.keyAnswer = 0;
    EXPECT_EQ(Time().UserPressesKey(65), 0);
    EXPECT_EQ(Time().UserTypes(97), 0);
    host.keyAnswer = 66;
    EXPECT_EQ(Calendar().UserReleasesKey(65), 66);
}

// A date that the user chose is not overwritten by the device's; a click elsewhere chooses none.
TEST_F(EventForwardingTest, OnlyAClickInTheCalendarCountsAsAnEditedDate) {
    const auto day = [&] { return control->GetDateTimeInfo().date.day; };
    const auto deliver = [&](const char16_t* value) { world.framework.Deliver(6, value); };
    deliver(u"11");
    ASSERT_EQ(day(), 11);
    world.surface.UserClicks();
    Inner().UserClicks();
    Dst().UserToggles();
    deliver(u"12");
    EXPECT_EQ(day(), 12);
    Calendar().UserClicks();
    deliver(u"13");
    EXPECT_EQ(day(), 12);
}

TEST_F(EventForwardingTest, AClickIsForwardedAfterTheControlsOwnHandling) {
    bool enabledWhenHeard = true;
    host.onEvent = [&](const std::string& event) {
        if (event == "Click") enabledWhenHeard = Calendar().IsEnabled();
    };
    UseSystem().UserToggles();
    EXPECT_FALSE(enabledWhenHeard);
}

}  // namespace
}  // namespace kiv
