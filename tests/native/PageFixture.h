// A property page over controls of the core, used as a property frame and a user use it.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "headless/HeadlessEditedControl.h"
#include "headless/HeadlessPageView.h"
#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessShowPlatform.h"
#include "pages/BuiltInServices.h"
#include "pages/Pages.h"
#include "RecordingInput.h"
#include "setcontrol/SetControl.h"
#include "showcontrol/ShowControl.h"

namespace kiv {

class PageSetEvents final : public RecordingInput<SetControlEvents> {
public:
    void GetDeviceDateTime(Value&, bool&) override {}
};

class PageShowEvents final : public RecordingInput<ShowControlEvents> {
public:
    void ValueChange() override {}
};

/// A control in a designer.
template <class World, class Control, class Events>
struct DesignedControl {
    DesignedControl() {
        world.container.userMode = false;
        control = std::make_unique<Control>(world.Platform(), events);
        control->InitProperties();
        object = std::make_shared<headless::HeadlessEditedControl>(*control);
    }
    World world;
    Events events;
    std::unique_ptr<Control> control;
    std::shared_ptr<headless::HeadlessEditedControl> object;

    Control* operator->() { return control.get(); }
};

using DesignedSet = DesignedControl<headless::HeadlessPlatform, SetControl, PageSetEvents>;
using DesignedShow = DesignedControl<headless::HeadlessShowPlatform, ShowControl, PageShowEvents>;

class PageTest : public ::testing::Test {
protected:
    using Puts = std::vector<std::string>;

    void Open(PageId id) { page = MakePage(id, {view, services}); }
    template <class... Controls>
    void Select(Controls&... controls) {
        page->SetObjects({controls.object...});
        view.TakeFlags();
    }

    PageField& At(const char16_t* name) { return page->Field(name); }
    void Type(const char16_t* name, const char16_t* text) { page->Type(At(name), text); }
    void Check(const char16_t* name, int value) { page->Check(At(name), value); }
    void Choose(const char16_t* name) { page->Choose(At(name)); }
    void Pick(const char16_t* name, int index) { page->Pick(At(name), index); }

    headless::HeadlessPageView view;
    BuiltInServices services;
    std::unique_ptr<PropertyPage> page;
    DesignedSet set, otherSet;
    DesignedShow show, otherShow;
};

}  // namespace kiv
