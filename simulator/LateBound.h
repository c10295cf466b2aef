// Objects that are reached by name only: IDispatch over a small table of members, no type library.
//
// A class derives from LateBoundObject<Class, further interfaces...> and provides
//     static std::span<const LateMember<Class>> Members();
// Each member is a function Variant (Class::*)(const LateArguments&). A name may stand twice in the table, once to be
// called or got and once to be put. Exceptions become EXCEPINFO with number, source and text.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "comkit/ComObject.h"
#include "comkit/Variant.h"

namespace vexa {

/// The arguments of one call, in the order in which they are written; the value of a put is the last. Getters convert
/// as automation does and throw ComError(DISP_E_TYPEMISMATCH and the like).
class LateArguments {
public:
    explicit LateArguments(const DISPPARAMS& params) noexcept : m_params(params) {}

    std::size_t Count() const noexcept { return m_params.cArgs; }
    /// Left out at the end, or passed as missing.
    bool IsMissing(std::size_t position) const noexcept;

    std::int32_t Long(std::size_t position) const;
    std::int16_t Short(std::size_t position) const;
    bool Boolean(std::size_t position) const;
    std::u16string Text(std::size_t position) const;
    /// Null for Nothing.
    comkit::ComPtr<IDispatch> Object(std::size_t position) const;
    /// Neither converted nor owned; by-reference arguments are followed to a plain value.
    comkit::Variant Value(std::size_t position) const;

    /// Fills a by-reference argument, typed or Variant. One passed by value is a type mismatch.
    void Return(std::size_t position, comkit::Variant value) const;

private:
    VARIANT& At(std::size_t position) const;
    comkit::Variant Converted(std::size_t position, VARTYPE type) const;
    const DISPPARAMS& m_params;
};

template <class Class>
struct LateMember {
    const wchar_t* name;
    DISPID id;
    WORD kinds;          ///< DISPATCH_METHOD | DISPATCH_PROPERTYGET, or DISPATCH_PROPERTYPUT
    std::size_t fewest;  ///< arguments, the value of a put included
    std::size_t most;
    comkit::Variant (Class::*function)(const LateArguments&);
};

inline constexpr WORD CallOrGet = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
inline constexpr WORD PutKinds = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

/// Puts the exception being handled into info (which may be null) and returns what Invoke has to return.
HRESULT ReportCurrentException(EXCEPINFO* info) noexcept;

/// DISP_E_... where the shape of the call does not fit a member with these counts; S_OK otherwise.
HRESULT CheckCall(WORD flags, const DISPPARAMS& params, std::size_t fewest, std::size_t most) noexcept;

template <class Derived, class... Interfaces>
class LateBoundObject : public comkit::ComObject<Derived, IDispatch, Interfaces...> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        return DISP_E_BADINDEX;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (!names || !ids) return E_POINTER;
        for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
        if (count == 0) return S_OK;
        for (const auto& member : Derived::Members())
            if (_wcsicmp(member.name, names[0]) == 0) ids[0] = member.id;
        // Parameters have no names here.
        return count == 1 && ids[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* info, UINT*) override {
        if (result) VariantInit(result);
        if (!params) return E_POINTER;
        const auto* member = Find(id, flags);
        if (!member) return DISP_E_MEMBERNOTFOUND;
        if (const HRESULT hr = CheckCall(flags, *params, member->fewest, member->most); FAILED(hr)) return hr;
        const comkit::ComPtr<IUnknown> alive(this->Identity());
        try {
            comkit::Variant value = (static_cast<Derived*>(this)->*member->function)(LateArguments(*params));
            if (result) *result = value.Detach();
            return S_OK;
        } catch (...) {
            return ReportCurrentException(info);
        }
    }

private:
    static const LateMember<Derived>* Find(DISPID id, WORD flags) noexcept {
        for (const auto& member : Derived::Members())
            if (member.id == id && (member.kinds & flags) != 0) return &member;
        return nullptr;
    }
};

}  // namespace vexa
