// All property pages: which there are, which belong to which control, which of them edits a property.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "pages/PropertyPage.h"

namespace kiv {

const PageDescription& DescriptionOf(PageId id) noexcept;

std::unique_ptr<PropertyPage> MakePage(PageId id, const PageWorld& world);

/// In the order of their tabs. Set and Show only.
std::span<const PageId> PagesOf(ControlKind control) noexcept;

/// Nothing where no page of that control edits the property.
std::optional<PageId> PageOfProperty(ControlKind control, std::u16string_view property) noexcept;

}  // namespace kiv
