#include "server/Classes.h"

#include "server/SetCore.h"
#include "server/ShowCore.h"

namespace kiv::server {

std::span<const ControlClass* const> Classes() noexcept {
    static constexpr const ControlClass* All[] = {&SetControlClass, &ShowControlClass};
    return All;
}

}  // namespace kiv::server
