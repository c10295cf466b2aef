// KivShowDateTime behind its public face: owns the parts, runs the life cycle, and is where every call comes in.
#pragma once

#include <memory>

#include "common/ControlEntry.h"
#include "common/FrameworkLink.h"
#include "common/VexaIntegration.h"
#include "platform/PropertyBag.h"
#include "platform/VariableObject.h"
#include "showcontrol/ShowControlBindings.h"
#include "showcontrol/ShowControlContext.h"
#include "showcontrol/ShowControlHelp.h"
#include "showcontrol/ShowControlLayout.h"
#include "showcontrol/ShowControlProperties.h"
#include "showcontrol/ShowDisplay.h"

namespace kiv {

class ShowControlCore final : public ControlEntry, private WidgetListener, private DeviceValueListener {
public:
    /// Use Create: a core must be owned before anything calls it.
    ShowControlCore(const ShowPlatform& platform, ShowControlEvents& events);
    static std::shared_ptr<ShowControlCore> Create(const ShowPlatform& platform, ShowControlEvents& events);

    ShowControlProperties& Properties() noexcept { return m_properties; }
    const VexaIntegration& Vexa() const noexcept { return m_vexa; }

    // To be called within Enter.
    void InitProperties();
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag);
    void OnUserModeChanged();
    void OnRegionalSettingsChanged() noexcept { m_display.OnSettingsChanged(); }
    void RefreshDisplay(VariableObject& variable);

    /// Stops using the framework; the labels stay.
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
    void OnChange(Widget& /*source*/) override {}
    void OnResize() override;
    void OnValueReceived(std::int16_t index, std::u16string_view value) override;

    void EndLoad();
    void StartRunning();
    void StopRunning() noexcept;
    void TakeDeviceValue(std::int16_t index, std::u16string_view value);
    void TakeFormat(std::int32_t format);

    ShowControlContext m_context;
    FrameworkLink m_framework;
    ShowDisplay m_display;
    ShowControlLayout m_layout;
    ShowControlBindings m_bindings;
    ShowControlProperties m_properties;
    ShowControlHelp m_help;
    VexaIntegration m_vexa;
};

}  // namespace kiv
