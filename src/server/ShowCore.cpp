#include "server/ShowCore.h"

#include <KivDateTime.h>

#include "server/AccessPart.h"
#include "server/ResourceNumbers.h"
#include "server/ShowDispatchPart.h"
#include "server/ShowEvents.h"
#include "server/ShowMembers.h"
#include "server/VexaSupportPart.h"
#include "showcontrol/ShowControl.h"
#include "win32/ApplicationHelpFile.h"
#include "win32/LabelSurface.h"
#include "win32/LateBoundFramework.h"
#include "win32/OleFont.h"
#include "win32/SystemClock.h"
#include "win32/SystemRegionalNames.h"

namespace kiv::server {

namespace {

class ShowCore final : public ControlCore {
public:
    explicit ShowCore(ControlHost& host)
        : m_surface(host.SiteOfSurface()),
          m_events(host.Events()),
          m_control({m_surface, host.ContainerSide(), m_clock, m_names, m_framework, m_help}, m_events),
          m_dispatch(host, m_control),
          m_support(host, m_control),
          m_access(host, m_surface) {
        // Whoever asks for the control's font is given an object, whether or not the container has one to offer.
        m_surface.SetFont(win32::DefaultFont());
    }

    void* FindInterface(REFIID iid) noexcept override {
        void* found = m_dispatch.Find(iid);
        if (!found) found = m_support.Find(iid);
        return found ? found : m_access.Find(iid);
    }
    win32::HostedSurface& Surface() noexcept override { return m_surface; }
    void InitProperties() override { m_control.InitProperties(); }
    void ReadProperties(const PropertyBag& bag) override { m_control.ReadProperties(bag); }
    void WriteProperties(PropertyBag& bag) const override { m_control.WriteProperties(bag); }
    void OnShown() override {}
    void OnUserModeChanged() override { m_control.OnUserModeChanged(); }
    void OnFontChanged() override { m_control.SetFont(m_control.GetFont()); }
    void OnSettingsChanged() override {
        win32::SystemRegionalNames::ForgetTables();
        m_control.OnRegionalSettingsChanged();
    }
    void Terminate() noexcept override { m_control.Terminate(); }
    DISPID MemberOfKey(std::u16string_view key) const noexcept override { return ShowMemberOfKey(key); }

private:
    win32::SystemClock m_clock;
    win32::SystemRegionalNames m_names;
    win32::LateBoundFramework m_framework;
    win32::ApplicationHelpFile m_help;
    win32::LabelSurface m_surface;
    ShowEvents m_events;
    ShowControl m_control;
    ShowDispatchPart m_dispatch;
    VexaSupportPart m_support;
    AccessPart m_access;
};

}  // namespace

std::unique_ptr<ControlCore> CreateShowCore(ControlHost& host) {
    return std::make_unique<ShowCore>(host);
}

const ControlClass ShowControlClass{
    CLSID_KivShowDateTime,
    IID__KivShowDateTime,
    DIID___KivShowDateTime,
    L"KivShowDateTime",
    L"Kiv Show Date/Time Control",
    OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
        OLEMISC_SETCLIENTSITEFIRST | OLEMISC_NOUIACTIVATE,
    BitmapShowControl,
    ControlKind::Show,
    &CreateShowCore,
};

}  // namespace kiv::server
