// What a device may send: the bytes are values for the elements of a control, as text, and now and then a setting.
//
// Each step is a byte for the element, one for the length, then the text. Element numbers from 200 on are a caller's
// deeds. Beyond not crashing: the control shows a date and a time that there are, and the device is written to only
// when a caller asked for it, whole.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "common/MemoryBag.h"
#include "fuzz/Require.h"
#include "headless/HeadlessEvents.h"
#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessShowPlatform.h"
#include "setcontrol/SetControl.h"
#include "showcontrol/ShowControl.h"

namespace {

using namespace kiv;

class ShowHost final : public headless::IgnoredInput<ShowControlEvents> {
    void ValueChange() override { ++changes; }

public:
    int changes = 0;
};

MemoryBag BoundBag() {
    MemoryBag bag;
    for (int slot = 0; slot < 14; ++slot) {
        const std::string number = std::to_string(slot);
        bag.Put(u"DataVarName" + std::u16string(number.begin(), number.end()), std::u16string(u"v"));
    }
    bag.Put(u"UsePCDateTime", false);
    bag.Put(u"ShowSeconds", true);
    bag.Put(u"ShowLongDay", true);
    return bag;
}

class Pair {
public:
    Pair() {
        set.ReadProperties(BoundBag());
        show.ReadProperties(BoundBag());
        Clear();
    }
    void Deliver(std::int16_t element, std::u16string_view value) {
        setWorld.framework.Deliver(element, value);
        showWorld.framework.Deliver(element, value);
        Require(Written() == 0);
    }
    void Do(int deed) {
        switch (deed % 6) {
            case 0:
                set.SetDataInUpload(false);
                Require(Written() == 7);  // date, time and flag, or nothing
                break;
            case 1:
                set.SetDataInUpload(true);
                break;
            case 2:
                set.SetUsePCDateTime(!set.UsePCDateTime());
                break;
            case 3:
                setWorld.timers.Fire();
                break;
            case 4:
                show.SetShowCentury(!show.ShowCentury());
                break;
            default:
                show.SetUpperCase(!show.UpperCase());
                break;
        }
        Clear();
    }
    void Check() const {
        const DateTimeInfo info = set.GetDateTimeInfo();
        Require(IsValidDate(info.date) && IsValidTime(info.time.time));
        Require(!show.Value().empty() && show.Value().size() < 40);
    }

private:
    std::ptrdiff_t Written() const {
        return std::ranges::count_if(setWorld.framework.calls,
                                     [](const std::string& call) { return call.starts_with("value "); });
    }
    void Clear() {
        setWorld.framework.calls.clear();
        showWorld.framework.calls.clear();
        setWorld.container.changes.clear();
        showWorld.container.changes.clear();
    }

    headless::HeadlessPlatform setWorld;
    headless::HeadlessShowPlatform showWorld;
    headless::NoSetEvents setHost;
    ShowHost showHost;
    SetControl set{setWorld.Platform(), setHost};
    ShowControl show{showWorld.Platform(), showHost};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::span<const std::uint8_t> rest(data, size);
    Pair pair;
    while (rest.size() >= 2) {
        const int element = rest[0];
        const std::size_t length = std::min<std::size_t>(rest[1] % 32, rest.size() - 2);
        std::u16string text;
        for (const std::uint8_t byte : rest.subspan(2, length)) text.push_back(static_cast<char16_t>(byte));
        rest = rest.subspan(2 + length);
        constexpr int FirstDeed = 200;
        if (element >= FirstDeed)
            pair.Do(element - FirstDeed);
        else
            pair.Deliver(static_cast<std::int16_t>(element % 10 - 1), text);
        pair.Check();
    }
    return 0;
}
