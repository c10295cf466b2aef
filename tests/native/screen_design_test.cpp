// Laying a screen out: selection, dragging, keys, and the history of a document.
#include <gtest/gtest.h>

#include "screenhost/DesignModel.h"
#include "screenhost/DocumentHistory.h"
#include "screenhost/ScreenFile.h"

namespace screenhost {

void PrintTo(const Box& box, std::ostream* out) {
    *out << box.left << "," << box.top << " " << box.width << "x" << box.height;
}
void PrintTo(const DesignItem& item, std::ostream* out) {
    *out << item.name << " ";
    PrintTo(item.box, out);
}

namespace {

constexpr int HandleSide = 100;
constexpr int Slack = 45;

using Names = std::vector<std::string>;
using Items = std::vector<DesignItem>;

/// A and B side by side, the right half of B over C.
DesignModel ThreeControls() {
    DesignModel model(HandleSide, Slack);
    model.SetItems({{"A", {240, 240, 1200, 600}}, {"B", {2400, 240, 1200, 600}}, {"C", {3000, 240, 1200, 600}}});
    return model;
}

void Drag(DesignModel& model, Spot from, Spot to, bool extend = false) {
    model.Press(from, extend);
    for (const DesignItem& item : model.DragTo(to)) model.SetBox(item.name, item.box);
    model.Release();
}

void Click(DesignModel& model, Spot spot, bool extend = false) {
    Drag(model, spot, spot, extend);
}

TEST(DesignModel, AClickChoosesTheTopmostControlAndExtendingAddsOrTakesAway) {
    DesignModel model = ThreeControls();
    Click(model, {3100, 300});
    EXPECT_EQ(model.Selected(), Names{"B"});
    Click(model, {300, 300}, true);
    EXPECT_EQ(model.Selected(), (Names{"B", "A"}));
    EXPECT_EQ(model.Leading()->name, "A") << "the last one leads";
    Click(model, {3100, 300}, true);
    EXPECT_EQ(model.Selected(), Names{"A"});
    Click(model, {4000, 300}, true);
    Click(model, {300, 300});
    EXPECT_EQ(model.Selected(), Names{"A"}) << "a click on one of several leaves it alone";
    Click(model, {9000, 9000});
    EXPECT_TRUE(model.Selected().empty());
}

TEST(DesignModel, ABandTakesEveryControlThatItTouches) {
    DesignModel model = ThreeControls();
    Drag(model, {2300, 900}, {1400, 500});
    EXPECT_EQ(model.Selected(), Names{"A"});
    Drag(model, {4300, 1000}, {2300, 800}, true);
    EXPECT_EQ(model.Selected(), (Names{"A", "B", "C"}));
    Drag(model, {4300, 1000}, {4250, 900});
    EXPECT_TRUE(model.Selected().empty());
}

TEST(DesignModel, SeveralMoveTogetherTheLeadingOneOnTheGrid) {
    DesignModel model = ThreeControls();
    model.SetBox("A", {250, 260, 1200, 600});
    model.Select({"A", "B"});
    Drag(model, {2500, 300}, {2610, 300 - 130});
    EXPECT_EQ(model.Find("B")->box, (Box{2520, 120, 1200, 600}));
    EXPECT_EQ(model.Find("A")->box, (Box{370, 140, 1200, 600})) << "keeps its distance, off the grid";
    EXPECT_EQ(model.Selected(), (Names{"A", "B"}));
    Drag(model, {2700, 300}, {-9000, -9000});
    EXPECT_EQ(model.Find("A")->box.left, 0) << "nothing leaves the screen";
    EXPECT_EQ(model.Find("B")->box, (Box{2150, 0, 1200, 600}));
}

TEST(DesignModel, AHandleMovesItsOwnSidesOnlyAndNeverTurnsABoxOver) {
    const struct {
        Spot from;
        Spot by;
        Box expected;
    } cases[] = {
        {{1440, 840}, {110, 250}, {240, 240, 1320, 840}},
        {{239, 239}, {-110, 130}, {120, 360, 1320, 480}},
        {{840, 239}, {500, -120}, {240, 120, 1200, 720}},
        {{239, 540}, {120, 999}, {360, 240, 1080, 600}},
        {{1440, 540}, {-9000, 0}, {240, 240, DesignModel::Smallest, 600}},
        {{840, 239}, {0, 9000}, {240, 840 - DesignModel::Smallest, 1200, DesignModel::Smallest}},
    };
    for (const auto& [from, by, expected] : cases) {
        DesignModel model = ThreeControls();
        model.Select({"A"});
        ASSERT_TRUE(model.GripAt(from));
        Drag(model, from, {from.x + by.x, from.y + by.y});
        EXPECT_EQ(model.Find("A")->box, expected);
    }
}

TEST(DesignModel, WithoutTheGridEveryTwipCounts) {
    DesignModel model = ThreeControls();
    model.SnapToGrid(false);
    Drag(model, {300, 300}, {357, 299});
    EXPECT_EQ(model.Find("A")->box, (Box{297, 239, 1200, 600}));
    model.SnapToGrid(true);
    EXPECT_EQ(model.Snapped(-61), -120);
    EXPECT_EQ(model.Snapped(-59), 0);
    EXPECT_EQ(model.Snapped(60), 120);
}

TEST(DesignModel, ATremblingHandMovesNothingAndGivingUpPutsEverythingBack) {
    DesignModel model = ThreeControls();
    model.Press({300, 300}, false);
    EXPECT_TRUE(model.DragTo({300 + Slack - 1, 300}).empty());
    EXPECT_EQ(model.Release().drag, DesignModel::Drag::None);

    model.Select({"A", "C"});
    const Items before = model.Items();
    model.Press({300, 300}, false);
    for (const DesignItem& item : model.DragTo({3000, 3000})) model.SetBox(item.name, item.box);
    EXPECT_NE(model.Items(), before);
    for (const DesignItem& item : model.CancelDrag()) model.SetBox(item.name, item.box);
    EXPECT_EQ(model.Items(), before);
    EXPECT_TRUE(model.DragTo({5000, 5000}).empty()) << "the drag is over";
}

TEST(DesignModel, APlacementIsDrawnOnTheGridOrIsAClick) {
    DesignModel model = ThreeControls();
    model.PressToPlace({1000, 1000});
    model.DragTo({130, 2030});
    const auto drawn = model.Release();
    EXPECT_EQ(drawn.drag, DesignModel::Drag::Placement);
    EXPECT_EQ(drawn.placed, (Box{120, 960, 840, 1080}));
    model.PressToPlace({310, 290});
    EXPECT_EQ(model.Release().placed, (Box{360, 240, 0, 0}));
    EXPECT_EQ(model.Items().size(), 3u);
}

TEST(DesignModel, KeysMoveOntoTheGridAndStretch) {
    DesignModel model = ThreeControls();
    model.SetBox("A", {250, 250, 1210, 600});
    model.Select({"A"});
    EXPECT_EQ(model.Nudged(1, 0), (Items{{"A", {360, 250, 1210, 600}}}));
    EXPECT_EQ(model.Nudged(-9, 0).front().box.left, 0);
    EXPECT_EQ(model.Stretched(0, -1), (Items{{"A", {250, 250, 1210, 470}}}));
    EXPECT_EQ(model.Stretched(-99, 0).front().box.width, DesignModel::Smallest);
    model.Select({});
    EXPECT_TRUE(model.Nudged(1, 1).empty());
    EXPECT_TRUE(model.Stretched(1, 1).empty());
}

TEST(DesignModel, OthersAreAlignedWithTheLeadingOne) {
    DesignModel model = ThreeControls();
    model.SetBox("A", {100, 900, 500, 300});
    model.Select({"A", "B"});
    const struct {
        Alignment alignment;
        Box expected;
    } cases[] = {
        {Alignment::Left, {2400, 900, 500, 300}},      {Alignment::Right, {3100, 900, 500, 300}},
        {Alignment::Top, {100, 240, 500, 300}},        {Alignment::Bottom, {100, 540, 500, 300}},
        {Alignment::SameWidth, {100, 900, 1200, 300}}, {Alignment::SameHeight, {100, 900, 500, 600}},
    };
    for (const auto& [alignment, expected] : cases) {
        const Items aligned = model.Aligned(alignment);
        EXPECT_EQ(aligned, (Items{{"A", expected}, {"B", {2400, 240, 1200, 600}}}));
    }
}

TEST(DesignModel, TheTabKeyGoesRoundAndWhatIsGoneIsNotSelected) {
    DesignModel model = ThreeControls();
    model.SelectNext(false);
    EXPECT_EQ(model.Selected(), Names{"A"});
    model.SelectNext(true);
    EXPECT_EQ(model.Selected(), Names{"C"});
    model.SelectNext(false);
    EXPECT_EQ(model.Selected(), Names{"A"});
    model.Select({"b", "Nobody", "B", "C"});
    EXPECT_EQ(model.Selected(), (Names{"B", "C"}));
    model.SetItems({{"B", {}}});
    EXPECT_EQ(model.Selected(), Names{"B"});
    model.SetItems({});
    model.SelectNext(false);
    EXPECT_TRUE(model.Selected().empty());
    EXPECT_EQ(model.Leading(), nullptr);
}

TEST(DocumentHistory, GoesBackAndForthUntilSomethingElseIsDone) {
    DocumentHistory history;
    history.Reset("0");
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.Commit("0", "nothing"));
    EXPECT_TRUE(history.Commit("1", "one"));
    history.Commit("2", "two");
    EXPECT_EQ(history.UndoLabel(), "two");
    EXPECT_EQ(history.Undo(), "1");
    EXPECT_EQ(history.RedoLabel(), "two");
    EXPECT_EQ(history.Undo(), "0");
    EXPECT_FALSE(history.CanUndo());
    EXPECT_EQ(history.Redo(), "1");
    EXPECT_EQ(history.UndoLabel(), "one");
    history.Commit("3", "three");
    EXPECT_FALSE(history.CanRedo());
    EXPECT_EQ(history.Undo(), "1");
}

TEST(DocumentHistory, KnowsWhatWasSavedWhicheverWayItIsReached) {
    DocumentHistory history;
    history.Reset("0");
    history.Commit("1", "one");
    EXPECT_TRUE(history.IsChanged());
    history.MarkSaved();
    EXPECT_FALSE(history.IsChanged());
    history.Undo();
    EXPECT_TRUE(history.IsChanged());
    history.Redo();
    EXPECT_FALSE(history.IsChanged());
}

TEST(DocumentHistory, AnotherSpellingIsNoChange) {
    DocumentHistory history;
    history.Reset("x=1");
    history.Settle("x = 1");
    EXPECT_FALSE(history.IsChanged());
    EXPECT_FALSE(history.CanUndo());
    history.Commit("x = 2", "two");
    history.Settle("x  =  2");
    EXPECT_TRUE(history.IsChanged());
    EXPECT_EQ(history.Undo(), "x = 1");
    EXPECT_FALSE(history.IsChanged());
}

TEST(DocumentHistory, ARowOfStepsWithOneTagIsUndoneAtOnce) {
    DocumentHistory history;
    history.Reset("0");
    history.Commit("1", "move", "keys A");
    history.Commit("2", "move", "keys A");
    history.Commit("3", "move", "keys B");
    EXPECT_EQ(history.Undo(), "2");
    EXPECT_EQ(history.Undo(), "0");
    EXPECT_EQ(history.Redo(), "2");
    history.Commit("4", "move", "keys A");
    EXPECT_EQ(history.Undo(), "2") << "the row ended when it was undone";
}

TEST(DocumentHistory, ForgetsTheOldestStepsOnly) {
    DocumentHistory history;
    history.Reset("start");
    for (std::size_t i = 0; i < DocumentHistory::MostSteps + 5; ++i) history.Commit(std::to_string(i), "step");
    std::size_t steps = 0;
    for (; history.CanUndo(); ++steps) history.Undo();
    EXPECT_EQ(steps, DocumentHistory::MostSteps);
    EXPECT_EQ(history.Current(), "4");

    history.Reset("");
    const std::size_t half = DocumentHistory::MostBytes / 2 + 1;
    for (const char c : {'a', 'b', 'c'}) history.Commit(std::string(half, c), "large");
    for (steps = 0; history.CanUndo(); ++steps) history.Undo();
    EXPECT_EQ(steps, 1u) << "two texts of that size are too much";
}

TEST(ScreenFile, ControlsAreCopiedAndRemovedWithTheirLines) {
    ScreenFile file = ScreenFile::Parse("; top\r\n[A]\r\n; note\r\nx = 0x10\r\nodd\r\n\r\n[B]\r\ny = 2");
    const ScreenSection* const b = file.FindControl("B");
    EXPECT_EQ(file.FreeName("A"), "A1");
    file.AddCopy(*file.FindControl("A"), "A1");
    EXPECT_EQ(file.FreeName("a"), "a2");
    EXPECT_EQ(file.FindControl("B"), b) << "a section stays where it is";
    EXPECT_EQ(
        file.Text(),
        "; top\r\n[A]\r\n; note\r\nx = 0x10\r\nodd\r\n\r\n[B]\r\ny = 2\r\n\r\n[A1]\r\n; note\r\nx = 0x10\r\nodd\r\n");
    file.RemoveControl("a");
    file.RemoveControl("nobody");
    EXPECT_EQ(file.Text(), "; top\r\n[B]\r\ny = 2\r\n\r\n[A1]\r\n; note\r\nx = 0x10\r\nodd\r\n");
    ScreenFile other = ScreenFile::Parse("");
    EXPECT_EQ(other.AddCopy(*b, "C").Text(), "[C]\ny = 2\n");
    EXPECT_THROW(file.AddCopy(*b, "b"), TextError);
}

}  // namespace
}  // namespace screenhost
