// Owning VARIANT.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <concepts>
#include <cstdint>
#include <string_view>
#include <utility>

#include "comkit/Bstr.h"

namespace comkit {

class Variant {
public:
    Variant() noexcept { VariantInit(&m_v); }
    Variant(std::int32_t value) noexcept : Variant(VT_I4) { m_v.lVal = value; }
    Variant(std::int16_t value) noexcept : Variant(VT_I2) { m_v.iVal = value; }
    Variant(long value) noexcept : Variant(static_cast<std::int32_t>(value)) {}
    /// Takes bool only, or any pointer would turn into True.
    template <std::same_as<bool> Bool>
    Variant(Bool value) noexcept : Variant(VT_BOOL) {
        m_v.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Variant(double value) noexcept : Variant(VT_R8) { m_v.dblVal = value; }
    /// Throws std::bad_alloc.
    Variant(std::u16string_view text) : Variant(VT_EMPTY) {
        Bstr copy(text);
        m_v.vt = VT_BSTR;
        m_v.bstrVal = copy.Detach();
    }
    Variant(const wchar_t* text) : Variant(ToUtf16(text)) {}
    Variant(const char16_t* text) : Variant(std::u16string_view(text)) {}
    Variant(const std::u16string& text) : Variant(std::u16string_view(text)) {}
    Variant(IDispatch* object) noexcept : Variant(VT_DISPATCH) {
        m_v.pdispVal = object;
        if (object) object->AddRef();
    }
    Variant(IUnknown* object) noexcept : Variant(VT_UNKNOWN) {
        m_v.punkVal = object;
        if (object) object->AddRef();
    }
    Variant(Variant&& other) noexcept : m_v(other.Detach()) {}
    Variant& operator=(Variant&& other) noexcept {
        std::swap(m_v, other.m_v);
        return *this;
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&m_v); }

    static Variant Date(double days) noexcept {
        Variant result(VT_DATE);
        result.m_v.date = days;
        return result;
    }

    /// An optional argument that is left out.
    static Variant Missing() noexcept {
        Variant result(VT_ERROR);
        result.m_v.scode = DISP_E_PARAMNOTFOUND;
        return result;
    }

    const VARIANT& Get() const noexcept { return m_v; }
    VARIANT& Get() noexcept { return m_v; }
    VARTYPE Type() const noexcept { return m_v.vt; }
    VARIANT* Put() noexcept {
        VariantClear(&m_v);
        return &m_v;
    }
    VARIANT Detach() noexcept {
        VARIANT result = m_v;
        VariantInit(&m_v);
        return result;
    }

    /// Becomes from as another type; empty where there is no such conversion.
    HRESULT ConvertFrom(const VARIANT& from, VARTYPE type) noexcept {
        // The tool chain's header lacks the const that the function's documentation has.
        return VariantChangeType(Put(), const_cast<VARIANT*>(&from), 0, type);
    }

    /// A copy of from; where that refers to a variable, of the variable's value.
    HRESULT CopyFrom(const VARIANT& from) noexcept { return VariantCopyInd(Put(), const_cast<VARIANT*>(&from)); }

private:
    explicit Variant(VARENUM type) noexcept {
        VariantInit(&m_v);
        m_v.vt = static_cast<VARTYPE>(type);
    }
    VARIANT m_v;
};

}  // namespace comkit
