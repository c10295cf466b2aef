#include "server/DispatchInfo.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "comkit/Bstr.h"
#include "comkit/Errors.h"
#include "comkit/Variant.h"
#include "comkit/VariantReferences.h"
#include "server/TypeDescriptions.h"

namespace kiv::server {

namespace {

VARTYPE PointedType(const ELEMDESC& parameter) noexcept {
    if (parameter.tdesc.vt != VT_PTR || (parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL)) return VT_EMPTY;
    const VARTYPE target = parameter.tdesc.lptdesc->vt;
    const bool plain = target == VT_I2 || target == VT_I4 || target == VT_R4 || target == VT_R8 || target == VT_BOOL ||
                       target == VT_DATE || target == VT_BSTR || target == VT_UI1;
    return plain ? target : static_cast<VARTYPE>(VT_EMPTY);
}

/// A member's name as the table has it: in capitals. Empty for what cannot be in it: too long, or not all ASCII.
class FoldedName {
public:
    explicit FoldedName(const wchar_t* name) noexcept {
        for (; *name; ++name) {
            if (m_length == m_letters.size() || *name > 0x7F) {
                m_length = 0;
                return;
            }
            const bool isSmall = *name >= L'a' && *name <= L'z';
            m_letters[m_length++] = isSmall ? static_cast<wchar_t>(*name - L'a' + L'A') : *name;
        }
    }
    std::wstring_view View() const noexcept { return {m_letters.data(), m_length}; }

private:
    std::array<wchar_t, 40> m_letters{};
    std::size_t m_length = 0;
};

constexpr WORD PutFlags = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

/// What the system's Invoke takes for granted. On failure, argument is the first that is wrong.
HRESULT CheckParams(const DISPPARAMS& params, UINT* argument) noexcept {
    if (params.cNamedArgs > params.cArgs) return DISP_E_BADPARAMCOUNT;
    if ((params.cArgs && !params.rgvarg) || (params.cNamedArgs && !params.rgdispidNamedArgs)) return E_POINTER;
    for (UINT slot = 0; slot < params.cArgs; ++slot) {
        if (comkit::IsWhole(params.rgvarg[slot])) continue;
        if (argument) *argument = slot;
        return DISP_E_TYPEMISMATCH;
    }
    return S_OK;
}

}  // namespace

/// The arguments of a call, with VARIANT variables for typed by-reference parameters replaced by variables of the type.
class DispatchInfo::Unwrapped {
public:
    Unwrapped(const Member& member, const DISPPARAMS& params)
        : m_params(params), m_args(params.rgvarg, params.rgvarg + params.cArgs) {
        m_replaced.reserve(m_args.size());
        for (UINT slot = 0; slot < params.cArgs; ++slot) Replace(member, slot);
        m_params.rgvarg = m_args.data();
    }

    DISPPARAMS& Params() noexcept { return m_params; }

    void WriteBack() {
        for (Replacement& r : m_replaced) {
            VARIANT typed = m_args[r.slot];
            VariantCopyInd(r.variable, &typed);
        }
    }

private:
    struct Replacement {
        UINT slot;
        VARIANT* variable;
        comkit::Variant value;
    };

    std::size_t ParameterOf(UINT slot) const noexcept {
        if (slot < m_params.cNamedArgs) return static_cast<std::size_t>(m_params.rgdispidNamedArgs[slot]);
        return m_params.cArgs - 1 - slot;
    }

    void Replace(const Member& member, UINT slot) {
        VARIANT& arg = m_args[slot];
        const std::size_t parameter = ParameterOf(slot);
        if (arg.vt != (VT_BYREF | VT_VARIANT) || parameter >= member.targets.size()) return;
        const VARTYPE target = member.targets[parameter];
        if (target == VT_EMPTY) return;
        comkit::Variant value;
        if (FAILED(value.ConvertFrom(*arg.pvarVal, target))) return;
        // The vector has its whole capacity: the value stays where it is while the call refers to it.
        m_replaced.push_back({slot, arg.pvarVal, std::move(value)});
        Replacement& kept = m_replaced.back();
        arg.vt = static_cast<VARTYPE>(VT_BYREF | target);
        arg.byref = &kept.value.Get().lVal;
    }

