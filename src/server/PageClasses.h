// The classes of the property pages. Their identifiers never change.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string_view>

#include "pages/PageDescription.h"

namespace kiv::server {

struct PageClass {
    CLSID clsid;
    PageId page;
    const wchar_t* name;  ///< in the registry, for whoever looks there
};

std::span<const PageClass> PageClasses() noexcept;

const PageClass& ClassOf(PageId page) noexcept;

/// The page of one of the library's controls that edits a property; nothing where none does.
std::optional<CLSID> PageClassOfProperty(ControlKind control, std::u16string_view property) noexcept;

}  // namespace kiv::server
