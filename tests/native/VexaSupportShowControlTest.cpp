// KivShowDateTime towards the framework, where it differs from KivSetDateTime.
#include "ShowControlFixture.h"

namespace kiv {
namespace {

class VexaSupportShowControlTest : public ShowControlTest {
protected:
    std::vector<std::int32_t> WhatsThisIDs() {
        return {CaptionLabel().Help().whatsThisID, ValueLabel().Help().whatsThisID};
    }
    using IDs = std::vector<std::int32_t>;
};

TEST_F(VexaSupportShowControlTest, ItsSevenElementsAreHandedOutInRunModeOnly) {
    LoadInDesigner(BoundBag());
    EXPECT_EQ(control->VexaSubElements(), nullptr);
    EXPECT_EQ(control->VexaHelpObject(), nullptr);
    world.container.userMode = true;
    control->OnUserModeChanged();
    const auto elements = std::dynamic_pointer_cast<headless::HeadlessCollection>(control->VexaSubElements());
    ASSERT_NE(elements, nullptr);
    EXPECT_EQ(elements->items.size(), 7U);
    ASSERT_NE(control->VexaHelpObject(), nullptr);
    control->Terminate();
    EXPECT_EQ(elements->walks, 1);
    EXPECT_EQ(control->VexaSubElements(), nullptr);
    EXPECT_EQ(control->VexaHelpObject(), nullptr);

    control->ReadProperties(With(BoundBag(), u"DataVarName2", u""));
    const auto others = std::dynamic_pointer_cast<headless::HeadlessCollection>(control->VexaSubElements());
    ASSERT_NE(others, nullptr);
    EXPECT_EQ(others->items.size(), 6U);
}

TEST_F(VexaSupportShowControlTest, HelpTopicsGoToTheContainersWrapperAndTheLabels) {
    Load();
    const FrameworkObjectPtr help = control->VexaHelpObject();
    headless::FireHelpContextID(help, 12);
    EXPECT_EQ(world.container.extender, (std::map<std::u16string, std::int32_t>{{u"HelpContextID", 12}}));
    EXPECT_EQ(ValueLabel().Help().contextID, 0);
    headless::FireWhatsThisID(help, 13);
    EXPECT_EQ(WhatsThisIDs(), (IDs{13, 13}));
    EXPECT_EQ(world.container.extender.at(u"WhatsThisHelpID"), 13);
    headless::FireWhatsThisIDs(help, std::vector<HelpIDText>(6, u"14"));
    EXPECT_EQ(WhatsThisIDs(), (IDs{13, 13}));
    headless::FireHelpFile(help, u"show.chm");
    EXPECT_EQ(world.help.helpFile, u"show.chm");
}

TEST_F(VexaSupportShowControlTest, AContainerWithoutSuchAWrapperAndALabelThatRefusesCostTheirOwnStepOnly) {
    Load();
    const FrameworkObjectPtr help = control->VexaHelpObject();
    world.container.onExtender = [] { throw HostError(438); };
    headless::FireHelpContextID(help, 5);
    headless::FireWhatsThisID(help, 5);
    EXPECT_EQ(WhatsThisIDs(), (IDs{5, 5}));
    world.container.onExtender = nullptr;
    int label = 0;
    world.area.onSetHelp = [&] {
        if (label++ == 0) throw HostError(5);
    };
    headless::FireWhatsThisID(help, 6);
    EXPECT_EQ(WhatsThisIDs(), (IDs{5, 6}));
    EXPECT_EQ(world.container.extender.at(u"WhatsThisHelpID"), 6);
}

}  // namespace
}  // namespace kiv
