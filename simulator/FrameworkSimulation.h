// The framework's side of the controls' data elements, over a simulated device, in standard C++ only.
//
// A hidden control has data elements, each with a definition (which device variable it stands for) and a write-enable
// flag. An element is bound for reading while its definition names something and writing is not enabled. Its value is
// delivered when it becomes bound for reading (each WriteDefinition and each SetWriteEnabled(false) counts as that),
// and whenever it differs from the last one delivered.
//
// Delivery happens only inside Poll and Refresh, never inside a call that a control makes: there is no re-entrance. A
// value handler may call anything here, close its hidden control included; a Poll inside a handler does nothing.
//
// A slow device (DeviceModel::ResponseTime) is asked for one value at a time, always the one that was delivered longest
// ago, so that a running second holds nothing else up. What is written reaches it at once.
//
// Everything belongs to one thread. The simulation must outlive its hidden controls.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/DeviceModel.h"
#include "simulator/TrafficLog.h"

namespace vexa {

class FrameworkSimulation;

struct ElementDefinition {
    std::int32_t lmObject = 0;
    std::int32_t dataType = 0;
    std::u16string variableName;
    std::u16string elementPath;
    friend bool operator==(const ElementDefinition&, const ElementDefinition&) = default;
};

/// Must not throw.
using ValueHandler = std::function<void(std::int16_t index, const std::u16string& value)>;

/// The data elements of one hidden control. Every call may throw SimulatorError; an index outside 0..count-1 is
/// NoSuchElement.
class HiddenControlModel {
public:
    HiddenControlModel(FrameworkSimulation& framework, ValueHandler handler);

    std::int16_t ElementCount() const noexcept { return static_cast<std::int16_t>(m_elements.size()); }
    /// Makes or drops elements at the end; BadValue below 0.
    void SetElementCount(std::int16_t count);
    void CheckIndex(std::int16_t index) const;

    ElementDefinition ReadDefinition(std::int16_t index);
    void WriteDefinition(std::int16_t index, ElementDefinition definition);
    /// Writes through the definition to the device. An input variable (data type 0) has to be write-enabled.
    void WriteValue(std::int16_t index, std::u16string_view text, std::u16string_view display, std::u16string_view use);
    void SetWriteEnabled(std::int16_t index, bool enabled);

    /// The owner is gone: nothing is delivered any more, the elements stay readable for who still holds them.
    void Close() noexcept { m_handler = nullptr; }

private:
    friend class FrameworkSimulation;
    struct Element {
        ElementDefinition definition;
        bool writeEnabled = false;
        bool due = false;
        std::uint64_t turn = 0;     ///< when a slow device last answered for it
        std::uint32_t binding = 0;  ///< counts rebindings, so that a queued value of an older one is dropped
        std::u16string delivered;
        bool IsReadable() const noexcept;
    };
    struct QueuedValue {
        std::int16_t index;
        std::uint32_t binding;
        std::u16string value;
    };

    Element& At(std::int16_t index);
    const ElementDefinition& DefinitionOrNone(std::int16_t index) const noexcept;
    void MakeDue() noexcept;
    std::optional<std::u16string> DueValue(const Element& element, DeviceTime at) const;
    QueuedValue Take(std::size_t index, std::u16string value);
    std::vector<QueuedValue> CollectDue(DeviceTime at);
    void Deliver(const QueuedValue& queued);

    FrameworkSimulation& m_framework;
    ValueHandler m_handler;
    std::vector<Element> m_elements;
};

class FrameworkSimulation {
public:
    explicit FrameworkSimulation(DeviceModel& device) : m_device(device) {}
    FrameworkSimulation(const FrameworkSimulation&) = delete;
    FrameworkSimulation& operator=(const FrameworkSimulation&) = delete;

    DeviceModel& Device() noexcept { return m_device; }
    TrafficLog& Log() noexcept { return m_log; }

    /// The simulation keeps no reference: the hidden control ends with its last holder.
    std::shared_ptr<HiddenControlModel> CreateHiddenControl(ValueHandler handler);

    /// Looks at the device once, for all hidden controls, and delivers what is new.
    void Poll();
    /// Delivers the values of all elements bound for reading, new or not. Inside a handler it leaves that to the next
    /// Poll.
    void Refresh();

    /// Calls of the controls that shall fail: the next count, all for -1, none for 0.
    std::int32_t FailNext() const noexcept { return m_failNext; }
    void SetFailNext(std::int32_t count) noexcept { m_failNext = count; }
    /// To be called at the start of every framework call. Throws InjectedFailure while failures are due.
    void CheckInjectedFailure();

private:
    void ForgetEndedControls() noexcept;
    std::vector<std::shared_ptr<HiddenControlModel>> LivingControls();
    void PollSlowly(DeviceTime at);

    DeviceModel& m_device;
    TrafficLog m_log;
    std::vector<std::weak_ptr<HiddenControlModel>> m_controls;
    std::int32_t m_failNext = 0;
    std::chrono::milliseconds m_lastAnswer{0};
    std::uint64_t m_turn = 0;
    bool m_bPolling = false;
};

}  // namespace vexa
