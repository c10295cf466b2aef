#include "screenhost/DeviceLink.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "comkit/Dispatch.h"
#include "screenhost/ErrorText.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr const wchar_t* DeviceProgId = L"VexaSimulator.Device";
constexpr double SecondsPerDay = 86400.0;

// In the order of DeviceSwitch.
constexpr std::array<const wchar_t*, DeviceSwitches> SwitchMembers{L"ClockPaused", L"Offline", L"ResponseTime",
                                                                   L"RefuseWrites"};
constexpr long SlowMilliseconds = 1000;

long NumberOf(const comkit::Variant& value) {
    return value.Type() == VT_I4 ? value.Get().lVal : 0;
}

std::string TextOf(const comkit::Variant& value) {
    return value.Type() == VT_BSTR ? Narrow(value.Get().bstrVal) : std::string();
}

/// Which variable an element is bound to is asked and told with every value.
HostLog::Weight WeightOf(const std::string& line) {
    const bool isBinding = line.starts_with("read definition") || line.starts_with("write definition");
    const bool hasFailed = line.find(" failed: ") != std::string::npos;
    return isBinding && !hasFailed ? HostLog::Weight::Detail : HostLog::Weight::Plain;
}

}  // namespace

std::optional<CivilDateTime> CivilFromOle(double days) {
    // The day part counts away from zero, the time part always forward: halves are rounded to the second by hand,
    // because the system truncates.
    const double whole = std::trunc(days);
    const double seconds = std::round(std::fabs(days - whole) * SecondsPerDay);
    const bool nextDay = seconds >= SecondsPerDay;
    SYSTEMTIME st{};
    if (!VariantTimeToSystemTime(whole + (nextDay ? 1 : 0), &st)) return std::nullopt;
    const int rest = nextDay ? 0 : static_cast<int>(seconds);
    return CivilDateTime{{st.wYear, st.wMonth, st.wDay}, {rest / 3600, rest / 60 % 60, rest % 60}};
}

double OleFromCivil(const CivilDateTime& value) {
    SYSTEMTIME st{};
    st.wYear = static_cast<WORD>(value.date.year);
    st.wMonth = static_cast<WORD>(value.date.month);
    st.wDay = static_cast<WORD>(value.date.day);
    st.wHour = static_cast<WORD>(value.time.hour);
    st.wMinute = static_cast<WORD>(value.time.minute);
    st.wSecond = static_cast<WORD>(value.time.second);
    double days = 0;
    if (!SystemTimeToVariantTime(&st, &days)) throw TextError("the date is out of range");
    return days;
}

std::string Describe(const CivilDateTime& value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", value.date.year, value.date.month,
                  value.date.day, value.time.hour, value.time.minute, value.time.second);
    return text.data();
}

double SecondsBetween(const CivilDateTime& earlier, const CivilDateTime& later) {
    return std::round((OleFromCivil(later) - OleFromCivil(earlier)) * SecondsPerDay);
}

void DeviceLink::Connect() noexcept {
    if (m_device) return;
    CLSID clsid{};
    if (FAILED(CLSIDFromProgID(DeviceProgId, &clsid))) return;
    CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDispatch), m_device.PutVoid());
    m_linesSeen = 0;
}

IDispatch& DeviceLink::Device() const {
    if (!m_device) throw TextError("there is no simulated device (VexaSimulator is not registered)");
    return *m_device;
}

double DeviceLink::Now() const {
    return Telling("the device's clock", [&] {
        const comkit::Variant now = comkit::Call(Device(), L"Now");
        if (now.Type() != VT_DATE) throw TextError("the device's clock gives no date");
        return now.Get().date;
    });
}

void DeviceLink::SetNow(double days) {
    Telling("the device's clock", [&] {
        const comkit::Variant value = comkit::Variant::Date(days);
        IDispatch& device = Device();
        comkit::InvokeWith(device, comkit::DispIdOf(device, L"Now"), DISPATCH_PROPERTYPUT, std::array{value.Get()});
    });
}

std::string DeviceLink::Value(const std::string& variable) const {
    return Telling(variable, [&] { return TextOf(comkit::Call(Device(), L"Value", Wide(variable).c_str())); });
}

void DeviceLink::SetValue(const std::string& variable, const std::string& text) {
    Telling(variable, [&] { comkit::Put(Device(), L"Value", Wide(variable).c_str(), Wide(text).c_str()); });
}

std::vector<DeviceVariable> DeviceLink::Variables() const {
    return Telling("the device's variables", [&] {
        std::vector<DeviceVariable> result;
        const long count = NumberOf(comkit::Call(Device(), L"VariableCount"));
        for (long i = 0; i < count; ++i)
            result.push_back({TextOf(comkit::Call(Device(), L"VariableName", i)),
                              NumberOf(comkit::Call(Device(), L"VariableType", i))});
        return result;
    });
}

bool DeviceLink::Switch(DeviceSwitch which) const {
    return Telling("the device", [&] {
        const comkit::Variant value = comkit::Call(Device(), SwitchMembers.at(static_cast<std::size_t>(which)));
        return value.Type() == VT_BOOL ? value.Get().boolVal != VARIANT_FALSE : NumberOf(value) != 0;
    });
}

void DeviceLink::SetSwitch(DeviceSwitch which, bool on) {
    Telling("the device", [&] {
        const wchar_t* const member = SwitchMembers.at(static_cast<std::size_t>(which));
        if (which == DeviceSwitch::Slow)
            comkit::Put(Device(), member, on ? SlowMilliseconds : 0L);
        else
            comkit::Put(Device(), member, on);
    });
}

void DeviceLink::Refresh() {
    Telling("the device", [&] { comkit::Call(Device(), L"Refresh"); });
}

void DeviceLink::CollectLog(HostLog& log) {
    if (!m_device) return;
    try {
        const long lines = NumberOf(comkit::Call(*m_device, L"LogCount"));
        if (lines < m_linesSeen) m_linesSeen = 0;  // somebody cleared it
        for (; m_linesSeen < lines; ++m_linesSeen) {
            const long number = m_linesSeen;
            try {
                const std::string line = TextOf(comkit::Call(*m_device, L"LogLine", number));
                log.Add("device", line, WeightOf(line));
            } catch (const comkit::ComError&) {
                log.Add("device", "(a line of the device's log is no longer kept)");
            }
        }
    } catch (const comkit::ComError& error) {
        log.Add("error", "the device's log cannot be read: " + ErrorText(error));
        m_device.Reset();
    }
}

}  // namespace screenhost
