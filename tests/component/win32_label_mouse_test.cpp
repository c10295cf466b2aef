// The mouse on a label surface, with a window and without one; the end of everything inside any call out.
#include "win32_LabelFixture.h"

namespace kiv::win32::test {

namespace {

class LabelMouseTest : public LabelTest, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        LabelTest::SetUp();
        if (GetParam()) {
            surface->ActivateWindowless(host, Place);
        } else {
            surface->Activate(host, Place);
        }
        log.Take();
    }
    /// The capture is asked of the container only where there is no window.
    Lines Expect(Lines lines) const {
        if (!GetParam()) std::erase_if(lines, [](const std::string& l) { return l.starts_with("capture"); });
        return lines;
    }
};

TEST_P(LabelMouseTest, SourcesAndPositionsAreThoseOfTheLabelUnderTheMouse) {
    struct Case {
        int x, y;
        const char* source;
        Point position;
    };
    for (const Case& c : {Case{15, 10, "caption", {75, 75}}, Case{100, 10, "value", {150, 75}},
                          Case{3, 2, "surface", {45, 30}}, Case{190, 35, "surface", {2850, 525}}}) {
        Mouse(WM_MOUSEMOVE, c.x, c.y, 0);
        EXPECT_EQ(log.Take(), (Lines{std::string("move ") + c.source}));
        EXPECT_EQ(log.lastPosition, c.position);
    }
    // A label that is disabled or hidden lets the mouse through.
    caption->SetEnabled(false);
    value->SetVisible(false);
    for (const int x : {15, 100}) {
        Mouse(WM_MOUSEMOVE, x, 10, 0);
        EXPECT_EQ(log.Take(), (Lines{"move surface"}));
        EXPECT_EQ(log.lastPosition, (Point{x * 15.0, 150}));
    }
}

TEST_P(LabelMouseTest, AClickIsAPressAndAReleaseOverTheSameLabel) {
    Mouse(WM_LBUTTONDOWN, 15, 10);
    Mouse(WM_LBUTTONUP, 20, 12, 0);
    EXPECT_EQ(log.Take(),
              Expect({"activate", "capture 1", "down caption", "capture 0", "up caption", "click caption"}));

    Mouse(WM_LBUTTONDOWN, 15, 10);
    Mouse(WM_MOUSEMOVE, 100, 10);
    EXPECT_EQ(log.lastPosition, (Point{1350, 75})) << "counted from the label that has the mouse";
    Mouse(WM_LBUTTONUP, 100, 10, 0);
    EXPECT_EQ(log.Take(), Expect({"activate", "capture 1", "down caption", "move caption", "capture 0", "up caption"}));

    Mouse(WM_RBUTTONDOWN, 15, 10, MK_RBUTTON);
    Mouse(WM_RBUTTONUP, 15, 10, 0);
    EXPECT_EQ(log.Take(), (Lines{"activate", "down caption", "up caption"}));
}

TEST_P(LabelMouseTest, ADoubleClickIsOneClickAndOneDoubleClick) {
    Mouse(WM_LBUTTONDOWN, 15, 10);
    Mouse(WM_LBUTTONUP, 15, 10, 0);
    log.Take();
    Mouse(WM_LBUTTONDBLCLK, 15, 10);
    Mouse(WM_LBUTTONUP, 15, 10, 0);
    EXPECT_EQ(log.Take(),
              Expect({"activate", "capture 1", "down caption", "dblclick caption", "capture 0", "up caption"}));
}

TEST_P(LabelMouseTest, AMouseThatIsTakenAwayIsNoClick) {
    Mouse(WM_LBUTTONDOWN, 15, 10);
    if (GetParam()) {
        surface->OnWindowMessage(WM_CAPTURECHANGED, 0, 0);
    } else {
        EXPECT_EQ(GetCapture(), surface->Window());
        SetCapture(host);
        ReleaseCapture();
    }
    log.Take();
    Mouse(WM_LBUTTONUP, 15, 10, 0);
    const Lines lines = log.Take();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "click caption"), 0);

    // Whoever ends while it has the mouse gives it back.
    Mouse(WM_LBUTTONDOWN, 15, 10);
    log.Take();
    surface->Deactivate();
    EXPECT_EQ(log.Take(), Expect({"capture 0"}));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_P(LabelMouseTest, TheSurfaceOrALabelMayEndInsideAnyCall) {
    const std::vector<std::string> lines = Expect({"activate", "capture 1", "down caption", "dblclick caption",
                                                   "move caption", "capture 0", "up caption", "click caption"});
    for (const std::string& fatal : lines) {
        for (const bool onlyTheLabel : {false, true}) {
            TearDown();
            SetUp();
            bool ended = false;
            log.then = [&](const std::string& line) {
                if (line != fatal || ended) return;
                ended = true;
                if (onlyTheLabel) {
                    caption.reset();
                } else {
                    Destroy();
                }
            };
            for (const UINT first : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONDBLCLK}})
                for (const UINT message : {first, UINT{WM_MOUSEMOVE}, UINT{WM_LBUTTONUP}})
                    if (surface) Mouse(message, 15, 10, message == WM_LBUTTONUP ? 0 : MK_LBUTTON);
            EXPECT_TRUE(ended) << fatal;
            if (surface) {
                Mouse(WM_LBUTTONUP, 15, 10, 0);
                Mouse(WM_MOUSEMOVE, 15, 10, 0);
                EXPECT_EQ(log.Take().back(), "move surface") << "the label's place is the surface's now";
            }
        }
    }
}

TEST_P(LabelMouseTest, ADisabledSurfaceTakesNoMouseWithoutAWindow) {
    surface->SetEnabled(false);
    if (GetParam()) {
        EXPECT_FALSE(surface->OnWindowMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(40, 45)).has_value());
        EXPECT_TRUE(log.Take().empty());
    } else {
        EXPECT_FALSE(IsWindowEnabled(surface->Window()));
    }
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutAWindow, LabelMouseTest, testing::Bool());

}  // namespace

}  // namespace kiv::win32::test
