#include "server/Classes.h"

#include "server/SetCore.h"

namespace kiv::server {

std::span<const ControlClass* const> Classes() noexcept {
    static constexpr const ControlClass* All[] = {&SetControlClass};
    return All;
}

}  // namespace kiv::server
