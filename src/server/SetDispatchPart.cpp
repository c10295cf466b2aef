#include "server/SetDispatchPart.h"

#include "platform/DateTime.h"
#include "server/AboutBox.h"
#include "server/VariantTarget.h"

namespace kiv::server {

HRESULT SetDispatchPart::GetDateTimeInfo(VARIANT* vDate, VARIANT* vTime, VARIANT_BOOL* bEnableDST) {
    if (!vDate || !vTime || !bEnableDST) return E_POINTER;
    return Run([&](SetControl& control) {
        const DateTimeInfo info = control.GetDateTimeInfo();
        AssignTo(*vDate, comkit::Variant::Date(ToOleDate({info.date, {}})));
        AssignTo(*vTime, comkit::Variant::Date(ToOleDate(info.time)));
        Hand(info.enableDst, *bEnableDST);
    });
}

HRESULT SetDispatchPart::ShowAboutBox() {
    return AtBoundaryOf(Owner(),
                        [&] { Host().RunModal([](HWND owner) { server::ShowAboutBox(owner, ControlKind::Set); }); });
}

}  // namespace kiv::server
