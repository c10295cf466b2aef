#include "server/PageClasses.h"

#include "pages/Pages.h"

namespace kiv::server {

namespace {

/// In the order of PageId.
constexpr PageClass All[] = {
    {{0x43140237, 0xDFF4, 0x42A7, {0xB7, 0x4A, 0x13, 0xF6, 0x1E, 0x57, 0x3E, 0xC2}},
     PageId::SetDT_General,
     L"Kiv Set Date/Time Control General Property Page"},
    {{0xE6AF83F7, 0xE0B1, 0x4E29, {0x9A, 0x56, 0x93, 0x85, 0xF2, 0x4F, 0x08, 0x27}},
     PageId::SetDT_Options,
     L"Kiv Set Date/Time Control Options Property Page"},
    {{0xDDA31EC4, 0x1BC8, 0x43D0, {0xA3, 0x74, 0x1F, 0x9E, 0xAC, 0x39, 0x94, 0xE7}},
     PageId::SetDT_VexaData,
     L"Kiv Set Date/Time Control Vexa Data Property Page"},
    {{0x9B3D5DDF, 0x6173, 0x4CD7, {0xA4, 0x53, 0x0D, 0xB9, 0x23, 0x5B, 0xC4, 0x74}},
     PageId::DT_VexaValues,
     L"Kiv Date/Time Controls Vexa Values Property Page"},
    {{0x1AED23F4, 0x32C4, 0x4C87, {0x93, 0x69, 0xC8, 0x03, 0x3E, 0xF5, 0xB5, 0x57}},
     PageId::ShowDT_General,
     L"Kiv Show Date/Time Control General Property Page"},
    {{0x6E0DFF8F, 0x9609, 0x4AC1, {0x8A, 0x2E, 0x36, 0xF0, 0x0C, 0xFB, 0xE1, 0xE8}},
     PageId::ShowDT_Options,
     L"Kiv Show Date/Time Control Options Property Page"},
    {{0x0EA91F87, 0x6831, 0x49DC, {0x8A, 0x47, 0xAF, 0x56, 0x1F, 0xAE, 0xAB, 0xBD}},
     PageId::ShowDT_VexaData,
     L"Kiv Show Date/Time Control Vexa Data Property Page"},
    {{0x56A7E2FF, 0xBA73, 0x47AA, {0x87, 0x8F, 0x86, 0xAD, 0x39, 0xF7, 0x1D, 0x6D}},
     PageId::ShowDT_ProtoValues,
     L"Kiv Show Date/Time Control Proto Values Property Page"},
};

}  // namespace

std::span<const PageClass> PageClasses() noexcept {
    return All;
}

const PageClass& ClassOf(PageId page) noexcept {
    return All[static_cast<std::size_t>(page)];
}

std::optional<CLSID> PageClassOfProperty(ControlKind control, std::u16string_view property) noexcept {
    const std::optional<PageId> page = PageOfProperty(control, property);
    if (!page) return std::nullopt;
    return ClassOf(*page).clsid;
}

}  // namespace kiv::server
