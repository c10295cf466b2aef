// Failures inside COM code as an exception, and the way back to a HRESULT at a boundary.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <exception>
#include <new>
#include <string>
#include <utility>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"

namespace comkit {

/// A failed call. source and description are what the callee left, or empty.
class ComError final : public std::exception {
public:
    explicit ComError(HRESULT hr, std::u16string source = {}, std::u16string description = {})
        : m_hr(hr), m_source(std::move(source)), m_description(std::move(description)) {}
    HRESULT Result() const noexcept { return m_hr; }
    const std::u16string& Source() const noexcept { return m_source; }
    const std::u16string& Description() const noexcept { return m_description; }
    const char* what() const noexcept override { return "comkit::ComError"; }

private:
    HRESULT m_hr;
    std::u16string m_source;
    std::u16string m_description;
};

inline void ThrowIfFailed(HRESULT hr) {
    if (FAILED(hr)) throw ComError(hr);
}

inline HRESULT LastErrorResult() noexcept {
    const DWORD error = GetLastError();
    return error ? HRESULT_FROM_WIN32(error) : E_FAIL;
}

/// Leaves source and description for the caller to fetch. Does nothing when memory is short.
inline void LeaveErrorInfo(std::u16string_view source, std::u16string_view description) noexcept {
    ComPtr<ICreateErrorInfo> create;
    if (FAILED(CreateErrorInfo(create.Put()))) return;
    const std::wstring_view wideSource = ToWide(source);
    const std::wstring_view wideText = ToWide(description);
    try {
        std::wstring copy(wideSource);
        create->SetSource(copy.data());
        copy = wideText;
        create->SetDescription(copy.data());
    } catch (const std::bad_alloc&) {
        return;
    }
    if (auto info = create.As<IErrorInfo>()) SetErrorInfo(0, info.Get());
}

/// The HRESULT of the exception that is being handled. To be called in a catch block only.
inline HRESULT ResultOfCurrentException() noexcept {
    try {
        throw;
    } catch (const ComError& error) {
        if (!error.Description().empty() || !error.Source().empty())
            LeaveErrorInfo(error.Source(), error.Description());
        return error.Result();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

/// Runs a COM method's body: void means S_OK, a HRESULT passes through, an exception becomes its HRESULT.
template <class Body>
HRESULT Guarded(Body&& body) noexcept {
    try {
        if constexpr (std::is_void_v<decltype(body())>) {
            body();
            return S_OK;
        } else {
            return body();
        }
    } catch (...) {
        return ResultOfCurrentException();
    }
}

}  // namespace comkit
