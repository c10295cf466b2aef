#include "server/ShowEvents.h"

#include <olectl.h>

#include "server/ShowMembers.h"

namespace kiv::server {

namespace {

constexpr EventNumbers Numbers{
    .click = DISPID_CLICK,
    .dblClick = DISPID_DBLCLICK,
    .keyUp = DISPID_KEYUP,
    .keyPress = DISPID_KEYPRESS,
    .keyDown = DISPID_KEYDOWN,
    .mouseDown = DISPID_MOUSEDOWN,
    .mouseMove = DISPID_MOUSEMOVE,
    .mouseUp = DISPID_MOUSEUP,
};

}  // namespace

ShowEvents::ShowEvents(EventSource& events) noexcept : FiredEvents(events, Numbers) {}

void ShowEvents::ValueChange() {
    Source().Fire(ShowEvent::ValueChange, {});
}

}  // namespace kiv::server
