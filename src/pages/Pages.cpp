#include "pages/Pages.h"

#include <algorithm>

#include "pages/DataElementPage.h"
#include "pages/DT_VexaValues.h"
#include "pages/SetDT_General.h"
#include "pages/SetDT_Options.h"
#include "pages/ShowDT_General.h"
#include "pages/ShowDT_Options.h"
#include "pages/ShowDT_ProtoValues.h"

namespace kiv {

namespace {

using Maker = std::unique_ptr<PropertyPage> (*)(const PageWorld&);

template <class Page>
std::unique_ptr<PropertyPage> Make(const PageWorld& world) {
    return std::make_unique<Page>(world);
}

struct KnownPage {
    const PageDescription& description;
    Maker make;
};

template <class Page>
constexpr KnownPage Known() {
    return {Page::Page, &Make<Page>};
}

/// In the order of PageId.
constexpr KnownPage AllPages[] = {
    Known<SetDT_General>(),  Known<SetDT_Options>(),  Known<SetDT_VexaData>(),  Known<DT_VexaValues>(),
    Known<ShowDT_General>(), Known<ShowDT_Options>(), Known<ShowDT_VexaData>(), Known<ShowDT_ProtoValues>(),
};

constexpr PageId SetPages[] = {PageId::SetDT_General, PageId::SetDT_Options, PageId::SetDT_VexaData,
                               PageId::DT_VexaValues};
constexpr PageId ShowPages[] = {PageId::ShowDT_General, PageId::ShowDT_Options, PageId::ShowDT_VexaData,
                                PageId::DT_VexaValues, PageId::ShowDT_ProtoValues};

const KnownPage& KnownPageOf(PageId id) noexcept {
    return AllPages[static_cast<std::size_t>(id)];
}

bool Edits(const PageDescription& page, std::u16string_view property) noexcept {
    return std::ranges::find(page.fields, property, &FieldDescription::property) != page.fields.end();
}

}  // namespace

const PageDescription& DescriptionOf(PageId id) noexcept {
    return KnownPageOf(id).description;
}

std::unique_ptr<PropertyPage> MakePage(PageId id, const PageWorld& world) {
    return KnownPageOf(id).make(world);
}

std::span<const PageId> PagesOf(ControlKind control) noexcept {
    if (control == ControlKind::Set) return SetPages;
    if (control == ControlKind::Show) return ShowPages;
    return {};
}

std::optional<PageId> PageOfProperty(ControlKind control, std::u16string_view property) noexcept {
    if (property.empty()) return std::nullopt;
    const auto pages = PagesOf(control);
    const auto found = std::ranges::find_if(pages, [&](PageId id) { return Edits(DescriptionOf(id), property); });
    if (found == pages.end()) return std::nullopt;
    return *found;
}

}  // namespace kiv
