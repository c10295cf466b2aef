#include "showcontrol/ShowControlHelp.h"

#include "common/Attempt.h"

namespace kiv {

namespace {

void SetWhatsThisID(Label& label, std::int32_t id) {
    WidgetHelp help = label.Help();
    help.whatsThisID = id;
    label.SetHelp(help);
}

}  // namespace

void ShowControlHelp::ApplyHelpContextID(std::int32_t id) {
    SetOnExtender(u"HelpContextID", id);
}

void ShowControlHelp::ApplyWhatsThisHelpID(std::int32_t id) {
    Attempt([&] { SetWhatsThisID(*m_context.Children().lblCaption, id); });
    Attempt([&] { SetWhatsThisID(*m_context.Children().lblValue, id); });
    SetOnExtender(u"WhatsThisHelpID", id);
}

void ShowControlHelp::SetOnExtender(std::u16string_view name, std::int32_t id) {
    Attempt([&] { m_context.Life().CallOut([&] { m_context.Platform().container.SetExtenderNumber(name, id); }); });
}

}  // namespace kiv
