// A technician's visit with the portable code alone: the set control over an in-memory screen, bound to the simulated
// device. Prints what happens; status 0 only if the device's clock ended where the technician set it.
#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <string>
#include <string_view>

#include "common/MemoryBag.h"
#include "headless/HeadlessPlatform.h"
#include "headless/SimulatedFramework.h"
#include "setcontrol/SetControl.h"
#include "simulator/DeviceModel.h"
#include "simulator/FrameworkSimulation.h"

namespace {

using namespace kiv;
using namespace std::chrono_literals;

constexpr DateTime DeviceStart{{2001, 4, 30}, {23, 41, 0}};
constexpr DateTime Chosen{{2001, 7, 4}, {16, 45, 30}};

std::string Narrow(std::u16string_view text) {
    std::string narrow;
    for (const char16_t unit : text) narrow.push_back(unit < 128 ? static_cast<char>(unit) : '?');
    return narrow;
}

std::string Text(const DateTime& value) {
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", value.date.year, value.date.month, value.date.day,
                  value.time.hour, value.time.minute, value.time.second);
    return text;
}

void Say(const std::string& line) {
    std::printf("%s\n", line.c_str());
}

vexa::DeviceTime ToDevice(const DateTime& value) {
    const std::chrono::year_month_day date{std::chrono::year(value.date.year),
                                           std::chrono::month(static_cast<unsigned>(value.date.month)),
                                           std::chrono::day(static_cast<unsigned>(value.date.day))};
    return std::chrono::local_days(date) + std::chrono::hours(value.time.hour) +
           std::chrono::minutes(value.time.minute) + std::chrono::seconds(value.time.second);
}

DateTime FromDevice(vexa::DeviceTime time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const auto seconds = static_cast<int>((time - day).count());
    return {{static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
             static_cast<int>(static_cast<unsigned>(date.day()))},
            {seconds / 3600, seconds / 60 % 60, seconds % 60}};
}

