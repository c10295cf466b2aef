#include "setcontrol/SetControlBindings.h"

#include "common/Attempt.h"

namespace kiv {

SetControlBindings::SetControlBindings(SetControlContext& context, FrameworkLink& framework)
    : m_context(context), m_framework(framework), m_slots(SetSlot::Count, framework, *this) {}

bool SetControlBindings::IsUserMode() const {
    return m_context.State().IsRunning();
}

bool SetControlBindings::IsActive(std::int32_t slot) const {
    if (slot < SetSlot::FirstGet) return true;
    return (slot < SetSlot::FirstSet) == DataInUpload();
}

std::int16_t SetControlBindings::ElementIndexForSlot(std::int32_t slot) const {
    return static_cast<std::int16_t>(slot < SetSlot::FirstSet ? slot : slot - (SetSlot::FirstSet - SetSlot::FirstGet));
}

void SetControlBindings::OnBindingChanged(std::u16string_view key) {
    m_context.Announce(key);
}

void SetControlBindings::SwitchDirection(bool upload) {
    RefreshActiveBindings();
    m_context.State().m_bDataInUpload = upload;
    RebindTimeElements();
}

void SetControlBindings::RefreshActiveBindings() {
    for (std::int32_t element = SetElement::Hour; element <= SetElement::Year; ++element) {
        m_slots.Pull(SlotForTimeElement(element, DataInUpload()));
    }
}

void SetControlBindings::RebindTimeElements() {
    if (!IsUserMode()) return;
    for (std::int16_t element = SetElement::Hour; element <= SetElement::Year; ++element) {
        bool upload = false;
        // Done again where a call into the framework came back and switched the direction meanwhile.
        do {
            upload = DataInUpload();
            Rebind(element, upload);
        } while (upload != DataInUpload());
    }
}

void SetControlBindings::Rebind(std::int16_t element, bool upload) {
    m_slots.Push(SlotForTimeElement(element, upload));
    DataElementPtr dataElement;
    Attempt([&] { dataElement = m_framework.Element(element); });
    if (!dataElement) return;
    Attempt([&] {
        const auto definition = m_framework.Definition(dataElement);
        m_context.Life().CallOut([&] { definition->SetWriteEnabled(!upload); });
    });
}

void SetControlBindings::PushAll() {
    for (std::int32_t slot = 0; slot < SetSlot::FirstGet; ++slot) m_slots.Push(slot);
    if (!DataInUpload()) return RebindTimeElements();
    for (std::int32_t slot = SetSlot::FirstGet; slot < SetSlot::FirstSet; ++slot) m_slots.Push(slot);
}

}  // namespace kiv
