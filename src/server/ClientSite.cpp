#include "server/ClientSite.h"

#include <array>
#include <cmath>
#include <utility>

#include "comkit/Dispatch.h"
#include "platform/HostError.h"
#include "server/Extent.h"
#include "win32/OleFont.h"

namespace kiv::server {

namespace {

std::u16string TextOf(const comkit::Variant& value) {
    comkit::Variant text;
    if (FAILED(text.ConvertFrom(value.Get(), VT_BSTR))) return {};
    return std::u16string(comkit::ViewOf(text.Get().bstrVal));
}

std::u16string ExtenderName(IOleControlSite& site) {
    comkit::ComPtr<IDispatch> extender;
    if (FAILED(site.GetExtendedControl(extender.Put())) || !extender) return {};
    try {
        return TextOf(comkit::Call(*extender, L"Name"));
    } catch (const comkit::ComError&) {
        return {};
    }
}

}  // namespace

void ClientSite::Set(IOleClientSite* site) {
    // Built aside and swapped in: letting go of the former site may re-enter.
    ClientSite next;
    next.m_pSite = comkit::ComPtr<IOleClientSite>(site);
    next.m_pControlSite = comkit::ComPtr<IOleControlSite>::From(site);
    next.m_pAmbients = comkit::ComPtr<IDispatch>::From(site);
    std::swap(*this, next);
}

comkit::Variant ClientSite::Ambient(DISPID id) const {
    if (!m_pAmbients) return {};
    const comkit::ComPtr<IDispatch> ambients = m_pAmbients;
    try {
        return comkit::InvokeWith(*ambients, id, DISPATCH_PROPERTYGET, std::array<VARIANT, 0>{});
    } catch (const comkit::ComError&) {
        return {};
    }
}

bool ClientSite::UserMode() const {
    const comkit::Variant mode = Ambient(DISPID_AMBIENT_USERMODE);
    comkit::Variant flag;
    if (mode.Type() == VT_EMPTY || FAILED(flag.ConvertFrom(mode.Get(), VT_BOOL))) return true;
    return flag.Get().boolVal != VARIANT_FALSE;
}

bool ClientSite::IsUiDead() const noexcept {
    try {
        const comkit::Variant dead = Ambient(DISPID_AMBIENT_UIDEAD);
        comkit::Variant flag;
        return SUCCEEDED(flag.ConvertFrom(dead.Get(), VT_BOOL)) && flag.Get().boolVal != VARIANT_FALSE;
    } catch (...) {
        return false;
    }
}

FontPtr ClientSite::Font() const {
    const comkit::Variant font = Ambient(DISPID_AMBIENT_FONT);
    if (font.Type() != VT_DISPATCH && font.Type() != VT_UNKNOWN) return nullptr;
    return win32::WrapFont(font.Get().punkVal);
}

std::u16string ClientSite::InstanceName() const {
    if (const auto site = m_pControlSite) {
        std::u16string name = ExtenderName(*site);
        if (!name.empty()) return name;
    }
    const comkit::Variant name = Ambient(DISPID_AMBIENT_DISPLAYNAME);
    return name.Type() == VT_EMPTY ? std::u16string() : TextOf(name);
}

void ClientSite::SetExtenderNumber(std::u16string_view name, std::int32_t value) const {
    const auto site = m_pControlSite;
    comkit::ComPtr<IDispatch> extender;
    if (site) comkit::ThrowIfFailed(site->GetExtendedControl(extender.Put()));
    if (!extender) throw HostError(ErrorNumber::ObjectNotSet);
    comkit::Put(*extender, std::wstring(comkit::ToWide(name)).c_str(), value);
}

Point ClientSite::ToContainerPosition(const Point& twips) const {
    if (const auto site = m_pControlSite) {
        POINTL himetric{HimetricOf(twips.x), HimetricOf(twips.y)};
        POINTF position{};
        const HRESULT hr =
            site->TransformCoords(&himetric, &position, XFORMCOORDS_POSITION | XFORMCOORDS_HIMETRICTOCONTAINER);
        if (SUCCEEDED(hr) && std::isfinite(position.x) && std::isfinite(position.y)) return {position.x, position.y};
    }
    return twips;
}

}  // namespace kiv::server
