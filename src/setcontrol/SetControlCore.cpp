#include "setcontrol/SetControlCore.h"

#include <optional>
#include <utility>

#include "common/Attempt.h"
#include "common/GuardedBag.h"
#include "common/NumericText.h"
#include "setcontrol/RememberedChoice.h"
#include "setcontrol/SetControlPersistence.h"

namespace kiv {

namespace {

constexpr std::uint32_t TimerInterval = 1000;  // milliseconds
constexpr std::u16string_view RegistryKeyParent = u"SOFTWARE\\The Corvale Company\\Controls\\";

}  // namespace

SetControlCore::SetControlCore(const ControlPlatform& platform, SetControlEvents& events)
    : m_context(platform, events),
      m_framework(platform.framework, SetElement::Count, *this, m_context.Life()),
      m_layout(m_context),
      m_bindings(m_context, m_framework),
      m_exchange(m_context, m_framework),
      m_properties(m_context, m_layout, m_bindings, m_exchange),
      m_forwarding(m_context, m_properties, m_exchange),
      m_help(m_context),
      m_vexa(*this, {platform.framework, platform.help, m_context.Life()}, m_framework, m_help) {
    SetControlState& state = m_context.State();
    state.m_strRegistryKeyPath = std::u16string(RegistryKeyParent) + std::u16string(SetControl::ClassName);
    state.m_lScrollBarWidth = platform.surface.ScrollBarWidthPixels();
    m_exchange.UseTimer(
        platform.timers.CreateTimer(TimerInterval, [this] { Enter([this] { m_exchange.OnTimer(); }); }));
}

std::shared_ptr<SetControlCore> SetControlCore::Create(const ControlPlatform& platform, SetControlEvents& events) {
    auto core = std::make_shared<SetControlCore>(platform, events);
    platform.surface.SetListener(core.get());
    return core;
}

// --- Life cycle -----------------------------------------------------------------------------------------------------

void SetControlCore::BeginLoad() {
    SetControlState& state = m_context.State();
    state.m_bTerminated = false;
    state.m_bUserMode = m_context.AmbientUserMode();
    m_layout.ApplyMode();
}

void SetControlCore::EndLoad() {
    m_context.State().m_bLoaded = true;
    if (m_context.State().IsRunning()) LoadRememberedChoice();
    StartVexa();
    m_layout.ApplyMode();
    // It may have changed while properties were loaded, and was then not looked at.
    OnUserModeChanged();
}

void SetControlCore::InitProperties() {
    {
        const LoadingScope loading(m_context.State());
        BeginLoad();
        SetControlPersistence().PutDefaults(m_properties);
        Attempt([&] {
            const FontPtr font = m_context.Life().CallOut([&] { return m_context.Platform().container.AmbientFont(); });
            if (font) m_properties.SetFont(font);
        });
    }
    EndLoad();
}

void SetControlCore::ReadProperties(const PropertyBag& bag) {
    {
        const LoadingScope loading(m_context.State());
        BeginLoad();
        SetControlPersistence().Load(m_properties, GuardedReadBag(bag, m_context.Life()));
    }
    EndLoad();
}

void SetControlCore::WriteProperties(PropertyBag& bag) {
    GuardedWriteBag guarded(bag, m_context.Life());
    SetControlPersistence().Save(m_properties, guarded);
}

void SetControlCore::OnShown() {
    if (!std::exchange(m_context.State().m_bFirstShowPending, false)) return;
    if (m_context.IsUserModeNow()) m_exchange.LoadDeviceDateTime();
}

void SetControlCore::OnUserModeChanged() {
    SetControlState& state = m_context.State();
    // Before and during a load there is nothing to change: the load itself asks for the mode.
    if (!state.m_bLoaded || state.IsLoading() || state.m_bTerminated) return;
    const bool userMode = m_context.AmbientUserMode();
    if (userMode == state.m_bUserMode) return;
    if (userMode) {
        state.m_bUserMode = true;
        EnterRunMode();
    } else {
        LeaveRunMode();
        state.m_bUserMode = false;
    }
}

void SetControlCore::StartVexa() {
    // Run mode may have ended meanwhile; a load within another leaves it to that one.
    const SetControlState& state = m_context.State();
    if (state.IsRunning() && !state.IsLoading()) m_vexa.Start();
}

void SetControlCore::EnterRunMode() {
    m_bindings.PushAll();
    m_exchange.ApplyUseSystemState();
    LoadRememberedChoice();
    StartVexa();
    m_layout.ApplyMode();
}

void SetControlCore::LeaveRunMode() noexcept {
    m_exchange.StopTimer();
    SaveRememberedChoice();
    m_vexa.Stop();
    m_framework.Release();
}

void SetControlCore::Terminate() noexcept {
    SetControlState& state = m_context.State();
    if (std::exchange(state.m_bTerminated, true)) return;
    m_exchange.StopTimer();
    if (state.m_bUserMode) SaveRememberedChoice();
    m_vexa.Stop();
    m_framework.Release();
}

void SetControlCore::Destroy() noexcept {
    Terminate();
    m_exchange.EndTimer();
    Attempt([&] { m_context.ControlSurface().SetListener(nullptr); });
    m_context.End();
}

void SetControlCore::LoadRememberedChoice() {
    const SetControlState& state = m_context.State();
    const std::optional<bool> choice = m_context.Life().CallOut(
        [&] { return LoadUsePCDateTimeSetting(m_context.Platform().settings, state.m_strRegistryKeyPath); });
    if (choice) Attempt([&] { m_properties.SetUsePCDateTime(*choice); });
}

void SetControlCore::SaveRememberedChoice() noexcept {
    // A control whose properties were never loaded has no choice to remember.
    const SetControlState& state = m_context.State();
    if (!state.m_bLoaded) return;
    Attempt([&] {
        SaveUsePCDateTimeSetting(m_context.Platform().settings, state.m_strRegistryKeyPath,
                                 m_properties.UsePCDateTime());
    });
}

// --- Calls from the platform ----------------------------------------------------------------------------------------

void SetControlCore::OnClick(Widget& source) {
    Enter([&] { m_forwarding.OnClick(source); });
}

void SetControlCore::OnDblClick(Widget& source) {
    Enter([&] { m_forwarding.OnDblClick(source); });
}

void SetControlCore::OnKeyDown(Widget& source, std::int16_t& keyCode, std::int16_t shift) {
    Enter([&] { m_forwarding.OnKeyDown(source, keyCode, shift); });
}

void SetControlCore::OnKeyUp(Widget& source, std::int16_t& keyCode, std::int16_t shift) {
    Enter([&] { m_forwarding.OnKeyUp(source, keyCode, shift); });
}

void SetControlCore::OnKeyPress(Widget& source, std::int16_t& keyAscii) {
    Enter([&] { m_forwarding.OnKeyPress(source, keyAscii); });
}

void SetControlCore::OnMouse(Widget& source, MouseAction action, const MouseArgs& args) {
    Enter([&] { m_forwarding.OnMouse(source, action, args); });
}

void SetControlCore::OnChange(Widget& source) {
    Enter([&] { m_forwarding.OnChange(source); });
}

void SetControlCore::OnResize() {
    Enter([&] { m_layout.Resize(); });
}

void SetControlCore::OnValueReceived(std::int16_t index, std::u16string_view value) {
    Enter([&] { TakeDeviceValue(index, value); });
}

void SetControlCore::TakeDeviceValue(std::int16_t index, std::u16string_view value) {
    if (!m_context.State().IsRunning()) return;
    std::int32_t number = 0;
    if (!Attempt([&] { number = ParseDeviceNumber(value); })) return;
    bool used = false;
    Attempt([&] { used = !Trim(m_properties.Slot(index).VariableName(index)).empty(); });
    if (!used) return;
    if (index == SetElement::ClockFormat) {
        Attempt([&] { m_properties.SetTimeFormat(number); });
    } else {
        m_exchange.OnDeviceNumber(index, number);
    }
}

}  // namespace kiv
