#include "simulator/FrameworkSimulation.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "simulator/DecimalText.h"

namespace vexa {

namespace {

using Reason = SimulatorError::Reason;

VariableAddress AddressOf(const ElementDefinition& definition) noexcept {
    return {definition.lmObject, definition.variableName, definition.elementPath};
}

std::u16string Describe(const ElementDefinition& definition) {
    return u"LM " + ToDecimal(definition.lmObject) + u", type " + ToDecimal(definition.dataType) + u", " +
           definition.variableName + u" [" + definition.elementPath + u"]";
}

const std::u16string& NameOf(const ElementDefinition& definition) noexcept {
    return definition.variableName.empty() ? definition.elementPath : definition.variableName;
}

/// Line breaks in what a control sends would break the log's lines.
std::u16string OneLine(std::u16string text) {
    std::replace_if(
        text.begin(), text.end(), [](char16_t c) { return c < u' '; }, u' ');
    return text;
}

/// Runs a call and logs it, with the reason when it fails.
template <class Body>
void Logged(TrafficLog& log, std::u16string line, Body&& body) {
    line = OneLine(std::move(line));
    try {
        body();
    } catch (const SimulatorError& error) {
        log.Add(line + u" failed: " + error.Text());
        throw;
    }
    log.Add(std::move(line));
}

std::u16string Label(const char16_t* call, std::int16_t index) {
    return call + (u' ' + ToDecimal(index));
}

std::optional<std::u16string> TryRead(const DeviceModel& device, const ElementDefinition& definition, DeviceTime at) {
    try {
        return device.Read(AddressOf(definition), at);
    } catch (const SimulatorError&) {
        return std::nullopt;
    }
}

/// Sets a flag for as long as it lives.
class Polling {
public:
    explicit Polling(bool& flag) noexcept : m_flag(flag) { flag = true; }
    Polling(const Polling&) = delete;
    Polling& operator=(const Polling&) = delete;
    ~Polling() { m_flag = false; }

private:
    bool& m_flag;
};

}  // namespace

bool HiddenControlModel::Element::IsReadable() const noexcept {
    return !writeEnabled && !NameOf(definition).empty();
}

HiddenControlModel::HiddenControlModel(FrameworkSimulation& framework, ValueHandler handler)
    : m_framework(framework), m_handler(std::move(handler)) {}

void HiddenControlModel::SetElementCount(std::int16_t count) {
    m_framework.CheckInjectedFailure();
    if (count < 0) throw SimulatorError(Reason::BadValue, u"a hidden control cannot have less than no elements");
    m_elements.resize(static_cast<std::size_t>(count));
}

void HiddenControlModel::CheckIndex(std::int16_t index) const {
    m_framework.CheckInjectedFailure();
    if (index < 0 || index >= ElementCount())
        throw SimulatorError(Reason::NoSuchElement, u"the hidden control has no such element");
}

HiddenControlModel::Element& HiddenControlModel::At(std::int16_t index) {
    CheckIndex(index);
    return m_elements[static_cast<std::size_t>(index)];
}

/// For the log, which shows calls with a bad index too.
const ElementDefinition& HiddenControlModel::DefinitionOrNone(std::int16_t index) const noexcept {
    static const ElementDefinition none;
    return index >= 0 && index < ElementCount() ? m_elements[static_cast<std::size_t>(index)].definition : none;
}

ElementDefinition HiddenControlModel::ReadDefinition(std::int16_t index) {
    ElementDefinition definition = DefinitionOrNone(index);
    Logged(m_framework.Log(), Label(u"read definition", index) + u": " + Describe(definition),
           [&] { CheckIndex(index); });
    return definition;
}

void HiddenControlModel::WriteDefinition(std::int16_t index, ElementDefinition definition) {
    Logged(m_framework.Log(), Label(u"write definition", index) + u": " + Describe(definition), [&] {
        Element& element = At(index);
        element.definition = std::move(definition);
        element.due = true;
        ++element.binding;
    });
}

void HiddenControlModel::WriteValue(std::int16_t index, std::u16string_view text, std::u16string_view display,
                                    std::u16string_view use) {
    std::u16string line = Label(u"write value", index) + u": " + NameOf(DefinitionOrNone(index)) + u" = ";
    line.append(text).append(u" (").append(display).append(u", ").append(use).append(u")");
    Logged(m_framework.Log(), std::move(line), [&] {
        constexpr std::int32_t Input = 0;
        const Element& element = At(index);
        if (element.definition.dataType == Input && !element.writeEnabled)
            throw SimulatorError(Reason::NotWriteEnabled, u"the element is not enabled for writing");
        m_framework.Device().Write(AddressOf(element.definition), text);
    });
}

void HiddenControlModel::SetWriteEnabled(std::int16_t index, bool enabled) {
    Logged(m_framework.Log(), Label(u"write-enable", index) + (enabled ? u": True" : u": False"), [&] {
        Element& element = At(index);
        element.writeEnabled = enabled;
        element.due = !enabled;
        ++element.binding;
    });
}

void HiddenControlModel::MakeDue() noexcept {
    for (Element& element : m_elements) element.due = true;
}

/// Nothing where there is nothing to deliver.
std::optional<std::u16string> HiddenControlModel::DueValue(const Element& element, DeviceTime at) const {
    if (!element.IsReadable()) return std::nullopt;
    auto value = TryRead(m_framework.Device(), element.definition, at);
    return value && (element.due || *value != element.delivered) ? value : std::nullopt;
}

HiddenControlModel::QueuedValue HiddenControlModel::Take(std::size_t index, std::u16string value) {
    Element& element = m_elements[index];
    element.due = false;
    element.delivered = value;
    return {static_cast<std::int16_t>(index), element.binding, std::move(value)};
}

std::vector<HiddenControlModel::QueuedValue> HiddenControlModel::CollectDue(DeviceTime at) {
    std::vector<QueuedValue> queue;
    for (std::size_t i = 0; i < m_elements.size(); ++i)
        if (auto value = DueValue(m_elements[i], at)) queue.push_back(Take(i, std::move(*value)));
    return queue;
}

void HiddenControlModel::Deliver(const QueuedValue& queued) {
    const auto index = static_cast<std::size_t>(queued.index);
    // A handler of an earlier value may have closed the control, or bound the element to something else.
    if (!m_handler || index >= m_elements.size() || m_elements[index].binding != queued.binding) return;
    m_framework.Log().Add(
        OneLine(Label(u"value", queued.index) + u": " + NameOf(m_elements[index].definition) + u" = " + queued.value));
    const ValueHandler handler = m_handler;
    handler(queued.index, queued.value);
}

std::shared_ptr<HiddenControlModel> FrameworkSimulation::CreateHiddenControl(ValueHandler handler) {
    CheckInjectedFailure();
    ForgetEndedControls();
    auto control = std::make_shared<HiddenControlModel>(*this, std::move(handler));
    m_controls.push_back(control);
    return control;
}

/// A weak reference keeps the memory of what it refers to.
void FrameworkSimulation::ForgetEndedControls() noexcept {
    std::erase_if(m_controls, [](const auto& control) { return control.expired(); });
}

std::vector<std::shared_ptr<HiddenControlModel>> FrameworkSimulation::LivingControls() {
    ForgetEndedControls();
    std::vector<std::shared_ptr<HiddenControlModel>> living;
    living.reserve(m_controls.size());
    for (const auto& control : m_controls) living.push_back(control.lock());
    return living;
}

void FrameworkSimulation::Poll() {
    if (m_bPolling) return;
    const Polling polling(m_bPolling);
    const DeviceTime at = m_device.Now();
    if (m_device.ResponseTime() > std::chrono::milliseconds(0)) return PollSlowly(at);
    for (const auto& control : LivingControls())
        for (const auto& queued : control->CollectDue(at)) control->Deliver(queued);
}

void FrameworkSimulation::PollSlowly(DeviceTime at) {
    const auto elapsed = m_device.Elapsed();
    if (elapsed - m_lastAnswer < m_device.ResponseTime()) return;
    std::shared_ptr<HiddenControlModel> next;
    std::size_t index = 0;
    std::u16string value;
    for (const auto& control : LivingControls()) {
        for (std::size_t i = 0; i < control->m_elements.size(); ++i) {
            if (next && control->m_elements[i].turn >= next->m_elements[index].turn) continue;
            auto due = control->DueValue(control->m_elements[i], at);
            if (!due) continue;
            next = control;
            index = i;
            value = std::move(*due);
        }
    }
    if (!next) return;
    m_lastAnswer = elapsed;
    next->m_elements[index].turn = ++m_turn;
    next->Deliver(next->Take(index, std::move(value)));
}

void FrameworkSimulation::Refresh() {
    for (const auto& control : LivingControls()) control->MakeDue();
    Poll();
}

void FrameworkSimulation::CheckInjectedFailure() {
    if (m_failNext == 0) return;
    if (m_failNext > 0) --m_failNext;
    throw SimulatorError(Reason::InjectedFailure, u"a failure was asked for");
}

}  // namespace vexa