/// The screen's host: asked for the device's date, it looks at the device.
class Host final : public SetControlEvents {
public:
    explicit Host(const vexa::DeviceModel& device) : m_device(device) {}
    void Click() override { Say("  event Click"); }
    void DblClick() override { Say("  event DblClick"); }
    void KeyUp(std::int16_t& /*keyCode*/, std::int16_t& /*shift*/) override {}
    void KeyPress(std::int16_t& /*keyAscii*/) override {}
    void KeyDown(std::int16_t& /*keyCode*/, std::int16_t& /*shift*/) override {}
    void MouseDown(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void MouseMove(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void MouseUp(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void GetDeviceDateTime(Value& dtNow, bool& bEnableDST) override {
        const DateTime now = FromDevice(m_device.Now());
        dtNow = OleDate{ToOleDate(now)};
        bEnableDST = false;
        Say("  event GetDeviceDateTime, answered " + Text(now));
    }

private:
    const vexa::DeviceModel& m_device;
};

/// Slots 0 and 1 are the clock's configuration, 2 to 7 its running time, 8 to 13 the values by which it is set.
MemoryBag Screen() {
    MemoryBag bag;
    int slot = 0;
    for (const vexa::VariableInfo& variable : vexa::DeviceVariables()) {
        const std::string digits = std::to_string(slot++);
        const std::u16string number(digits.begin(), digits.end());
        bag.Put(u"DataLMObject" + number, std::int32_t{1});
        bag.Put(u"DataVarName" + number, std::u16string(variable.name));
        bag.Put(u"DataElemPath" + number, std::u16string(variable.path));
    }
    bag.Put(u"Caption", std::u16string(u"Device Clock"));
    bag.Put(u"ShowSeconds", true);
    return bag;
}

class Visit {
public:
    bool Play();

private:
    void ShowTraffic();
    void CountTraffic();
    void ShowControl(const std::string& what);
    bool Check(bool holds, const std::string& what);
    bool Edit();

    std::chrono::milliseconds m_elapsed{0};
    vexa::DeviceModel m_device{[this] { return m_elapsed; }, ToDevice(DeviceStart)};
    vexa::FrameworkSimulation m_simulation{m_device};
    std::size_t m_shownLines = 0;

    headless::HeadlessPlatform m_world;
    headless::SimulatedFramework m_framework{m_simulation};
    ControlPlatform m_platform{m_world.surface, m_world.container, m_world.clock, m_world.timeZone,
                               m_world.timers,  m_world.settings,  m_framework,   m_world.help};
    Host m_host{m_device};
    SetControl m_control{m_platform, m_host};
};

void Visit::ShowTraffic() {
    const vexa::TrafficLog& log = m_simulation.Log();
    for (; m_shownLines < log.Count(); ++m_shownLines) {
        const std::u16string* line = log.Line(m_shownLines);
        if (line && !line->starts_with(u"read ")) Say("  " + Narrow(*line));
    }
}

void Visit::CountTraffic() {
    const std::size_t count = m_simulation.Log().Count();
    Say("  the control binds its elements, in " + std::to_string(count - m_shownLines) + " calls to the framework");
    m_shownLines = count;
}

void Visit::ShowControl(const std::string& what) {
    const DateTimeInfo info = m_control.GetDateTimeInfo();
    Say(what + ": the control shows " + Text({info.date, info.time.time}) +
        (info.enableDst ? ", daylight saving" : ", no daylight saving"));
}

bool Visit::Check(bool holds, const std::string& what) {
    if (!holds) Say("WRONG: " + what);
    return holds;
}

bool Visit::Edit() {
    auto& box = m_world.surface.Find<headless::HeadlessCheckBox>(u"chkUseSystem");
    auto& calendar = m_world.surface.Find<headless::HeadlessCalendar>(u"mvDate");
    auto& field = m_world.surface.Find<headless::HeadlessTimeField>(u"dtpTimeSP");
    auto& daylight = m_world.surface.Find<headless::HeadlessCheckBox>(u"chkUseDaylightSavings");

    Say("The technician un-checks \"" + Narrow(box.Caption()) + "\"");
    bool good = Check(box.UserToggles(), "the box cannot be reached");
    Say("picks 4 July 2001, types 16:45:30, asks for daylight saving");
    good = Check(calendar.UserPicks(Chosen.date), "the calendar cannot be reached") && good;
    good = Check(field.UserEnters(Chosen.time), "the time field cannot be reached") && good;
    good = Check(daylight.UserToggles(), "the daylight-saving box cannot be reached") && good;
    // The device's clock runs on; what was edited must not follow it.
    m_elapsed += 2s;
    m_simulation.Refresh();
    ShowTraffic();
    ShowControl("Edited");
    return good;
}

bool Visit::Play() {
    Say("The screen is opened; the device's clock stands at " + Text(FromDevice(m_device.Now())));
    m_control.ReadProperties(Screen());
    m_control.OnShown();
    CountTraffic();

    Say("Values are read from the device");
    m_control.SetDataInUpload(true);
    m_simulation.Refresh();
    ShowTraffic();
    ShowControl("Read");
    const DateTimeInfo read = m_control.GetDateTimeInfo();
    bool good = Check(DateTime{read.date, read.time.time} == DeviceStart, "it is not the device's clock");

    good = Edit() && good;

    Say("The values are written to the device");
    m_control.SetDataInUpload(false);
    ShowTraffic();
    m_elapsed += 1s;
    const DateTime end = FromDevice(m_device.Now());
    Say("The device's clock stands at " + Text(end));
    DateTime expected = Chosen;
    expected.time.second += 1;
    good = Check(end == expected, "it is not what was chosen") && good;
    const std::u16string daylight = m_device.Read({1, u"nciDaylightSaving", u""});
    good = Check(daylight == u"1", "the device does not save daylight") && good;

    m_control.SetDataInUpload(true);
    m_simulation.Refresh();
    ShowControl("Read again");
    return good;
}

}  // namespace

int main() {
    try {
        Visit visit;
        const bool good = visit.Play();
        Say(good ? "The visit is over: the device's clock is set." : "The visit has failed.");
        return good ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "native_visit: %s\n", error.what());
        return 1;
    }
}
