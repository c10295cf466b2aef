#include "setcontrol/SetControlHelp.h"

#include <array>

#include "common/Attempt.h"
#include "common/NumericText.h"
#include "platform/HostError.h"

namespace kiv {

namespace {

constexpr std::size_t InnerFramePart = 2;

/// In the order of an array of help IDs.
std::array<ChildControl*, SetControlHelp::PartCount> PartsOf(const SetControlChildren& children) {
    return {children.fraOuter.get(), children.chkUseSystem.get(),
            children.fraInner.get(), children.chkUseDaylightSavings.get(),
            children.mvDate.get(),   children.dtpTimeSP.get()};
}

void SetHelpContextID(ChildControl& child, std::int32_t id) {
    WidgetHelp help = child.Help();
    help.contextID = id;
    child.SetHelp(help);
}

void SetWhatsThisID(ChildControl& child, std::int32_t id) {
    WidgetHelp help = child.Help();
    help.whatsThisID = id;
    child.SetHelp(help);
}

std::int32_t NumberOf(const HelpIDText& text) {
    if (!text) throw HostError(ErrorNumber::TypeMismatch);
    return ParseDeviceNumber(*text);
}

}  // namespace

void SetControlHelp::ApplyHelpContextID(std::int32_t id) {
    m_context.State().m_lHelpContextID = id;
    const SetControlChildren& children = m_context.Children();
    const std::array<ChildControl*, 4> inputs{children.chkUseSystem.get(), children.chkUseDaylightSavings.get(),
                                              children.mvDate.get(), children.dtpTimeSP.get()};
    for (ChildControl* const child : inputs) Attempt([&] { SetHelpContextID(*child, id); });
}

void SetControlHelp::ApplyWhatsThisHelpID(std::int32_t id) {
    m_context.State().m_lWhatsThisHelpID = id;
    for (ChildControl* const child : PartsOf(m_context.Children())) Attempt([&] { SetWhatsThisID(*child, id); });
}

void SetControlHelp::ApplyWhatsThisHelpIDs(std::span<const HelpIDText> ids) {
    if (ids.size() != PartCount) return;
    std::int32_t& stored = m_context.State().m_lWhatsThisHelpID;
    Attempt([&] { stored = NumberOf(ids[InnerFramePart]); });
    const auto parts = PartsOf(m_context.Children());
    for (std::size_t part = 0; part < PartCount; ++part) {
        // The inner frame gets what is stored, also where its own value was no number.
        Attempt([&] { SetWhatsThisID(*parts[part], part == InnerFramePart ? stored : NumberOf(ids[part])); });
    }
}

void SetControlHelp::SetFocus() {
    Attempt([&] {
        const SetControlChildren& children = m_context.Children();
        const bool toCalendar = children.mvDate->IsVisible();
        m_context.Life().CallOut(
            [&] { return toCalendar ? children.mvDate->TakeFocus() : children.dtpTimeSP->TakeFocus(); });
    });
}

}  // namespace kiv
