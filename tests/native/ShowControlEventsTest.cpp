// What users do to the labels and the control, as the container hears of it.
#include "ShowControlFixture.h"

namespace kiv {
namespace {

class ShowControlEventsTest : public ShowControlTest {};

TEST_F(ShowControlEventsTest, ClicksAreRaisedOnceWhereverTheyHit) {
    Load(BoundBag());
    CaptionLabel().UserClicks();
    ValueLabel().UserClicks();
    world.area.UserClicks();
    EXPECT_EQ(host.Take(), (Events{"Click", "Click", "Click"}));
    CaptionLabel().UserDblClicks();
    ValueLabel().UserDblClicks();
    world.area.UserDblClicks();
    EXPECT_EQ(host.Take(), (Events{"DblClick", "DblClick", "DblClick"}));
}

TEST_F(ShowControlEventsTest, MousePositionsAreTheControlsOwnInTheContainersUnits) {
    Load(BoundBag());
    world.area.Resize({4890, 400});
    const MouseArgs args{2, 5, {10, 5}};
    ValueLabel().UserMoves(MouseAction::Down, args);
    EXPECT_EQ(host.Take(), Events{"MouseDown 2 5"});
    EXPECT_EQ(std::pair(host.mouseX, host.mouseY), std::pair(24550.0F, 50.0F));  // tenths of twips
    CaptionLabel().UserMoves(MouseAction::Move, args);
    EXPECT_EQ(host.Take(), Events{"MouseMove 2 5"});
    EXPECT_EQ(std::pair(host.mouseX, host.mouseY), std::pair(100.0F, 50.0F));
    world.area.UserMoves(MouseAction::Up, {2, 5, {-3, 4000}});
    EXPECT_EQ(host.Take(), Events{"MouseUp 2 5"});
    EXPECT_EQ(std::pair(host.mouseX, host.mouseY), std::pair(-30.0F, 40000.0F));
}

TEST_F(ShowControlEventsTest, KeysPassThroughTheHandlersWhoMayChangeThem) {
    Load(BoundBag());
    host.keyAnswer = 66;
    EXPECT_EQ(world.area.UserPressesKey(65, 1), 66);
    EXPECT_EQ(world.area.UserTypes(97), 66);
    EXPECT_EQ(world.area.UserReleasesKey(65, 1), 66);
    EXPECT_EQ(host.Take(), (Events{"KeyDown 65", "KeyPress 97", "KeyUp 65"}));
}

TEST_F(ShowControlEventsTest, ADisabledControlHearsNothing) {
    Load(BoundBag());
    control->SetEnabled(false);
    ValueLabel().UserClicks();
    world.area.UserClicks();
    world.area.UserPressesKey(65);
    EXPECT_EQ(host.Take(), Events{});
    world.framework.Deliver(5, u"2");  // the device still shows
    EXPECT_EQ(host.Take(), Events{"ValueChange"});
}

}  // namespace
}  // namespace kiv
