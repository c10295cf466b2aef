#include "TypeMembers.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"

namespace component {

using comkit::ComPtr;

namespace {

VARTYPE PlainType(ITypeInfo& owner, const TYPEDESC& type) {
    if (type.vt == VT_PTR) return VT_DISPATCH;
    if (type.vt != VT_USERDEFINED) return type.vt;
    ComPtr<ITypeInfo> target;
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(S_OK, owner.GetRefTypeInfo(type.hreftype, target.Put()));
    EXPECT_EQ(S_OK, target->GetTypeAttr(&attributes));
    const VARTYPE plain = attributes->typekind == TKIND_ALIAS ? attributes->tdescAlias.vt : static_cast<VARTYPE>(VT_I4);
    target->ReleaseTypeAttr(attributes);
    return plain;
}

void AddFunction(ITypeInfo& type, const FUNCDESC& function, std::vector<Member>& members) {
    constexpr MEMBERID FirstOfBase = 0x60000000;  // IUnknown's and IDispatch's own
    if (function.memid >= FirstOfBase) return;
    auto found = std::ranges::find(members, function.memid, &Member::id);
    if (found == members.end()) {
        comkit::Bstr name;
        UINT count = 0;
        type.GetNames(function.memid, name.Put(), 1, &count);
        found = members.insert(members.end(), Member{});
        found->id = function.memid;
        found->name = std::wstring(comkit::ToWide(name.View()));
    }
    found->kinds |= function.invkind;
    const auto count = static_cast<std::size_t>(function.cParams);
    if (function.invkind == INVOKE_FUNC) found->parameters = count;
    if (function.invkind == INVOKE_PROPERTYPUT) {
        found->isIndexed = count == 2;
        found->value = PlainType(type, function.lprgelemdescParam[count - 1].tdesc);
    }
}

}  // namespace

std::vector<Member> MembersOf(IDispatch& object) {
    ComPtr<ITypeInfo> type;
    std::vector<Member> members;
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(S_OK, object.GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Put()));
    EXPECT_EQ(S_OK, type->GetTypeAttr(&attributes));
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        EXPECT_EQ(S_OK, type->GetFuncDesc(i, &function));
        AddFunction(*type, *function, members);
        type->ReleaseFuncDesc(function);
    }
    type->ReleaseTypeAttr(attributes);
    return members;
}

}  // namespace component
