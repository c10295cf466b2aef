// Events, notifications and framework calls that come back into the control, end it, or destroy it. These tests say
// most under the address sanitizer.
#include "SetControlFixture.h"

namespace kiv {
namespace {

class SetControlLifetimeTest : public SetControlTest {
protected:
    using Act = std::function<void(SetControlLifetimeTest&)>;

    /// Everything that makes the control call out, one by one.
    static std::vector<std::pair<std::string, Act>> Actions() {
        using T = SetControlLifetimeTest;
        return {
            {"uncheck", [](T& t) { t.control->SetUsePCDateTime(false); }},
            {"check", [](T& t) { t.control->SetUsePCDateTime(true); }},
            {"enable", [](T& t) { t.control->SetEnabled(false); }},
            {"caption", [](T& t) { t.control->SetCaption(u"other"); }},
            {"colour", [](T& t) { t.control->SetCalBackColor(77); }},
            {"font", [](T& t) { t.control->SetFont(headless::MakeFont(u"Tahoma", 200000)); }},
            {"time width", [](T& t) { t.control->SetTimeWidth(5000); }},
            {"time format", [](T& t) { t.control->SetTimeFormat(9); }},
            {"slot", [](T& t) { t.control->SetDataElementPath(3, u"new"); }},
            {"slot read", [](T& t) { (void)t.control->DataElementPath(3); }},
            {"write", [](T& t) { t.control->SetDataInUpload(false); }},
            {"read", [](T& t) { t.control->SetDataInUpload(true); }},
            {"show", [](T& t) { t.control->OnShown(); }},
            {"save", [](T& t) { t.control->WriteProperties(t.bag); }},
            {"load", [](T& t) { t.control->ReadProperties(BoundBag()); }},
            {"init", [](T& t) { t.control->InitProperties(); }},
            {"resize",
             [](T& t) {
                 t.world.surface.Resize({1, 1});
             }},
            {"user mode",
             [](T& t) {
                 t.world.container.userMode = false;
                 t.control->OnUserModeChanged();
             }},
            {"terminate", [](T& t) { t.control->Terminate(); }},
            {"run mode again",
             [](T& t) {
                 for (const bool userMode : {false, true}) {
                     t.world.container.userMode = userMode;
                     if (t.control) t.control->OnUserModeChanged();
                 }
             }},
            {"focus", [](T& t) { t.control->VexaSetControlFocus(); }},
            {"help file arrives", [](T& t) { headless::FireHelpFile(t.control->VexaHelpObject(), u"device.hlp"); }},
            {"click", [](T& t) { t.UseSystem().UserToggles(); }},
            {"pick",
             [](T& t) {
                 t.Calendar().UserPicks({2001, 1, 1});
             }},
            {"double click", [](T& t) { t.Time().UserDblClicks(); }},
            {"key", [](T& t) { t.Time().UserPressesKey(65); }},
            {"mouse", [](T& t) { t.Time().UserMoves(MouseAction::Down, {}); }},
            {"clock format arrives", [](T& t) { t.world.framework.Deliver(0, u"5"); }},
            {"month arrives", [](T& t) { t.world.framework.Deliver(5, u"5"); }},
        };
    }

    /// Lets hook run at the n-th time that the control calls out, whatever the call is; counts the calls.
    void HookCallsOut(int n, std::function<void()> hook) {
        m_calls = 0;
        m_hookAt = n;
        m_hook = std::move(hook);
        host.onEvent = [this](const std::string&) { CallOut(); };
        world.container.onPropertyChanged = [this](std::u16string_view) { CallOut(); };
        world.surface.onSetSize = [this] { CallOut(); };
        world.framework.fails = [this](const std::string& call) {
            // A collection is walked also by the control's own end.
            if (call != "walk") CallOut();
            return false;
        };
        world.surface.onFocus = [this] { CallOut(); };
        world.help.onSet = [this] { CallOut(); };
    }

    /// A bag that calls out too.
    class CallingBag final : public PropertyBag {
    public:
        explicit CallingBag(SetControlLifetimeTest& test) : m_test(test) {}
        Value Read(std::u16string_view /*key*/, const Value& fallback) const override {
            m_test.CallOut();
            return fallback;
        }
        void Write(std::u16string_view /*key*/, const Value& /*value*/, const Value* /*defaultValue*/) override {
            m_test.CallOut();
        }

    private:
        SetControlLifetimeTest& m_test;
    };

    void CallOut() {
        if (++m_calls == m_hookAt && m_hook) m_hook();
    }

    /// A run-time control, ready to be acted upon; the hooks are off.
    void Prepare() {
        HookCallsOut(0, nullptr);
        world.container.userMode = true;
        world.settings.keys.clear();
        world.surface.SetSize({});
        Load(BoundBag());
    }

    int m_calls = 0;
    int m_hookAt = 0;
    std::function<void()> m_hook;
    CallingBag bag{*this};
};

TEST_F(SetControlLifetimeTest, TheControlMayBeDestroyedInsideAnyCallThatItMakes) {
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
            EXPECT_EQ(world.surface.ChildCount(), 0U);
            EXPECT_EQ(world.surface.Listener(), nullptr);
            EXPECT_EQ(world.timers.Count(), 0U);
            EXPECT_EQ(world.framework.living, 0);
        }
        control.reset();
    }
    EXPECT_GT(destroyed, 300);
}

