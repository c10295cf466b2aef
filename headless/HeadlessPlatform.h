// One in-memory world for one control. It outlives the control.
#pragma once

#include "headless/HeadlessContainer.h"
#include "headless/HeadlessFont.h"
#include "headless/HeadlessFramework.h"
#include "headless/HeadlessHelp.h"
#include "headless/HeadlessSettings.h"
#include "headless/HeadlessSurface.h"
#include "headless/HeadlessSystem.h"
#include "platform/ControlPlatform.h"

namespace kiv::headless {

struct HeadlessPlatform {
    HeadlessClock clock;
    HeadlessTimeZone timeZone;
    HeadlessTimers timers;
    HeadlessSettings settings;
    HeadlessFramework framework;
    HeadlessApplicationHelp help;
    HeadlessContainer container;
    HeadlessSurface surface{clock};

    ControlPlatform Platform() { return {surface, container, clock, timeZone, timers, settings, framework, help}; }
};

}  // namespace kiv::headless
