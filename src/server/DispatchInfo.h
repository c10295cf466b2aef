// IDispatch through a dual interface's type information, with the help that ITypeInfo::Invoke needs for callers of all
// kinds:
//  - a VARIANT variable passed for a typed by-reference parameter (as scripts pass theirs) is converted and, after the
//    call, given the new value;
//  - a property that is asked for as a method is got;
//  - after a failure the result is empty, not what was left over;
//  - a colour is handed out as a signed number, the only kind that scripts know;
//  - an error that an earlier call left on the thread is not taken for this call's;
//  - arguments that refer to nothing, or to themselves, are refused.
// A member's name is looked up in a table: ITypeInfo compares it with one after the other.
//
// One instance serves all objects and apartments; it does not change after construction.
#pragma once

#include <oaidl.h>

#include <string>
#include <vector>

#include "comkit/ComPtr.h"

namespace kiv::server {

class DispatchInfo final {
public:
    /// Throws comkit::ComError.
    explicit DispatchInfo(comkit::ComPtr<ITypeInfo> type);

    HRESULT GetTypeInfo(UINT index, ITypeInfo** out) const noexcept;
    HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept;
    /// instance is the dual interface's pointer. Throws std::bad_alloc.
    HRESULT Invoke(void* instance, DISPID id, WORD flags, const DISPPARAMS& params, VARIANT* result, EXCEPINFO* info,
                   UINT* argument) const;

private:
    struct Member {
        DISPID id = DISPID_UNKNOWN;
        int kinds = 0;  ///< INVOKEKIND flags
        /// For each parameter of the method, the type that it points to; VT_EMPTY where it is passed by value or is
        /// a VARIANT anyway.
        std::vector<VARTYPE> targets;
        bool hasTargets = false;
        UINT mostArguments = 0;  ///< of the form that takes the most
    };
    struct Name {
        std::wstring folded;
        DISPID id = DISPID_UNKNOWN;
    };
    class Unwrapped;

    void AddFunction(const FUNCDESC& function);
    void AddName(DISPID id);
    const Member* Find(DISPID id) const noexcept;
    const Name* FindName(const wchar_t* name) const noexcept;

    comkit::ComPtr<ITypeInfo> m_pType;
    std::vector<Member> m_members;  ///< sorted by id
    std::vector<Name> m_names;      ///< sorted by name
};

}  // namespace kiv::server
