// KivSetDateTime behind its public face: owns the parts, runs the life cycle, and is where every call comes in.
#pragma once

#include <memory>

#include "common/ControlEntry.h"
#include "common/FrameworkLink.h"
#include "common/VexaIntegration.h"
#include "platform/Widgets.h"
#include "setcontrol/DateTimeExchange.h"
#include "setcontrol/EventForwarding.h"
#include "setcontrol/SetControlBindings.h"
#include "setcontrol/SetControlContext.h"
#include "setcontrol/SetControlHelp.h"
#include "setcontrol/SetControlLayout.h"
#include "setcontrol/SetControlProperties.h"

namespace kiv {

class SetControlCore final : public ControlEntry, private WidgetListener, private DeviceValueListener {
public:
    /// Use Create: a core must be owned before anything calls it.
    SetControlCore(const ControlPlatform& platform, SetControlEvents& events);
    static std::shared_ptr<SetControlCore> Create(const ControlPlatform& platform, SetControlEvents& events);

    SetControlProperties& Properties() noexcept { return m_properties; }
    const SetControlContext& Context() const noexcept { return m_context; }
    const VexaIntegration& Vexa() const noexcept { return m_vexa; }

    // To be called within Enter.
    void InitProperties();
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag);
    void OnShown();
    void OnUserModeChanged();
    void SetFocus() { m_help.SetFocus(); }

    /// Stops timer, framework and settings; the children stay.
    void Terminate() noexcept;
    /// Terminates and lets go of everything outside. Only the memory stays, as long as a call is still running.
    void Destroy() noexcept;

private:
    void OnClick(Widget& source) override;
    void OnDblClick(Widget& source) override;
    void OnKeyDown(Widget& source, std::int16_t& keyCode, std::int16_t shift) override;
    void OnKeyUp(Widget& source, std::int16_t& keyCode, std::int16_t shift) override;
    void OnKeyPress(Widget& source, std::int16_t& keyAscii) override;
    void OnMouse(Widget& source, MouseAction action, const MouseArgs& args) override;
    void OnChange(Widget& source) override;
    void OnResize() override;
    void OnValueReceived(std::int16_t index, std::u16string_view value) override;

    void BeginLoad();
    void EndLoad();
    void TakeDeviceValue(std::int16_t index, std::u16string_view value);
    void LoadRememberedChoice();
    void SaveRememberedChoice() noexcept;
    void StartVexa();
    void EnterRunMode();
    void LeaveRunMode() noexcept;

    SetControlContext m_context;
    FrameworkLink m_framework;
    SetControlLayout m_layout;
    SetControlBindings m_bindings;
    DateTimeExchange m_exchange;
    SetControlProperties m_properties;
    EventForwarding m_forwarding;
    SetControlHelp m_help;
    VexaIntegration m_vexa;
};

}  // namespace kiv
