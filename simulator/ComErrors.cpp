#include "simulator/ComErrors.h"

#include <new>

namespace vexa {

HRESULT ResultOf(SimulatorError::Reason reason) noexcept {
    using Reason = SimulatorError::Reason;
    constexpr WORD SubscriptOutOfRange = 9;
    constexpr WORD InvalidPropertyValue = 380;
    constexpr WORD PropertyReadOnly = 383;
    constexpr unsigned FirstOwnCode = 0x200;  // those below are the system's
    switch (reason) {
        case Reason::NoSuchElement:
            return StandardError(SubscriptOutOfRange);
        case Reason::BadValue:
            return StandardError(InvalidPropertyValue);
        case Reason::ReadOnly:
            return StandardError(PropertyReadOnly);
        case Reason::Offline:
        case Reason::UnknownVariable:
        case Reason::NotWriteEnabled:
        case Reason::InjectedFailure:
            break;
    }
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, FirstOwnCode + static_cast<unsigned>(reason));
}

namespace {

ErrorReport Report(HRESULT result, const std::u16string& text) noexcept {
    try {
        return {result, text};
    } catch (const std::bad_alloc&) {
        return {result, {}};
    }
}

}  // namespace

ErrorReport ReportOfCurrentException() noexcept {
    try {
        throw;
    } catch (const SimulatorError& error) {
        return Report(ResultOf(error.Why()), error.Text());
    } catch (const comkit::ComError& error) {
        return Report(error.Result(), error.Description());
    } catch (const std::bad_alloc&) {
        return {E_OUTOFMEMORY, {}};
    } catch (...) {
        return {E_UNEXPECTED, {}};
    }
}

}  // namespace vexa
