// How failures of the simulator reach COM callers: error n as 0x800A0000 + n for the standard numbers, results of the
// interface facility for the rest.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

#include "comkit/Errors.h"
#include "simulator/SimulatorError.h"

namespace vexa {

struct ErrorReport {
    HRESULT result = E_UNEXPECTED;
    std::u16string text;
};

/// One of the standard error numbers as a result.
constexpr HRESULT StandardError(WORD number) noexcept {
    return static_cast<HRESULT>(0x800A0000u + number);
}

HRESULT ResultOf(SimulatorError::Reason reason) noexcept;

/// To be called in a catch block only. The text is empty where there is none, or no memory for it.
ErrorReport ReportOfCurrentException() noexcept;

/// Runs the body of a method that is called through a vtable: the error information carries the text.
template <class Body>
HRESULT GuardedWithErrorInfo(Body&& body) noexcept {
    try {
        body();
        return S_OK;
    } catch (...) {
        const ErrorReport report = ReportOfCurrentException();
        comkit::LeaveErrorInfo(u"VexaSimulator", report.text);
        return report.result;
    }
}

}  // namespace vexa
