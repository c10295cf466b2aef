// The simulated device, where the simulator is there. It is reached late-bound; nothing here fails when it is not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "comkit/ComPtr.h"
#include "screenhost/HostLog.h"
#include "screenhost/ScriptFile.h"

namespace screenhost {

/// A date and time without time zone, as both controls and devices count them.
struct CivilDateTime {
    CivilDate date;
    TimeOfDay time;
    friend bool operator==(const CivilDateTime&, const CivilDateTime&) = default;
};

/// Rounded to the second. Nothing when it is no date.
std::optional<CivilDateTime> CivilFromOle(double days);
double OleFromCivil(const CivilDateTime& value);
/// "2026-11-21 14:05:09"
std::string Describe(const CivilDateTime& value);
/// later - earlier.
double SecondsBetween(const CivilDateTime& earlier, const CivilDateTime& later);

struct DeviceVariable {
    std::string name;
    long type;  ///< 0 input, 1 output, 2 configuration
};

/// What may be wrong with a device.
enum class DeviceSwitch : std::uint8_t { ClockPaused, Offline, Slow, RejectsWrites };
inline constexpr std::size_t DeviceSwitches = 4;

class DeviceLink {
public:
    /// Looks for the simulator; may be called again once a server was added.
    void Connect() noexcept;
    void Disconnect() noexcept { m_device.Reset(); }
    bool IsConnected() const noexcept { return static_cast<bool>(m_device); }

    // These throw TextError where there is no simulator or it refuses.
    double Now() const;
    void SetNow(double days);
    std::string Value(const std::string& variable) const;
    void SetValue(const std::string& variable, const std::string& text);
    std::vector<DeviceVariable> Variables() const;
    bool Switch(DeviceSwitch which) const;
    void SetSwitch(DeviceSwitch which, bool on);
    void Refresh();

    /// Copies what is new in the device's log.
    void CollectLog(HostLog& log);

private:
    IDispatch& Device() const;
    comkit::ComPtr<IDispatch> m_device;
    long m_linesSeen = 0;
};

}  // namespace screenhost
