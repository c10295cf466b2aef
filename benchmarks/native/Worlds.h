// Controls in memory, ready to be measured.
#pragma once

#include <atomic>
#include <cstddef>
#include <span>
#include <vector>

#include "common/MemoryBag.h"
#include "common/PropertyStream.h"
#include "headless/HeadlessEvents.h"
#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessRegionalNames.h"
#include "headless/HeadlessShowPlatform.h"
#include "setcontrol/SetControl.h"
#include "showcontrol/DisplayFormatter.h"
#include "showcontrol/ShowControl.h"

namespace bench {

/// Keeps a result from being left out because nobody looks at it.
inline void Keep(std::size_t result) {
    static std::atomic<std::size_t> kept;
    kept.store(result, std::memory_order_relaxed);
}

/// "05-NOV-2026", "01:05:09 PM"
struct ReadyFormatter {
    ReadyFormatter() {
        kiv::DisplaySettings settings;
        settings.dayFirst = true;
        settings.showSeconds = true;
        formatter.Configure(settings, kiv::headless::HeadlessRegionalNames());
    }
    /// As a control builds it: the numbers are corrected each time.
    std::u16string_view Text(std::int32_t mode) {
        kiv::ClampDateTime(numbers, true);
        return formatter.FormatCaption(mode, false, numbers);
    }
    kiv::DisplayFormatter formatter;
    kiv::DateTimeNumbers numbers{13, 5, 9, 11, 5, 2026};
};

struct ShowScreen {
    explicit ShowScreen(bool userMode) {
        world.container.userMode = userMode;
        control.InitProperties();
        if (userMode) static_cast<void>(control.DataVariableName(0));  // the framework is there from now on
        world.framework.TakeCalls();
    }
    kiv::headless::HeadlessShowPlatform world;
    kiv::headless::NoShowEvents host;
    kiv::ShowControl control{world.Platform(), host};
};

struct SetScreen {
    explicit SetScreen(bool userMode) {
        world.container.userMode = userMode;
        control.InitProperties();
        world.framework.TakeCalls();
    }
    kiv::headless::HeadlessPlatform world;
    kiv::headless::NoSetEvents host;
    kiv::SetControl control{world.Platform(), host};
};

/// Every key, whatever its value.
template <class Control>
kiv::MemoryBag FullBag(const Control& control) {
    kiv::MemoryBag bag(true);
    control.WriteProperties(bag);
    return bag;
}

inline kiv::MemoryBag Decoded(std::span<const std::byte> stream) {
    return kiv::DecodeProperties(stream.subspan(kiv::PropertyStreamHeaderSize),
                                 [](const kiv::FontTraits& traits) { return kiv::headless::MakeFont(traits); });
}

}  // namespace bench
