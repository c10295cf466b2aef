#include "showcontrol/ShowControlCore.h"

#include <array>
#include <utility>

#include "common/Attempt.h"
#include "common/GuardedBag.h"
#include "common/NumericText.h"
#include "common/ValueConversion.h"
#include "showcontrol/ShowControlPersistence.h"

namespace kiv {

namespace {

using NumberField = std::int32_t DateTimeNumbers::*;

/// What arrives for slots 1 to 6.
constexpr std::array<NumberField, 6> NumberFields{&DateTimeNumbers::hour,   &DateTimeNumbers::minute,
                                                  &DateTimeNumbers::second, &DateTimeNumbers::month,
                                                  &DateTimeNumbers::day,    &DateTimeNumbers::year};

/// For slots 1 to 6.
NumberField FieldOfSlot(std::int32_t slot) {
    return NumberFields.at(static_cast<std::size_t>(slot - ShowSlot::Hour));
}

}  // namespace

ShowControlCore::ShowControlCore(const ShowPlatform& platform, ShowControlEvents& events)
    : m_context(platform, events),
      m_framework(platform.framework, ShowSlot::Count, *this, m_context.Life()),
      m_display(m_context),
      m_layout(m_context, m_display),
      m_bindings(m_context, m_framework),
      m_properties(m_context, m_display, m_layout, m_bindings),
      m_help(m_context),
      m_vexa(*this, {platform.framework, platform.help, m_context.Life()}, m_framework, m_help) {
    m_context.Children().lblCaption->SetBounds({0, 0, PreferredLabelWidth, MinLabelHeight});
    m_context.Children().lblValue->SetBounds({PreferredLabelWidth, 0, PreferredLabelWidth, MinLabelHeight});
}

std::shared_ptr<ShowControlCore> ShowControlCore::Create(const ShowPlatform& platform, ShowControlEvents& events) {
    auto core = std::make_shared<ShowControlCore>(platform, events);
    platform.area.SetListener(core.get());
    return core;
}

// --- Life cycle -----------------------------------------------------------------------------------------------------

void ShowControlCore::InitProperties() {
    {
        const LoadingScope loading(m_context.State());
        m_context.State().m_bTerminated = false;
        ShowControlPersistence().PutDefaults(m_properties);
        Attempt([&] {
            const FontPtr font = m_context.Life().CallOut([&] { return m_context.Platform().container.AmbientFont(); });
            if (font) m_properties.SetFont(font);
        });
    }
    EndLoad();
}

void ShowControlCore::ReadProperties(const PropertyBag& bag) {
    {
        const LoadingScope loading(m_context.State());
        m_context.State().m_bTerminated = false;
        ShowControlPersistence().Load(m_properties, GuardedReadBag(bag, m_context.Life()));
    }
    EndLoad();
}

void ShowControlCore::EndLoad() {
    // A load within another leaves the end to that one.
    if (m_context.State().IsLoading()) return;
    m_context.State().m_bLoaded = true;
    if (m_context.IsUserModeNow()) StartRunning();
    m_layout.EndLoad();
    m_display.EndLoad();
}

void ShowControlCore::WriteProperties(PropertyBag& bag) {
    GuardedWriteBag guarded(bag, m_context.Life());
    ShowControlPersistence().Save(m_properties, guarded);
}

void ShowControlCore::OnUserModeChanged() {
    const ShowControlState& state = m_context.State();
    // Before and during a load there is nothing to change: the load itself asks for the mode.
    if (!state.m_bLoaded || state.IsLoading() || state.m_bTerminated) return;
    const bool userMode = m_context.AmbientUserMode();
    if (userMode == state.m_bRunning) return;
    if (userMode) {
        m_bindings.PushAll();
        // Run mode, or all, may have ended meanwhile.
        if (m_context.IsUserModeNow()) StartRunning();
    } else {
        StopRunning();
    }
    m_display.UpdateDisplay();
}

/// What exists only while the control runs is made here and let go in StopRunning. The hidden control is not made here:
/// it comes with its first use.
void ShowControlCore::StartRunning() {
    m_context.State().m_bRunning = true;
    m_vexa.Start();
}

void ShowControlCore::StopRunning() noexcept {
    m_context.State().m_bRunning = false;
    m_vexa.Stop();
    m_framework.Release();
}

void ShowControlCore::Terminate() noexcept {
    if (std::exchange(m_context.State().m_bTerminated, true)) return;
    StopRunning();
}

void ShowControlCore::Destroy() noexcept {
    Terminate();
    Attempt([&] { m_context.Area().SetListener(nullptr); });
    m_context.End();
}

// --- Device data ----------------------------------------------------------------------------------------------------

void ShowControlCore::OnValueReceived(std::int16_t index, std::u16string_view value) {
    Enter([&] { TakeDeviceValue(index, value); });
}

void ShowControlCore::TakeDeviceValue(std::int16_t index, std::u16string_view value) {
    if (m_context.State().m_bTerminated) return;
    std::int32_t number = 0;  // also for a text that is no number, or too large a one
    Attempt([&] { number = ParseDeviceNumber(value); });
    if (index == ShowSlot::Format) return TakeFormat(number);
    if (index < ShowSlot::Hour || index > ShowSlot::Year) return;
    m_context.State().m_numbers.*FieldOfSlot(index) = number;
    Attempt([&] { m_display.UpdateDisplay(); });
}

void ShowControlCore::TakeFormat(std::int32_t format) {
    bool used = false;
    Attempt([&] { used = !Trim(m_bindings.Slots().VariableName(ShowSlot::Format)).empty(); });
    if (!used) return;
    Attempt([&] {
        if (m_properties.Mode() == sdtShowDateOnly) {
            m_properties.SetDateFormat(format);
        } else {
            m_properties.SetTimeFormat(format);
        }
    });
}

void ShowControlCore::RefreshDisplay(VariableObject& variable) {
    // One step on purpose: the first failure ends it all.
    Attempt([&] {
        for (std::int32_t slot = ShowSlot::Hour; slot <= ShowSlot::Year; ++slot) {
            const std::u16string path = m_bindings.Slots().ElementPath(slot);
            const Value value = m_context.Life().CallOut([&] { return variable.ElementValue(path); });
            m_context.State().m_numbers.*FieldOfSlot(slot) = ToLong(value);
        }
        m_display.UpdateDisplay();
    });
}

// --- Calls from the platform ----------------------------------------------------------------------------------------

void ShowControlCore::OnClick(Widget& /*source*/) {
    Enter([&] { m_context.Raise([](ShowControlEvents& events) { events.Click(); }); });
}

void ShowControlCore::OnDblClick(Widget& /*source*/) {
    Enter([&] { m_context.Raise([](ShowControlEvents& events) { events.DblClick(); }); });
}

void ShowControlCore::OnKeyDown(Widget& /*source*/, std::int16_t& keyCode, std::int16_t shift) {
    Enter([&] { m_context.Raise([&](ShowControlEvents& events) { events.KeyDown(keyCode, shift); }); });
}

void ShowControlCore::OnKeyUp(Widget& /*source*/, std::int16_t& keyCode, std::int16_t shift) {
    Enter([&] { m_context.Raise([&](ShowControlEvents& events) { events.KeyUp(keyCode, shift); }); });
}

void ShowControlCore::OnKeyPress(Widget& /*source*/, std::int16_t& keyAscii) {
    Enter([&] { m_context.Raise([&](ShowControlEvents& events) { events.KeyPress(keyAscii); }); });
}

void ShowControlCore::OnMouse(Widget& source, MouseAction action, const MouseArgs& args) {
    Enter([&] {
        Point twips = args.position;
        if (&source != &m_context.Area()) {
            const Rect label = source.Bounds();
            twips = {label.left + twips.x, label.top + twips.y};
        }
        const Point position = m_context.ToContainerPosition(twips);
        m_context.Raise([&](ShowControlEvents& events) { RaiseMouse(events, action, args, position); });
    });
}

void ShowControlCore::OnResize() {
    Enter([&] { m_layout.Resize(); });
}

}  // namespace kiv
