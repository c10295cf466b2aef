// The framework's side of the data elements: what is delivered when, what reaches the device, what the log tells.
#include "simulator/FrameworkSimulation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexa {
namespace {

using namespace std::chrono_literals;
using Reason = SimulatorError::Reason;

class SimulatedFramework : public testing::Test {
protected:
    SimulatedFramework() { control->SetElementCount(8); }

    static std::string Narrow(const std::u16string& text) { return {text.begin(), text.end()}; }
    void BindForReading(std::int16_t index, const char16_t* name) {
        control->WriteDefinition(index, {1, 1, name, u""});
        control->SetWriteEnabled(index, false);
    }
    void BindForWriting(std::int16_t index, const char16_t* name) {
        control->WriteDefinition(index, {1, 0, name, u""});
        control->SetWriteEnabled(index, true);
    }
    /// "index=value " for everything delivered since the last call.
    std::string TakeArrived() { return std::exchange(m_arrived, {}); }
    std::string Poll() {
        framework.Poll();
        return TakeArrived();
    }
    std::string Log() {
        std::string all;
        for (std::size_t i = 0; i < framework.Log().Count(); ++i) all += Narrow(*framework.Log().Line(i)) + "\n";
        return all;
    }
    void Receive(std::int16_t index, const std::u16string& value) {
        m_arrived += std::to_string(index) + "=" + Narrow(value) + " ";
        if (m_onValue) m_onValue(index);
    }
    template <class Body>
    static Reason Refusal(Body&& body) {
        try {
            body();
        } catch (const SimulatorError& error) {
            return error.Why();
        }
        ADD_FAILURE() << "nothing was refused";
        return Reason::Offline;
    }

