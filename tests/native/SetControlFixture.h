// A set control in an in-memory world, with a host that writes down its events.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/MemoryBag.h"
#include "headless/HeadlessPlatform.h"
#include "RecordingInput.h"
#include "setcontrol/SetControl.h"

namespace kiv {

class RecordingEvents final : public RecordingInput<SetControlEvents> {
public:
    void GetDeviceDateTime(Value& dtNow, bool& bEnableDST) override {
        dtNow = answer;
        bEnableDST = answerDst;
        Note("GetDeviceDateTime");
    }

    Value answer;
    bool answerDst = false;
};

class SetControlTest : public ::testing::Test {
protected:
    using Keys = std::vector<std::u16string>;
    using Events = std::vector<std::string>;

    /// A control with the given properties, everything recorded so far forgotten.
    void Load(const MemoryBag& bag = MemoryBag()) {
        Create();
        control->ReadProperties(bag);
        Forget();
    }
    void LoadInDesigner(const MemoryBag& bag = MemoryBag()) {
        world.container.userMode = false;
        Load(bag);
    }
    void Create() { control = std::make_unique<SetControl>(world.Platform(), host); }
    void Forget() {
        world.container.changes.clear();
        world.framework.calls.clear();
        host.events.clear();
    }
    /// A bag in which every slot is bound and the PC's clock is not followed.
    static MemoryBag BoundBag() {
        static constexpr const char16_t* Names[] = {
            u"nciClockFormat", u"nciDaylightSaving", u"nvoHour",    u"nvoMinute",    u"nvoSecond",    u"nvoMonth",
            u"nvoDay",         u"nvoYear",           u"nviSetHour", u"nviSetMinute", u"nviSetSecond", u"nviSetMonth",
            u"nviSetDay",      u"nviSetYear"};
        MemoryBag bag;
        std::int32_t slot = 0;
        for (const char16_t* name : Names) {
            const std::string number = std::to_string(slot++);
            bag.Put(u"DataVarName" + std::u16string(number.begin(), number.end()), std::u16string(name));
        }
        bag.Put(u"UsePCDateTime", false);
        return bag;
    }

    headless::HeadlessCalendar& Calendar() { return world.surface.Find<headless::HeadlessCalendar>(u"mvDate"); }
    headless::HeadlessTimeField& Time() { return world.surface.Find<headless::HeadlessTimeField>(u"dtpTimeSP"); }
    headless::HeadlessCheckBox& UseSystem() { return world.surface.Find<headless::HeadlessCheckBox>(u"chkUseSystem"); }
    headless::HeadlessCheckBox& Dst() {
        return world.surface.Find<headless::HeadlessCheckBox>(u"chkUseDaylightSavings");
    }
    headless::HeadlessFrame& Outer() { return world.surface.Find<headless::HeadlessFrame>(u"fraOuter"); }
    headless::HeadlessFrame& Inner() { return world.surface.Find<headless::HeadlessFrame>(u"fraInner"); }

    headless::HeadlessPlatform world;
    RecordingEvents host;
    std::unique_ptr<SetControl> control;
};

}  // namespace kiv
