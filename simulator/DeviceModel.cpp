#include "simulator/DeviceModel.h"

#include <algorithm>
#include <utility>

#include "simulator/DecimalText.h"

namespace vexa {

namespace {

using Reason = SimulatorError::Reason;

// Positions in the table of variables: two of configuration, six of the running clock, six set values.
constexpr std::size_t FirstClockPart = 2;
constexpr std::size_t FirstSetValue = 8;

// Parts of the clock, in the order of the table.
enum Part : std::size_t { Hour, Minute, Second, Month, Day, Year };
constexpr std::size_t PartsOfTime = 3;
constexpr std::size_t PartsOfDate = 3;

constexpr std::int32_t LowestYear = 100;
constexpr std::int32_t HighestYear = 9999;

constexpr std::array<VariableInfo, VariableCount> Variables{{
    {u"nciClockFormat", u"Clock.Format", 2, 0, 1},
    {u"nciDaylightSaving", u"Clock.DaylightSaving", 2, 0, 1},
    {u"nvoHour", u"Clock.Hour", 1, 0, 23},
    {u"nvoMinute", u"Clock.Minute", 1, 0, 59},
    {u"nvoSecond", u"Clock.Second", 1, 0, 59},
    {u"nvoMonth", u"Clock.Month", 1, 1, 12},
    {u"nvoDay", u"Clock.Day", 1, 1, 31},
    {u"nvoYear", u"Clock.Year", 1, LowestYear, HighestYear},
    {u"nviSetHour", u"SetClock.Hour", 0, 0, 23},
    {u"nviSetMinute", u"SetClock.Minute", 0, 0, 59},
    {u"nviSetSecond", u"SetClock.Second", 0, 0, 59},
    {u"nviSetMonth", u"SetClock.Month", 0, 1, 12},
    {u"nviSetDay", u"SetClock.Day", 0, 1, 31},
    {u"nviSetYear", u"SetClock.Year", 0, LowestYear, HighestYear},
}};

constexpr DeviceTime EndOfClock = std::chrono::local_days(std::chrono::year(HighestYear) / 12 / 31) +
                                  std::chrono::hours(24) - std::chrono::seconds(1);
constexpr DeviceTime StartOfClock = std::chrono::local_days(std::chrono::year(LowestYear) / 1 / 1);

std::size_t Find(const VariableAddress& address) {
    constexpr std::int32_t ClockObject = 1;
    const auto matching = [](std::u16string_view VariableInfo::*field, std::u16string_view text) {
        return std::find_if(Variables.begin(), Variables.end(),
                            [&](const VariableInfo& v) { return v.*field == text; });
    };
    auto found = matching(&VariableInfo::name, address.name);
    if (found == Variables.end()) found = matching(&VariableInfo::path, address.path);
    if (address.lmObject != ClockObject || found == Variables.end())
        throw SimulatorError(Reason::UnknownVariable, u"the device has no such variable");
    return static_cast<std::size_t>(found - Variables.begin());
}

std::int32_t CheckedValue(std::size_t variable, std::u16string_view text) {
    const auto value = FromDecimal(text);
    if (!value) throw SimulatorError(Reason::BadValue, u"the value is not a whole number");
    if (*value < Variables[variable].lowest || *value > Variables[variable].highest)
        throw SimulatorError(Reason::BadValue, u"the value is out of range");
    return *value;
}

std::array<std::int32_t, 6> PartsOf(DeviceTime at) {
    const auto days = std::chrono::floor<std::chrono::days>(at);
    const std::chrono::year_month_day date(days);
    const std::chrono::hh_mm_ss time(at - days);
    return {static_cast<std::int32_t>(time.hours().count()),
            static_cast<std::int32_t>(time.minutes().count()),
            static_cast<std::int32_t>(time.seconds().count()),
            static_cast<std::int32_t>(static_cast<unsigned>(date.month())),
            static_cast<std::int32_t>(static_cast<unsigned>(date.day())),
            static_cast<std::int32_t>(static_cast<int>(date.year()))};
}

}  // namespace

const std::array<VariableInfo, VariableCount>& DeviceVariables() noexcept {
    return Variables;
}

DeviceModel::DeviceModel(ElapsedTime elapsed, DeviceTime start) : m_elapsed(std::move(elapsed)) {
    SetNow(start);
}

DeviceTime DeviceModel::Now() const {
    if (m_bClockPaused) return m_atTime;
    const auto passed = std::chrono::floor<std::chrono::seconds>(m_elapsed() - m_atElapsed);
    return std::min(m_atTime + passed, EndOfClock);
}

void DeviceModel::SetNow(DeviceTime value) {
    if (value < StartOfClock || value > EndOfClock)
        throw SimulatorError(Reason::BadValue, u"the clock holds the years 100 to 9999");
    m_atElapsed = m_elapsed();
    m_atTime = value;
}

void DeviceModel::SetClockPaused(bool paused) {
    SetNow(Now());
    m_bClockPaused = paused;
}

std::u16string DeviceModel::Read(const VariableAddress& address, DeviceTime at) const {
    if (m_bOffline) throw SimulatorError(Reason::Offline, u"the device is offline");
    return Peek(address, at);
}

std::u16string DeviceModel::Peek(const VariableAddress& address, DeviceTime at) const {
    const std::size_t variable = Find(address);
    if (variable < FirstClockPart) return ToDecimal(m_configuration[variable]);
    if (variable < FirstSetValue) return ToDecimal(PartsOf(at)[variable - FirstClockPart]);
    return ToDecimal(m_setValues[variable - FirstSetValue].last);
}

void DeviceModel::Write(const VariableAddress& address, std::u16string_view text) {
    if (m_bOffline) throw SimulatorError(Reason::Offline, u"the device is offline");
    const std::size_t variable = Find(address);
    if (m_bRefuseWrites) throw SimulatorError(Reason::BadValue, u"the device refuses all values");
    if (variable >= FirstClockPart && variable < FirstSetValue)
        throw SimulatorError(Reason::ReadOnly, u"the variable is read only");
    const std::int32_t value = CheckedValue(variable, text);
    if (variable < FirstClockPart)
        m_configuration[variable] = value;
    else
        WriteSetValue(variable - FirstSetValue, value);
}

void DeviceModel::Force(const VariableAddress& address, std::u16string_view text) {
    const std::size_t variable = Find(address);
    const std::int32_t value = CheckedValue(variable, text);
    if (variable < FirstClockPart)
        m_configuration[variable] = value;
    else if (variable < FirstSetValue)
        ForceClockPart(variable - FirstClockPart, value);
    else
        WriteSetValue(variable - FirstSetValue, value);
}

void DeviceModel::WriteSetValue(std::size_t part, std::int32_t value) {
    m_setValues[part] = {value, value};
    if (part == Year)
        SetClock(TakeLatched(Month, PartsOfDate));
    else if (part == Second)
        SetClock(TakeLatched(Hour, PartsOfTime));
}

void DeviceModel::ForceClockPart(std::size_t part, std::int32_t value) {
    Parts parts = PartsOf(Now());
    parts[part] = value;
    SetClock(parts);
}

/// The clock's present parts with those of the latches put over them; the latches are empty afterwards.
DeviceModel::Parts DeviceModel::TakeLatched(std::size_t first, std::size_t count) {
    Parts parts = PartsOf(Now());
    for (std::size_t part = first; part < first + count; ++part)
        parts[part] = std::exchange(m_setValues[part].latched, std::nullopt).value_or(parts[part]);
    return parts;
}

void DeviceModel::SetClock(const Parts& parts) {
    const std::chrono::year_month_day date(std::chrono::year(parts[Year]),
                                           std::chrono::month(static_cast<unsigned>(parts[Month])),
                                           std::chrono::day(static_cast<unsigned>(parts[Day])));
    if (!date.ok()) throw SimulatorError(Reason::BadValue, u"the month has no such day");
    SetNow(std::chrono::local_days(date) + std::chrono::hours(parts[Hour]) + std::chrono::minutes(parts[Minute]) +
           std::chrono::seconds(parts[Second]));
}

}  // namespace vexa