    DISPPARAMS m_params;
    std::vector<VARIANT> m_args;
    std::vector<Replacement> m_replaced;
};

DispatchInfo::DispatchInfo(comkit::ComPtr<ITypeInfo> type) : m_pType(std::move(type)) {
    const TypeAttributes attributes(*m_pType.Get());
    for (UINT i = 0; i < attributes->cFuncs; ++i) AddFunction(*FunctionDescription(*m_pType.Get(), i));
    std::ranges::sort(m_members, {}, &Member::id);
    for (const Member& member : m_members) AddName(member.id);
    std::ranges::sort(m_names, {}, &Name::folded);
}

void DispatchInfo::AddName(DISPID id) {
    comkit::Bstr name;
    UINT count = 0;
    comkit::ThrowIfFailed(m_pType->GetNames(id, name.Put(), 1, &count));
    if (count == 0 || !name.Get()) return;
    if (const FoldedName folded(name.Get()); !folded.View().empty())
        m_names.push_back({std::wstring(folded.View()), id});
}

void DispatchInfo::AddFunction(const FUNCDESC& function) {
    auto found = std::find_if(m_members.begin(), m_members.end(),
                              [&](const Member& member) { return member.id == function.memid; });
    if (found == m_members.end()) found = m_members.insert(m_members.end(), Member{function.memid, 0, {}, false, 0});
    found->kinds |= function.invkind;
    found->mostArguments = std::max(found->mostArguments, static_cast<UINT>(function.cParams));
    if (function.invkind != INVOKE_FUNC) return;
    for (SHORT i = 0; i < function.cParams; ++i) {
        found->targets.push_back(PointedType(function.lprgelemdescParam[i]));
        found->hasTargets = found->hasTargets || found->targets.back() != VT_EMPTY;
    }
}

const DispatchInfo::Member* DispatchInfo::Find(DISPID id) const noexcept {
    const auto found = std::ranges::lower_bound(m_members, id, {}, &Member::id);
    return found != m_members.end() && found->id == id ? &*found : nullptr;
}

const DispatchInfo::Name* DispatchInfo::FindName(const wchar_t* name) const noexcept {
    const FoldedName folded(name);
    const auto found = std::ranges::lower_bound(m_names, folded.View(), {}, &Name::folded);
    return found != m_names.end() && found->folded == folded.View() ? &*found : nullptr;
}

HRESULT DispatchInfo::GetTypeInfo(UINT index, ITypeInfo** out) const noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    m_pType.CopyTo(out);
    return S_OK;
}

HRESULT DispatchInfo::GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept {
    const Name* const found = count == 1 && names[0] ? FindName(names[0]) : nullptr;
    if (!found) return m_pType->GetIDsOfNames(names, count, ids);  // parameters, and what is no member of its own
    ids[0] = found->id;
    return S_OK;
}

HRESULT DispatchInfo::Invoke(void* instance, DISPID id, WORD flags, const DISPPARAMS& params, VARIANT* result,
                             EXCEPINFO* info, UINT* argument) const {
    const Member* member = Find(id);
    if (!member) return DISP_E_MEMBERNOTFOUND;
    // Wine calls a method that takes no arguments all the same where some are passed.
    if (params.cArgs > member->mostArguments) return DISP_E_BADPARAMCOUNT;
    if (const HRESULT hr = CheckParams(params, argument); FAILED(hr)) return hr;
    if ((flags & DISPATCH_METHOD) && !(flags & PutFlags) && !(member->kinds & INVOKE_FUNC))
        flags = static_cast<WORD>((flags & ~DISPATCH_METHOD) | DISPATCH_PROPERTYGET);

    std::optional<Unwrapped> unwrapped;
    if (member->hasTargets) unwrapped.emplace(*member, params);
    DISPPARAMS passed = unwrapped ? unwrapped->Params() : params;

    SetErrorInfo(0, nullptr);
    comkit::Variant answer;
    const HRESULT hr = m_pType->Invoke(instance, id, flags, &passed, result ? &answer.Get() : nullptr, info, argument);
    if (SUCCEEDED(hr)) {
        if (unwrapped) unwrapped->WriteBack();
        // The same bits: script languages have no unsigned 32-bit numbers.
        if (answer.Type() == VT_UI4) answer.Get().vt = VT_I4;
        if (result) *result = answer.Detach();
    } else if (result) {
        VariantInit(result);
    }
    return hr;
}

}  // namespace kiv::server
