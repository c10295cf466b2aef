// A show control in an in-memory world, with a host that writes down its events.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "common/MemoryBag.h"
#include "headless/HeadlessShowPlatform.h"
#include "RecordingInput.h"
#include "showcontrol/ShowControl.h"

namespace kiv {

class RecordingShowEvents final : public RecordingInput<ShowControlEvents> {
public:
    void ValueChange() override { Note("ValueChange"); }
};

class ShowControlTest : public ::testing::Test {
protected:
    using Keys = std::vector<std::u16string>;
    using Events = std::vector<std::string>;

    /// A new control in an area that the container has not sized yet.
    void Create() {
        control.reset();
        world.area.SetSize({});
        world.area.SetFont(nullptr);
        control = std::make_unique<ShowControl>(world.Platform(), host);
    }
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
    void Forget() {
        world.container.changes.clear();
        world.container.dirtyMarks = 0;
        world.framework.calls.clear();
        host.events.clear();
    }

    /// Every slot bound; the text in its plainest form.
    static MemoryBag BoundBag(std::int32_t mode = sdtShowDateOnly) {
        static constexpr const char16_t* Names[] = {u"nciFormat", u"nvoHour", u"nvoMinute", u"nvoSecond",
                                                    u"nvoMonth",  u"nvoDay",  u"nvoYear"};
        MemoryBag bag;
        char16_t slot = u'0';
        for (const char16_t* name : Names) {
            bag.Put(std::u16string(u"DataVarName") + slot, std::u16string(name));
            bag.Put(std::u16string(u"DataElemPath") + slot++, std::u16string(name) + u".value");
        }
        bag.Put(u"Mode", mode);
        bag.Put(u"UpperCase", false);
        return bag;
    }
    static MemoryBag With(MemoryBag bag, std::u16string_view key, const Value& value) {
        bag.Put(key, value);
        return bag;
    }

    std::string Text() const { return Narrow(control->Value()); }
    static std::string Narrow(std::u16string_view text) { return {text.begin(), text.end()}; }
    headless::HeadlessLabel& CaptionLabel() { return world.area.Find<headless::HeadlessLabel>(u"lblCaption"); }
    headless::HeadlessLabel& ValueLabel() { return world.area.Find<headless::HeadlessLabel>(u"lblValue"); }

    headless::HeadlessShowPlatform world;
    RecordingShowEvents host;
    std::unique_ptr<ShowControl> control;
};

}  // namespace kiv
