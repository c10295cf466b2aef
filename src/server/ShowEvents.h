// The show control's events, handed on to the container's sinks: under the stock numbers, but for ValueChange.
#pragma once

#include "server/FiredEvents.h"
#include "showcontrol/ShowControlEvents.h"

namespace kiv::server {

class ShowEvents final : public FiredEvents<ShowControlEvents> {
public:
    explicit ShowEvents(EventSource& events) noexcept;

    void ValueChange() override;
};

}  // namespace kiv::server
