// One in-memory world for one show control. It outlives the control.
#pragma once

#include "headless/HeadlessContainer.h"
#include "headless/HeadlessFont.h"
#include "headless/HeadlessFramework.h"
#include "headless/HeadlessHelp.h"
#include "headless/HeadlessLabelArea.h"
#include "headless/HeadlessRegionalNames.h"
#include "headless/HeadlessSystem.h"
#include "platform/ShowPlatform.h"

namespace kiv::headless {

struct HeadlessShowPlatform {
    HeadlessShowPlatform() { container.instanceName = u"KivShowDateTime1"; }

    ShowPlatform Platform() { return {area, container, clock, names, framework, help}; }

    HeadlessClock clock;
    HeadlessRegionalNames names;
    HeadlessFramework framework;
    HeadlessApplicationHelp help;
    HeadlessContainer container;
    HeadlessLabelArea area;
};

}  // namespace kiv::headless
