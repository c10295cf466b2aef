#include "benchmarks/native/HotPaths.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "benchmarks/native/Worlds.h"
#include "common/PropertyStream.h"

namespace bench {

namespace {

using namespace kiv;

std::function<void()> BuildText(std::int32_t mode) {
    const auto formatter = std::make_shared<ReadyFormatter>();
    return [formatter, mode, second = 0]() mutable {
        second = (second + 1) % 60;
        formatter->numbers.second = second;
        formatter->numbers.day = 1 + second % 28;
        Keep(formatter->Text(mode).size());
    };
}

std::function<void()> BuildDate() {
    return BuildText(sdtShowDateOnly);
}

std::function<void()> BuildTime() {
    return BuildText(sdtShowTimeOnly);
}

std::function<void()> TakeSameValue() {
    const auto screen = std::make_shared<ShowScreen>(true);
    return [screen] { screen->world.framework.Deliver(5, u"5"); };
}

std::function<void()> TakeOtherValue() {
    const auto screen = std::make_shared<ShowScreen>(true);
    return [screen, odd = false]() mutable {
        odd = !odd;
        screen->world.framework.Deliver(5, odd ? u"5" : u"6");
    };
}

/// With a framework that is not there, as on a screen of many.
std::function<void()> LiveShowControl() {
    const auto saved = std::make_shared<MemoryBag>();
    return [saved] {
        ShowScreen screen(false);
        screen.control.ReadProperties(*saved);
    };
}

template <class Screen>
std::function<void()> LoadStream() {
    const auto screen = std::make_shared<Screen>(false);
    const auto stream = std::make_shared<std::vector<std::byte>>(EncodeProperties(FullBag(screen->control)));
    return [screen, stream] { screen->control.ReadProperties(Decoded(*stream)); };
}

template <class Screen>
std::function<void()> SaveStream() {
    const auto screen = std::make_shared<Screen>(false);
    return [screen] { Keep(EncodeProperties(FullBag(screen->control)).size()); };
}

constexpr std::array Paths{
    HotPath{"the text of a date", &BuildDate},
    HotPath{"the text of a time", &BuildTime},
    HotPath{"a value arrives, the text stays", &TakeSameValue},
    HotPath{"a value arrives, the text changes", &TakeOtherValue},
    HotPath{"a show control made, loaded, destroyed", &LiveShowControl},
    HotPath{"a show control loaded from a stream", &LoadStream<ShowScreen>},
    HotPath{"a show control saved to a stream", &SaveStream<ShowScreen>},
    HotPath{"a set control loaded from a stream", &LoadStream<SetScreen>},
    HotPath{"a set control saved to a stream", &SaveStream<SetScreen>},
};

}  // namespace

std::span<const HotPath> HotPaths() {
    return Paths;
}

}  // namespace bench
