#include "common/FrameworkLink.h"

#include "platform/HostError.h"

namespace kiv {

namespace {

[[noreturn]] void ThrowNotSet() {
    throw HostError(ErrorNumber::ObjectNotSet);
}

}  // namespace

FrameworkLink::FrameworkLink(Framework& framework, std::int16_t elementCount, DeviceValueListener& listener,
                             const Lifeline& lifeline)
    : m_framework(framework), m_iElementCount(elementCount), m_listener(listener), m_lifeline(lifeline) {}

std::shared_ptr<HiddenControl> FrameworkLink::Find() {
    if (m_pHidden || m_bUnavailable) return m_pHidden;
    // Set beforehand, so that a call that comes back here while the hidden control is being made finds no second one.
    m_bUnavailable = true;
    std::shared_ptr<HiddenControl> hidden =
        m_lifeline.CallOut([&] { return m_framework.CreateHiddenControl(m_iElementCount, m_listener); });
    // No longer marked: everything was released while it was being made, and this one is let go too.
    if (!hidden || !m_bUnavailable) return nullptr;
    m_bUnavailable = false;
    m_pHidden = hidden;
    return hidden;
}

std::shared_ptr<HiddenControl> FrameworkLink::Hidden() {
    std::shared_ptr<HiddenControl> hidden = Find();
    if (!hidden) ThrowNotSet();
    return hidden;
}

DataElementPtr FrameworkLink::Element(std::int16_t index) {
    const std::shared_ptr<HiddenControl> hidden = Hidden();
    DataElementPtr element = m_lifeline.CallOut([&] { return hidden->Element(index); });
    if (!element) ThrowNotSet();
    return element;
}

std::unique_ptr<ElementWalk> FrameworkLink::Elements() {
    const std::shared_ptr<HiddenControl> hidden = Hidden();
    std::unique_ptr<ElementWalk> elements = m_lifeline.CallOut([&] { return hidden->Elements(); });
    if (!elements) ThrowNotSet();
    return elements;
}

std::shared_ptr<DataDefinition> FrameworkLink::Definition(const DataElementPtr& element) const {
    std::shared_ptr<DataDefinition> definition = m_lifeline.CallOut([&] { return element->Definition(); });
    if (!definition) ThrowNotSet();
    return definition;
}

DataElementBinding FrameworkLink::Read(const DataElementPtr& element) const {
    const auto definition = Definition(element);
    return m_lifeline.CallOut([&] { return definition->ReadDefinition(); });
}

void FrameworkLink::Write(const DataElementPtr& element, const DataElementBinding& binding) const {
    const auto definition = Definition(element);
    m_lifeline.CallOut([&] { definition->WriteDefinition(binding); });
}

void FrameworkLink::Release() noexcept {
    m_bUnavailable = false;
    // Emptied first: letting go may call back, and must then find nothing.
    const std::shared_ptr<HiddenControl> hidden = std::move(m_pHidden);
}

}  // namespace kiv
