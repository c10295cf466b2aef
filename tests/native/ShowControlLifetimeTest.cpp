// Events, notifications and calls to framework and host that come back into the control, end it, or destroy it. These
// tests say most under the address sanitizer.
#include <functional>

#include "ShowControlFixture.h"

namespace kiv {
namespace {

class ShowControlLifetimeTest : public ShowControlTest {
protected:
    using Act = std::function<void(ShowControlLifetimeTest&)>;

    /// Everything that makes the control call out, one by one.
    static std::vector<std::pair<std::string, Act>> Actions() {
        using T = ShowControlLifetimeTest;
        return {
            {"colour", [](T& t) { t.control->SetBackColor(77); }},
            {"enable", [](T& t) { t.control->SetEnabled(false); }},
            {"caption", [](T& t) { t.control->SetCaption(u"other"); }},
            {"font", [](T& t) { t.control->SetFont(headless::MakeFont(u"Tahoma", 200000)); }},
            {"border", [](T& t) { t.control->SetBorderStyle(1); }},
            {"caption width", [](T& t) { t.control->SetCaptionWidth(5000); }},
            {"value height", [](T& t) { t.control->SetValueHeight(5000); }},
            {"date format", [](T& t) { t.control->SetDateFormat(1); }},
            {"long day", [](T& t) { t.control->SetShowLongDay(true); }},
            {"mode", [](T& t) { (void)ErrorOf([&] { t.control->SetMode(2); }); }},
            {"slot", [](T& t) { t.control->SetDataElementPath(3, u"new"); }},
            {"slot read", [](T& t) { (void)t.control->DataElementPath(3); }},
            {"value", [](T& t) { (void)t.control->Value(); }},
            {"refresh", [](T& t) { t.control->RefreshDisplay(t.variable); }},
            {"save", [](T& t) { t.control->WriteProperties(t.bag); }},
            {"load", [](T& t) { t.control->ReadProperties(t.bag); }},
            {"init", [](T& t) { t.control->InitProperties(); }},
            {"resize",
             [](T& t) {
                 t.world.area.Resize({1, 1});
             }},
            {"design mode",
             [](T& t) {
                 t.world.container.userMode = false;
                 t.control->OnUserModeChanged();
             }},
            {"run mode",
             [](T& t) {
                 t.world.container.userMode = true;
                 t.control->OnUserModeChanged();
             }},
            {"terminate", [](T& t) { t.control->Terminate(); }},
            {"help file arrives", [](T& t) { headless::FireHelpFile(t.control->VexaHelpObject(), u"device.hlp"); }},
            {"help topic arrives", [](T& t) { headless::FireWhatsThisID(t.control->VexaHelpObject(), 7); }},
            {"click", [](T& t) { t.ValueLabel().UserClicks(); }},
            {"double click", [](T& t) { t.CaptionLabel().UserDblClicks(); }},
            {"key", [](T& t) { t.world.area.UserPressesKey(65); }},
            {"mouse", [](T& t) { t.ValueLabel().UserMoves(MouseAction::Down, {}); }},
            {"format arrives", [](T& t) { t.world.framework.Deliver(0, u"1"); }},
            {"month arrives", [](T& t) { t.world.framework.Deliver(4, u"5"); }},
        };
    }

    /// Lets hook run at the n-th time that the control calls out, whatever the call is; counts the calls.
    void HookCallsOut(int n, std::function<void()> hook) {
        m_calls = 0;
        m_hookAt = n;
        m_hook = std::move(hook);
        host.onEvent = [this](const std::string&) { CallOut(); };
        world.container.onPropertyChanged = [this](std::u16string_view) { CallOut(); };
        world.area.onSetSize = [this] { CallOut(); };
        world.framework.fails = [this](const std::string& call) {
            // A collection is walked also by the control's own end.
            if (call != "walk") CallOut();
            return false;
        };
        world.container.onExtender = [this] { CallOut(); };
        world.help.onSet = [this] { CallOut(); };
    }
    void CallOut() {
        if (++m_calls == m_hookAt && m_hook) m_hook();
    }

