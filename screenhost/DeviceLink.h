// The simulated device, where the simulator is there. It is reached late-bound; nothing here fails when it is not.
#pragma once

#include <optional>
#include <string>

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
    void SetOffline(bool offline);
    void Refresh();

    /// Copies what is new in the device's log.
    void CollectLog(HostLog& log);

private:
    IDispatch& Device() const;
    comkit::ComPtr<IDispatch> m_device;
    long m_linesSeen = 0;
};

}  // namespace screenhost