TEST_F(SetControlLifetimeTest, EveryActionMayReenterWithEveryOther) {
    for (const auto& outer : Actions()) {
        for (const auto& inner : Actions()) {
            for (const int n : {1, 2, 3, 5, 20}) {
                SCOPED_TRACE(testing::Message() << outer.first << " / " << inner.first << " at call " << n);
                Prepare();
                HookCallsOut(n, [&, this] { inner.second(*this); });
                outer.second(*this);
                HookCallsOut(0, nullptr);
                // Still a control in its right mind.
                control->SetCaption(u"alive");
                EXPECT_EQ(control->Caption(), u"alive");
                world.surface.Resize({1, 1});
                EXPECT_GT(world.surface.Bounds().width, 1000);
                control.reset();
                EXPECT_EQ(world.framework.living, 0);
            }
        }
    }
}

TEST_F(SetControlLifetimeTest, SwitchingBackInTheMiddleOfAWriteWritesNothingMore) {
    for (const std::string moment : {"enable 4 True", "value 6 30"}) {
        Prepare();
        bool switched = false;
        world.framework.fails = [&](const std::string& call) {
            if (call == moment && !std::exchange(switched, true)) control->SetDataInUpload(true);
            return false;
        };
        control->SetDataInUpload(false);
        EXPECT_TRUE(control->DataInUpload());
        std::string lastEnable;
        for (const std::string& call : world.framework.TakeCalls()) {
            if (call.starts_with("enable 4")) lastEnable = call;
            EXPECT_FALSE(call.starts_with("value 7") || call.starts_with("value 2")) << moment << ": " << call;
        }
        EXPECT_EQ(lastEnable, "enable 4 False");
        EXPECT_EQ(world.framework.definitions[7].variableName, u"nvoYear");
        control.reset();
    }
}

TEST_F(SetControlLifetimeTest, SwitchingToWritingInTheMiddleOfASwitchToReadingKeepsTheUsersEdits) {
    Prepare();
    Dst().UserToggles();
    bool switched = false;
    world.framework.fails = [&](const std::string& call) {
        if (call == "enable 4 False" && !std::exchange(switched, true)) control->SetDataInUpload(false);
        return false;
    };
    control->SetDataInUpload(true);
    EXPECT_FALSE(control->DataInUpload());
    world.framework.Deliver(1, u"0");
    EXPECT_EQ(Dst().Value(), 1);
}

TEST_F(SetControlLifetimeTest, AHandlerThatChoosesThePCsClockWhenAskedForTheDeviceIsNotOverruled) {
    Prepare();
    const CivilDate shown = Calendar().Value();
    host.answer = OleDate{40000};
    host.onEvent = [this](const std::string& event) {
        if (event == "GetDeviceDateTime") control->SetUsePCDateTime(true);
    };
    control->SetEnabled(true);
    EXPECT_EQ(Calendar().Value(), shown);
    EXPECT_EQ(Dst().Value(), 1);
    EXPECT_EQ(world.timers.EnabledCount(), 1U);
}

TEST_F(SetControlLifetimeTest, AModeChangeInTheMiddleOfALoadCountsAtItsEnd) {
    Prepare();
    control.reset();
    Create();
    host.onEvent = [this](const std::string& event) {
        if (event != "GetDeviceDateTime") return;
        world.container.userMode = false;
        control->OnUserModeChanged();
    };
    control->ReadProperties(BoundBag());
    EXPECT_EQ(ErrorOf([&] { control->SetMode(1); }), 0);
    EXPECT_EQ(world.framework.living, 0);
    EXPECT_EQ(world.timers.EnabledCount(), 0U);
}

TEST_F(SetControlLifetimeTest, AControlDestroyedInsideATickEndsItsTimer) {
    Prepare();
    control->SetUsePCDateTime(true);
    ASSERT_EQ(world.timers.EnabledCount(), 1U);
    control.reset();
    world.timers.Fire();
    EXPECT_EQ(world.timers.Count(), 0U);
}

TEST_F(SetControlLifetimeTest, AfterItsEndAControlStartsNothingAnew) {
    Prepare();
    host.onEvent = [this](const std::string& event) {
        if (event == "Click") control->Terminate();
    };
    control->SetUsePCDateTime(true);  // applied once more after the click, when all is over
    EXPECT_EQ(world.timers.EnabledCount(), 0U);
    EXPECT_EQ(world.framework.living, 0);
    const int created = world.framework.created;
    control->SetUsePCDateTime(false);
    control->SetDataVariableName(3, u"late");
    control->SetDataInUpload(false);
    control->OnUserModeChanged();
    EXPECT_EQ(control->DataVariableName(3), u"late");
    EXPECT_EQ(world.framework.created, created);
    EXPECT_EQ(world.timers.EnabledCount(), 0U);

    host.onEvent = nullptr;
    control->ReadProperties(BoundBag());
    EXPECT_EQ(world.framework.living, 1);
    EXPECT_EQ(world.timers.EnabledCount(), 1U);  // the choice remembered at the end was the PC's clock
}

TEST_F(SetControlLifetimeTest, AHandlersErrorOtherThanInTheRequestForTheDateIsNotTheControlsToHide) {
    Prepare();
    host.onEvent = [](const std::string& event) {
        if (event == "Click") throw HostError(5);
    };
    EXPECT_EQ(ErrorOf([&] { control->SetUsePCDateTime(true); }), 5);
    host.onEvent = nullptr;
    EXPECT_TRUE(control->UsePCDateTime());
}

}  // namespace
}  // namespace kiv