    /// A bag and a variable that call out too.
    struct CallingBag final : PropertyBag {
        explicit CallingBag(ShowControlLifetimeTest& itsTest) : test(itsTest) {}
        Value Read(std::u16string_view key, const Value& fallback) const override {
            test.CallOut();
            return values.Read(key, fallback);
        }
        void Write(std::u16string_view, const Value&, const Value*) override { test.CallOut(); }
        ShowControlLifetimeTest& test;
        MemoryBag values = BoundBag();
    };
    struct CallingVariable final : VariableObject {
        explicit CallingVariable(ShowControlLifetimeTest& itsTest) : test(itsTest) {}
        Value ElementValue(std::u16string_view) override {
            test.CallOut();
            return std::int32_t{9};
        }
        ShowControlLifetimeTest& test;
    };

    /// A run-time control, ready to be acted upon; the hooks are off.
    void Prepare() {
        HookCallsOut(0, nullptr);
        world.container.userMode = true;
        Load(BoundBag());
    }

    int m_calls = 0;
    int m_hookAt = 0;
    std::function<void()> m_hook;
    CallingBag bag{*this};
    CallingVariable variable{*this};
};

TEST_F(ShowControlLifetimeTest, TheControlMayBeDestroyedInsideAnyCallThatItMakes) {
    int destroyed = 0;
    for (const auto& [name, act] : Actions()) {
        SCOPED_TRACE(name);
        for (int n = 1;; ++n) {
            Prepare();
            HookCallsOut(n, [this] { control.reset(); });
            act(*this);
            if (control) break;  // it makes fewer calls than n
            ++destroyed;
            EXPECT_EQ(m_calls, n);  // nothing was called after the end
            EXPECT_EQ(world.area.ChildCount(), 0U);
            EXPECT_EQ(world.area.Listener(), nullptr);
            EXPECT_EQ(world.framework.living, 0);
        }
    }
    EXPECT_GT(destroyed, 250);
}

TEST_F(ShowControlLifetimeTest, EveryActionMayReenterWithEveryOtherAtEveryCall) {
    for (const auto& outer : Actions()) {
        for (const auto& inner : Actions()) {
            SCOPED_TRACE(testing::Message() << outer.first << " / " << inner.first);
            // The first calls are the ones that differ; a load makes a hundred that are alike.
            for (int n = 1;; n += n < 5 ? 1 : n) {
                Prepare();
                bool reached = false;
                HookCallsOut(n, [&, this] {
                    reached = true;
                    inner.second(*this);
                });
                outer.second(*this);
                HookCallsOut(0, nullptr);
                if (!reached) break;
                // Still a control in its right mind.
                world.container.userMode = true;
                control->ReadProperties(BoundBag());
                ASSERT_TRUE(world.framework.Deliver(4, u"7"));
                ASSERT_TRUE(world.framework.Deliver(5, u"3"));
                control->SetCaptionWidth(1000);
                world.area.Resize({3000, 100});
                const Rect caption = CaptionLabel().Bounds();
                const Rect value = ValueLabel().Bounds();
                EXPECT_EQ(value.left, caption.width);
                EXPECT_EQ(world.area.Bounds().width, caption.width + value.width);
                EXPECT_NE(Text().find("Jul"), std::string::npos) << Text();
            }
        }
    }
    control.reset();
    EXPECT_EQ(world.framework.living, 0);
}

TEST_F(ShowControlLifetimeTest, ALoadWithinALoadLeavesTheEndToTheOuterOne) {
    class NestingBag final : public PropertyBag {
    public:
        explicit NestingBag(ShowControl& control) : m_control(control) {}
        Value Read(std::u16string_view key, const Value& fallback) const override {
            if (key == u"UpperCase") m_control.InitProperties();
            if (key == u"Caption") return std::u16string(u"outer");
            return fallback;
        }
        void Write(std::u16string_view, const Value&, const Value*) override {}

    private:
        ShowControl& m_control;
    };
    Create();
    control->ReadProperties(NestingBag(*control));
    EXPECT_EQ(control->Caption(), u"Date/Time:");
    EXPECT_EQ(host.Take(), Events{"ValueChange"});
    EXPECT_EQ(world.container.TakeChanges(), Keys{});
    control->SetCaption(u"announced again");
    EXPECT_EQ(world.container.TakeChanges(), Keys{u"Caption"});
}

}  // namespace
}  // namespace kiv
