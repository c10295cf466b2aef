// A simulated Vexa device with a clock, in standard C++ only.
//
// The clock runs: it is an offset to an elapsed-time source that the owner injects (milliseconds, monotonic; only
// differences count), so a test steps it by hand. It shows years 100 to 9999 and stops at the end of the last one.
//
// The device's variables live on LM object 1:
//   nciClockFormat, nciDaylightSaving          configuration, 0 or 1, read and written at once
//   nvoHour, nvoMinute, ... nvoYear            the running clock, read only
//   nviSetHour, nviSetMinute, ... nviSetYear   set values, read and written
// Set values are latched. The year sets the device's date together with the month and the day written before it, the
// second sets its time together with the hour and the minute; a part that was not written stays the clock's. What was
// latched is used once. A set of parts that makes no date (30 February) is refused as a whole and forgotten.
//
// Values are decimal text: an optional sign and digits. A value that is not, or is out of the variable's range, is
// refused and changes nothing.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/SimulatorError.h"

namespace vexa {

/// Date and time as the device counts them, without a time zone.
using DeviceTime = std::chrono::local_seconds;

using ElapsedTime = std::function<std::chrono::milliseconds()>;

/// Names one variable: by its name or, where the name is empty or unknown, by its element path. Matched exactly.
struct VariableAddress {
    std::int32_t lmObject = 1;
    std::u16string_view name;
    std::u16string_view path;
};

/// What is known of a variable without asking the device.
struct VariableInfo {
    std::u16string_view name;
    std::u16string_view path;
    std::int32_t dataType = 0;  ///< 0 input, 1 output, 2 configuration
    std::int32_t lowest = 0;
    std::int32_t highest = 0;
};

inline constexpr std::size_t VariableCount = 14;

/// All variables: configuration, running clock, set values; each group in the order hour, ... year.
const std::array<VariableInfo, VariableCount>& DeviceVariables() noexcept;

class DeviceModel {
public:
    DeviceModel(ElapsedTime elapsed, DeviceTime start);

    DeviceTime Now() const;
    /// Throws SimulatorError(BadValue) outside the years 100 to 9999.
    void SetNow(DeviceTime value);

    /// A paused clock stands still; it can be set, and goes on from where it stands.
    bool IsClockPaused() const noexcept { return m_bClockPaused; }
    void SetClockPaused(bool paused);

    /// An offline device fails every read and write. Its clock runs on.
    bool IsOffline() const noexcept { return m_bOffline; }
    void SetOffline(bool offline) noexcept { m_bOffline = offline; }

    /// A device that refuses writes answers every write with BadValue.
    bool RefusesWrites() const noexcept { return m_bRefuseWrites; }
    void SetRefusesWrites(bool refuse) noexcept { m_bRefuseWrites = refuse; }

    /// A slow device answers one read in so many milliseconds; 0 is at once. Whoever asks for values keeps to that.
    std::chrono::milliseconds ResponseTime() const noexcept { return m_responseTime; }
    void SetResponseTime(std::chrono::milliseconds time) noexcept { m_responseTime = time; }
    std::chrono::milliseconds Elapsed() const { return m_elapsed(); }

    /// The value now. Throws SimulatorError (Offline, UnknownVariable).
    std::u16string Read(const VariableAddress& address) const { return Read(address, Now()); }
    /// The value with the clock taken at one instant, for several parts that have to belong together.
    std::u16string Read(const VariableAddress& address, DeviceTime at) const;

    /// The value past all refusals, as whoever stands before the device sees it. Throws UnknownVariable.
    std::u16string Peek(const VariableAddress& address, DeviceTime at) const;

    /// Throws SimulatorError (Offline, UnknownVariable, ReadOnly, BadValue).
    void Write(const VariableAddress& address, std::u16string_view text);

    /// Sets any variable from outside, the running clock's included, as if it had come about on the device itself. Not
    /// stopped by SetOffline or SetRefusesWrites. Throws SimulatorError (UnknownVariable, BadValue).
    void Force(const VariableAddress& address, std::u16string_view text);

private:
    struct SetValue {
        std::optional<std::int32_t> latched;  ///< written and not used yet
        std::int32_t last = 0;                ///< what a reader gets
    };
    using Parts = std::array<std::int32_t, 6>;  ///< hour, minute, second, month, day, year

    void WriteSetValue(std::size_t part, std::int32_t value);
    void ForceClockPart(std::size_t part, std::int32_t value);
    void SetClock(const Parts& parts);
    Parts TakeLatched(std::size_t first, std::size_t count);

    ElapsedTime m_elapsed;
    std::chrono::milliseconds m_atElapsed;  ///< reading of the source at which the clock stood at m_atTime
    DeviceTime m_atTime;
    std::chrono::milliseconds m_responseTime{0};
    bool m_bClockPaused = false;
    bool m_bOffline = false;
    bool m_bRefuseWrites = false;
    std::array<std::int32_t, 2> m_configuration{1, 0};
    std::array<SetValue, 6> m_setValues{};
};

}  // namespace vexa
