// The container's end of a control: client site, control site, ambient properties, extender.
//
// What is read answers with a default where the container offers nothing or fails.
#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "comkit/ComPtr.h"
#include "comkit/Variant.h"
#include "platform/Font.h"
#include "platform/Geometry.h"

namespace kiv::server {

class ClientSite final {
public:
    /// Null lets go of the former site.
    void Set(IOleClientSite* site);

    const comkit::ComPtr<IOleClientSite>& Get() const noexcept { return m_pSite; }
    const comkit::ComPtr<IOleControlSite>& Control() const noexcept { return m_pControlSite; }
    explicit operator bool() const noexcept { return static_cast<bool>(m_pSite); }

    /// Empty where there is no such ambient property.
    comkit::Variant Ambient(DISPID id) const;
    /// True where the container offers no such ambient property.
    bool UserMode() const;
    /// False where the container offers no such ambient property.
    bool IsUiDead() const noexcept;
    FontPtr Font() const;
    /// The name that the container's extender gives the control; else the ambient display name; else empty.
    std::u16string InstanceName() const;
    /// Puts a property of the container's extender. Throws where there is no extender, or none with such a property.
    void SetExtenderNumber(std::u16string_view name, std::int32_t value) const;
    /// Twips to the container's position units; unchanged where the container has no units of its own.
    Point ToContainerPosition(const Point& twips) const;

private:
    comkit::ComPtr<IOleClientSite> m_pSite;
    comkit::ComPtr<IOleControlSite> m_pControlSite;
    comkit::ComPtr<IDispatch> m_pAmbients;
};

/// What a control does when its container comes, changes or goes.
class SiteListener {
public:
    /// Another site, or other ambient properties of the same.
    virtual void OnAmbientsChanged() = 0;
    /// The container is done with the control, or with this activation of it.
    virtual void OnClosing() noexcept = 0;

protected:
    ~SiteListener() = default;
};

}  // namespace kiv::server
