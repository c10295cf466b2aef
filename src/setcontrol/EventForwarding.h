// Turns what users do to the children of KivSetDateTime into the control's own events, with mouse positions in the
// container's units.
#pragma once

#include "setcontrol/DateTimeExchange.h"
#include "setcontrol/SetControlContext.h"
#include "setcontrol/SetControlLayout.h"
#include "setcontrol/SetControlProperties.h"

namespace kiv {

class EventForwarding {
public:
    EventForwarding(SetControlContext& context, SetControlProperties& properties, DateTimeExchange& exchange)
        : m_context(context), m_properties(properties), m_exchange(exchange) {}

    void OnClick(const Widget& source);
    void OnDblClick(const Widget& source);
    void OnKeyDown(const Widget& source, std::int16_t& keyCode, std::int16_t shift);
    void OnKeyUp(const Widget& source, std::int16_t& keyCode, std::int16_t shift);
    void OnKeyPress(const Widget& source, std::int16_t& keyAscii);
    void OnMouse(const Widget& source, MouseAction action, const MouseArgs& args);
    void OnChange(const Widget& source);

private:
    bool IsCheckBox(const Widget& source) const;
    bool IsFrame(const Widget& source) const;
    /// Of the source's top left corner, from the control surface's.
    Point Origin(const Widget& source) const;

    SetControlContext& m_context;
    SetControlProperties& m_properties;
    DateTimeExchange& m_exchange;
};

}  // namespace kiv