    std::chrono::milliseconds m_elapsed{0};
    std::chrono::milliseconds m_perReading{0};  ///< passes whenever the clock is read
    DeviceModel device{[this] { return m_elapsed += m_perReading; },
                       std::chrono::local_days(2001y / std::chrono::July / 4) + 14h + 25min + 36s};
    FrameworkSimulation framework{device};
    std::function<void(std::int16_t)> m_onValue;
    std::string m_arrived;
    std::shared_ptr<HiddenControlModel> control = framework.CreateHiddenControl(
        [this](std::int16_t index, const std::u16string& value) { Receive(index, value); });
};

TEST_F(SimulatedFramework, DeliversOnceWhenBoundAndThenOnlyWhatChanged) {
    BindForReading(2, u"nvoHour");
    BindForReading(4, u"nvoSecond");
    EXPECT_EQ(TakeArrived(), "") << "delivered from inside a call";
    EXPECT_EQ(Poll(), "2=14 4=36 ");
    EXPECT_EQ(Poll(), "");
    m_elapsed += 1s;
    EXPECT_EQ(Poll(), "4=37 ");
    framework.Refresh();
    EXPECT_EQ(TakeArrived(), "2=14 4=37 ");
}

TEST_F(SimulatedFramework, BindingForReadingAgainDeliversTheSameValueAgain) {
    BindForReading(5, u"nvoMonth");
    EXPECT_EQ(Poll(), "5=7 ");
    control->WriteDefinition(5, control->ReadDefinition(5));
    EXPECT_EQ(Poll(), "5=7 ");
    control->SetWriteEnabled(5, false);
    EXPECT_EQ(Poll(), "5=7 ");
}

TEST_F(SimulatedFramework, NothingArrivesForElementsThatWriteOrNameNothing) {
    BindForReading(2, u"");
    BindForWriting(3, u"nviSetMinute");
    control->WriteDefinition(4, {1, 1, u"nvoSecond", u""});
    control->SetWriteEnabled(4, true);
    EXPECT_EQ(Poll(), "");
    framework.Refresh();
    EXPECT_EQ(TakeArrived(), "");
}

TEST_F(SimulatedFramework, ADeviceThatCannotBeReadDeliversLater) {
    BindForReading(2, u"nvoHour");
    device.SetOffline(true);
    EXPECT_EQ(Poll(), "");
    device.SetOffline(false);
    EXPECT_EQ(Poll(), "2=14 ");
}

TEST_F(SimulatedFramework, WholeVisitSetsTheDeviceAndReadsItBack) {
    const char16_t* const parts[] = {u"Hour", u"Minute", u"Second", u"Month", u"Day", u"Year"};
    const auto bind = [&](const std::u16string& prefix, bool writing) {
        for (std::int16_t i = 0; i < 6; ++i) {
            control->WriteDefinition(static_cast<std::int16_t>(i + 2), {1, writing ? 0 : 1, prefix + parts[i], u""});
            control->SetWriteEnabled(static_cast<std::int16_t>(i + 2), writing);
        }
    };
    bind(u"nvo", false);
    EXPECT_EQ(Poll(), "2=14 3=25 4=36 5=7 6=4 7=2001 ");
    bind(u"nviSet", true);
    const std::pair<std::int16_t, const char16_t*> writes[] = {{5, u"2"},  {6, u"29"}, {7, u"2024"},
                                                               {2, u"23"}, {3, u"0"},  {4, u"1"}};
    for (const auto& [index, text] : writes) control->WriteValue(index, text, u"NoDisplay", u"UseCurrent");
    EXPECT_EQ(Poll(), "");
    bind(u"nvo", false);
    EXPECT_EQ(Poll(), "2=23 3=0 4=1 5=2 6=29 7=2024 ");
}

TEST_F(SimulatedFramework, InputsNeedWriteEnableAndConfigurationDoesNot) {
    BindForReading(3, u"");
    control->WriteDefinition(3, {1, 0, u"nviSetMinute", u""});
    EXPECT_EQ(Refusal([&] { control->WriteValue(3, u"1", u"", u""); }), Reason::NotWriteEnabled);
    control->WriteDefinition(1, {1, 2, u"nciDaylightSaving", u""});
    Poll();
    control->WriteValue(1, u"1", u"", u"");
    EXPECT_EQ(Poll(), "1=1 ") << "the written value comes back";
}

TEST_F(SimulatedFramework, LogTellsEveryCallAndItsFailureOnOneLine) {
    BindForWriting(5, u"nviSetMonth");
    control->ReadDefinition(5);
    control->WriteValue(5, u"7", u"NoDisplay", u"UseCurrent");
    Refusal([&] { control->WriteValue(5, u"1\r\n3", u"NoDisplay", u"UseCurrent"); });
    Refusal([&] { control->ReadDefinition(8); });
    BindForReading(5, u"nvoMonth");
    Poll();
    EXPECT_EQ(Log(),
              "write definition 5: LM 1, type 0, nviSetMonth []\n"
              "write-enable 5: True\n"
              "read definition 5: LM 1, type 0, nviSetMonth []\n"
              "write value 5: nviSetMonth = 7 (NoDisplay, UseCurrent)\n"
              "write value 5: nviSetMonth = 1  3 (NoDisplay, UseCurrent) failed: the value is not a whole number\n"
              "read definition 8: LM 0, type 0,  [] failed: the hidden control has no such element\n"
              "write definition 5: LM 1, type 1, nvoMonth []\n"
              "write-enable 5: False\n"
              "value 5: nvoMonth = 7\n");
}

TEST_F(SimulatedFramework, LogForgetsTheOldestLinesAndKeepsTheirNumbers) {
    for (std::size_t i = 0; i < TrafficLog::Capacity + 3; ++i) framework.Log().Add(u"line");
    framework.Log().Add(u"last");
    const std::size_t count = framework.Log().Count();
    EXPECT_EQ(count, TrafficLog::Capacity + 4);
    EXPECT_EQ(framework.Log().Line(3), nullptr);
    ASSERT_NE(framework.Log().Line(4), nullptr);
    EXPECT_EQ(*framework.Log().Line(count - 1), u"last");
    EXPECT_EQ(framework.Log().Line(count), nullptr);
}

TEST_F(SimulatedFramework, AHandlerMayRebindOrCloseAndGetsNothingOfTheOldBindingAfterwards) {
    for (std::int16_t i = 2; i < 5; ++i) BindForReading(i, u"nvoHour");
    m_onValue = [this](std::int16_t index) {
        if (index == 2) BindForWriting(3, u"nviSetHour");
    };
    EXPECT_EQ(Poll(), "2=14 4=14 ");

    BindForReading(3, u"nvoMinute");
    m_onValue = [this](std::int16_t index) {
        if (index == 2) BindForReading(3, u"nvoDay");
    };
    framework.Refresh();
    EXPECT_EQ(TakeArrived(), "2=14 4=14 ") << "a minute arrived for an element that is bound to the day";
    m_onValue = nullptr;
    EXPECT_EQ(Poll(), "3=4 ");

    m_onValue = [this](std::int16_t) { control->SetElementCount(2); };
    framework.Refresh();
    EXPECT_EQ(TakeArrived(), "2=14 ");
}

TEST_F(SimulatedFramework, AHandlerThatEndsItsHiddenControlGetsNoMore) {
    BindForReading(2, u"nvoHour");
    BindForReading(3, u"nvoMinute");
    m_onValue = [this](std::int16_t) {
        if (control) control->Close();
        control.reset();
    };
    EXPECT_EQ(Poll(), "2=14 ");
    EXPECT_EQ(Poll(), "");
}

TEST_F(SimulatedFramework, AHandlerLivesUntilItReturnsThoughItsControlIsClosed) {
    std::string seen;
    std::shared_ptr<HiddenControlModel> closing = framework.CreateHiddenControl(
        [&, own = std::string("kept by the handler itself")](std::int16_t, const std::u16string&) {
            closing->Close();
            seen += own;
        });
    closing->SetElementCount(1);
    closing->WriteDefinition(0, {1, 1, u"nvoHour", u""});
    Poll();
    EXPECT_EQ(seen, "kept by the handler itself");
}

TEST_F(SimulatedFramework, PollingInsideAHandlerDoesNotNest) {
    BindForReading(2, u"nvoHour");
    BindForReading(3, u"nvoMinute");
    int depth = 0;
    m_onValue = [&](std::int16_t) {
        EXPECT_EQ(++depth, 1);
        framework.Poll();
        if (m_arrived == "2=14 ") framework.Refresh();
        --depth;
    };
    EXPECT_EQ(Poll(), "2=14 3=25 ");
    EXPECT_EQ(Poll(), "2=14 3=25 ") << "the refresh asked for inside the handler was lost";
}

TEST_F(SimulatedFramework, AskedForFailuresHitTheNextCallsAndChangeNothing) {
    BindForReading(2, u"nvoHour");
    framework.SetFailNext(2);
    EXPECT_EQ(Refusal([&] { control->WriteDefinition(2, {1, 1, u"nvoDay", u""}); }), Reason::InjectedFailure);
    EXPECT_EQ(Refusal([&] { control->SetWriteEnabled(2, true); }), Reason::InjectedFailure);
    EXPECT_EQ(control->ReadDefinition(2).variableName, u"nvoHour");
    EXPECT_EQ(Poll(), "2=14 ");
    framework.SetFailNext(-1);
    for (int i = 0; i < 100; ++i) EXPECT_THROW(control->CheckIndex(2), SimulatorError);
    framework.SetFailNext(0);
    EXPECT_NO_THROW(control->CheckIndex(2));
}

TEST_F(SimulatedFramework, AllValuesOfOnePollAreOfTheSameSecond) {
    std::string other;
    const auto second = framework.CreateHiddenControl(
        [&](std::int16_t index, const std::u16string& value) { other += std::to_string(index) + "=" + Narrow(value); });
    second->SetElementCount(1);
    second->WriteDefinition(0, {1, 1, u"", u"Clock.Second"});
    device.SetNow(std::chrono::local_days(2001y / std::chrono::July / 4) + 14h + 59min + 58s);
    m_perReading = 1s;
    BindForReading(2, u"nvoHour");
    BindForReading(3, u"nvoMinute");
    BindForReading(4, u"nvoSecond");
    EXPECT_EQ(Poll(), "2=14 3=59 4=59 ");
    EXPECT_EQ(other, "0=59");
    EXPECT_EQ(Poll(), "2=15 3=0 4=0 ");
}

TEST_F(SimulatedFramework, ElementsOutsideTheCountAreRefused) {
    for (const std::int16_t index : std::initializer_list<std::int16_t>{-1, 8, 32767}) {
        SCOPED_TRACE(index);
        EXPECT_EQ(Refusal([&] { control->CheckIndex(index); }), Reason::NoSuchElement);
        EXPECT_EQ(Refusal([&] { control->WriteDefinition(index, {}); }), Reason::NoSuchElement);
        EXPECT_EQ(Refusal([&] { control->WriteValue(index, u"1", u"", u""); }), Reason::NoSuchElement);
        EXPECT_EQ(Refusal([&] { control->SetWriteEnabled(index, true); }), Reason::NoSuchElement);
    }
    EXPECT_EQ(Refusal([&] { control->SetElementCount(-1); }), Reason::BadValue);
}

TEST_F(SimulatedFramework, ASlowDeviceAnswersForOneElementAfterAnotherAndForgetsNone) {
    // The second is always news, and first in line.
    BindForReading(0, u"nvoSecond");
    BindForReading(1, u"nvoMonth");
    BindForReading(2, u"nvoDay");
    device.SetResponseTime(1s);
    std::string arrived;
    for (int poll = 0; poll < 25; ++poll) {
        m_elapsed += 200ms;
        arrived += Poll();
    }
    EXPECT_EQ(arrived, "0=37 1=7 2=4 0=40 0=41 ");
    device.SetResponseTime(0ms);
    framework.Refresh();
    EXPECT_EQ(TakeArrived(), "0=41 1=7 2=4 ");
}

TEST_F(SimulatedFramework, TheControlsOfAScreenTakeTurnsAtASlowDevice) {
    std::string second;
    const auto other = framework.CreateHiddenControl(
        [&](std::int16_t index, const std::u16string&) { second += std::to_string(index); });
    other->SetElementCount(2);
    other->WriteDefinition(0, {1, 1, u"nvoMonth", u""});
    other->WriteDefinition(1, {1, 1, u"nvoYear", u""});
    BindForReading(0, u"nvoSecond");
    device.SetResponseTime(1s);
    for (int poll = 0; poll < 4; ++poll) {
        m_elapsed += 1s;
        framework.Poll();
    }
    EXPECT_EQ(TakeArrived(), "0=37 0=40 ");
    EXPECT_EQ(second, "01");
}

}  // namespace
}  // namespace vexa
