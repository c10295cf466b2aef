#include "server/ShowDispatchPart.h"

#include "server/AboutBox.h"
#include "server/LateBoundVariable.h"

namespace kiv::server {

HRESULT ShowDispatchPart::RefreshDisplay(VARIANT* oVar) {
    if (!oVar) return E_POINTER;
    return Run([&](ShowControl& control) {
        LateBoundVariable variable(*oVar);
        control.RefreshDisplay(variable);
    });
}

HRESULT ShowDispatchPart::ShowAboutBox() {
    return AtBoundaryOf(Owner(),
                        [&] { Host().RunModal([](HWND owner) { server::ShowAboutBox(owner, ControlKind::Show); }); });
}

}  // namespace kiv::server
