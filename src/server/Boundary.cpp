#include "server/Boundary.h"

#include "comkit/Errors.h"
#include "platform/HostError.h"
#include "server/StandardTexts.h"

namespace kiv::server {

namespace {

constexpr std::u16string_view LibraryName = u"KivDateTime";

void LeaveHostError(const HostError& error) noexcept {
    const std::u16string_view source = error.Source().empty() ? LibraryName : std::u16string_view(error.Source());
    const std::u16string_view text =
        error.Description().empty() ? StandardText(error.Number()) : std::u16string_view(error.Description());
    comkit::LeaveErrorInfo(source, text);
}

}  // namespace

HRESULT ResultOfCurrentException() noexcept {
    SetErrorInfo(0, nullptr);
    try {
        throw;
    } catch (const HostError& error) {
        LeaveHostError(error);
        return HostResult(error.Number());
    } catch (...) {
        return comkit::ResultOfCurrentException();
    }
}

}  // namespace kiv::server
