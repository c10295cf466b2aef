// Calling objects by name, late-bound.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "comkit/ComPtr.h"
#include "comkit/Errors.h"
#include "comkit/Variant.h"

namespace comkit {

/// EXCEPINFO whose strings are freed.
class ExceptionInfo {
public:
    ExceptionInfo() = default;
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    ~ExceptionInfo() {
        SysFreeString(m_info.bstrSource);
        SysFreeString(m_info.bstrDescription);
        SysFreeString(m_info.bstrHelpFile);
    }
    EXCEPINFO* Put() noexcept { return &m_info; }

    /// The error that an Invoke reported: the callee's own if it raised one, else hr itself.
    ComError ErrorFor(HRESULT hr) {
        if (hr != DISP_E_EXCEPTION) return ComError(hr);
        if (m_info.pfnDeferredFillIn) m_info.pfnDeferredFillIn(&m_info);
        const HRESULT scode =
            m_info.scode ? m_info.scode : MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, m_info.wCode);
        return ComError(scode, std::u16string(ViewOf(m_info.bstrSource)),
                        std::u16string(ViewOf(m_info.bstrDescription)));
    }

private:
    EXCEPINFO m_info{};
};

/// Throws ComError.
inline DISPID DispIdOf(IDispatch& object, const wchar_t* name) {
    DISPID id = DISPID_UNKNOWN;
    std::wstring copy(name);
    LPOLESTR text = copy.data();
    ThrowIfFailed(object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id));
    return id;
}

/// Invokes with arguments in the order in which they are written. Throws ComError with the callee's source and text.
/// args may hold VT_BYREF variants, whose targets the callee then fills.
template <std::size_t N>
Variant InvokeWith(IDispatch& object, DISPID id, WORD flags, std::array<VARIANT, N> args) {
    std::reverse(args.begin(), args.end());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params{args.data(), nullptr, static_cast<UINT>(N), 0};
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (isPut) {
        params.rgdispidNamedArgs = &put;
        params.cNamedArgs = 1;
    }
    Variant result;
    ExceptionInfo info;
    UINT argument = 0;
    const HRESULT hr = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, isPut ? nullptr : result.Put(),
                                     info.Put(), &argument);
    if (FAILED(hr)) throw info.ErrorFor(hr);
    return result;
}

/// Calls a method, or gets a property with or without arguments.
template <class... Args>
Variant Call(IDispatch& object, const wchar_t* name, const Args&... args) {
    const std::array<Variant, sizeof...(Args)> owned{Variant(args)...};
    std::array<VARIANT, sizeof...(Args)> list;
    std::transform(owned.begin(), owned.end(), list.begin(), [](const Variant& v) { return v.Get(); });
    return InvokeWith(object, DispIdOf(object, name), DISPATCH_METHOD | DISPATCH_PROPERTYGET, list);
}

/// Puts a property; the last argument is the value.
template <class... Args>
void Put(IDispatch& object, const wchar_t* name, const Args&... args) {
    const std::array<Variant, sizeof...(Args)> owned{Variant(args)...};
    std::array<VARIANT, sizeof...(Args)> list;
    std::transform(owned.begin(), owned.end(), list.begin(), [](const Variant& v) { return v.Get(); });
    InvokeWith(object, DispIdOf(object, name), DISPATCH_PROPERTYPUT, list);
}

}  // namespace comkit
