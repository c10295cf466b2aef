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
#include "platform/HostError.h"
#include "setcontrol/SetControl.h"

namespace kiv {

/// Writes down each event; onEvent may do what a host's handler may.
class RecordingEvents final : public SetControlEvents {
public:
    void Click() override { Note("Click"); }
    void DblClick() override { Note("DblClick"); }
    void KeyUp(std::int16_t& keyCode, std::int16_t& /*shift*/) override { Key("KeyUp", keyCode); }
    void KeyPress(std::int16_t& keyAscii) override { Key("KeyPress", keyAscii); }
    void KeyDown(std::int16_t& keyCode, std::int16_t& /*shift*/) override { Key("KeyDown", keyCode); }
    void MouseDown(std::int16_t& button, std::int16_t& shift, float& x, float& y) override {
        Mouse("MouseDown", button, shift, x, y);
    }
    void MouseMove(std::int16_t& button, std::int16_t& shift, float& x, float& y) override {
        Mouse("MouseMove", button, shift, x, y);
    }
    void MouseUp(std::int16_t& button, std::int16_t& shift, float& x, float& y) override {
        Mouse("MouseUp", button, shift, x, y);
    }
    void GetDeviceDateTime(Value& dtNow, bool& bEnableDST) override {
        dtNow = answer;
        bEnableDST = answerDst;
        Note("GetDeviceDateTime");
    }

    std::vector<std::string> Take() { return std::exchange(events, {}); }

    std::vector<std::string> events;
    std::function<void(const std::string&)> onEvent;
    Value answer;
    bool answerDst = false;
    std::int16_t keyAnswer = -1;  ///< what the key handlers leave; -1 leaves the key alone
    float mouseX = 0;
    float mouseY = 0;

private:
    void Note(const std::string& event) {
        events.push_back(event);
        // A copy: the handler may destroy this object's owner.
        if (const auto handler = onEvent) handler(event);
    }
    void Key(const std::string& name, std::int16_t& key) {
        const std::string event = name + " " + std::to_string(key);
        if (keyAnswer >= 0) key = keyAnswer;
        Note(event);
    }
    void Mouse(const std::string& name, std::int16_t button, std::int16_t shift, float x, float y) {
        mouseX = x;
        mouseY = y;
        Note(name + " " + std::to_string(button) + " " + std::to_string(shift));
    }
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

/// The number of the HostError that call throws; 0 where it throws none.
template <typename Call>
std::int32_t ErrorOf(Call&& call) {
    try {
        call();
        return 0;
    } catch (const HostError& error) {
        return error.Number();
    }
}

}  // namespace kiv
