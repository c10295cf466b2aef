// The members of an object's default interface, from its type information.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <cstddef>
#include <string>
#include <vector>

namespace component {

/// A member as the type information has it.
struct Member {
    DISPID id = 0;
    std::wstring name;
    int kinds = 0;               ///< INVOKEKIND flags
    bool isIndexed = false;      ///< a slot comes before the value
    VARTYPE value = VT_EMPTY;    ///< of a property that can be put
    std::size_t parameters = 0;  ///< of a method
};

std::vector<Member> MembersOf(IDispatch& object);

}  // namespace component
