#include "server/SetCore.h"

#include <KivDateTime.h>

#include "server/ResourceNumbers.h"
#include "server/SetDispatchPart.h"
#include "server/SetEvents.h"
#include "server/SetMembers.h"
#include "server/VexaSupportPart.h"
#include "setcontrol/SetControl.h"
#include "win32/ApplicationHelpFile.h"
#include "win32/ControlSurface.h"
#include "win32/LateBoundFramework.h"
#include "win32/MessageTimer.h"
#include "win32/OleFont.h"
#include "win32/RegistrySettings.h"
#include "win32/SystemClock.h"
#include "win32/SystemTimeZone.h"

namespace kiv::server {

namespace {

class SetCore final : public ControlCore {
public:
    explicit SetCore(ControlHost& host)
        : m_surface(host.SiteOfSurface()),
          m_events(host.Events()),
          m_control({m_surface, host.ContainerSide(), m_clock, m_timeZone, m_timers, m_settings, m_framework, m_help},
                    m_events),
          m_dispatch(host, m_control),
          m_support(host, m_control) {
        // Whoever asks for the control's font is given an object, whether or not the container has one to offer.
        m_surface.SetFont(win32::DefaultFont());
    }

    void* FindInterface(REFIID iid) noexcept override {
        void* const found = m_dispatch.Find(iid);
        return found ? found : m_support.Find(iid);
    }
    win32::HostedSurface& Surface() noexcept override { return m_surface; }
    void InitProperties() override { m_control.InitProperties(); }
    void ReadProperties(const PropertyBag& bag) override { m_control.ReadProperties(bag); }
    void WriteProperties(PropertyBag& bag) const override { m_control.WriteProperties(bag); }
    void OnShown() override { m_control.OnShown(); }
    void OnUserModeChanged() override { m_control.OnUserModeChanged(); }
    void OnFontChanged() override { m_control.SetFont(m_control.GetFont()); }
    void Terminate() noexcept override { m_control.Terminate(); }
    DISPID MemberOfKey(std::u16string_view key) const noexcept override { return SetMemberOfKey(key); }

private:
    win32::SystemClock m_clock;
    win32::SystemTimeZone m_timeZone;
    win32::MessageTimerFactory m_timers;
    win32::RegistrySettings m_settings;
    win32::LateBoundFramework m_framework;
    win32::ApplicationHelpFile m_help;
    win32::ControlSurface m_surface;
    SetEvents m_events;
    SetControl m_control;
    SetDispatchPart m_dispatch;
    VexaSupportPart m_support;
};

}  // namespace

std::unique_ptr<ControlCore> CreateSetCore(ControlHost& host) {
    return std::make_unique<SetCore>(host);
}

const ControlClass SetControlClass{
    CLSID_KivSetDateTime,
    IID__KivSetDateTime,
    DIID___KivSetDateTime,
    L"KivSetDateTime",
    L"Kiv Set Date/Time Control",
    OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
        OLEMISC_SETCLIENTSITEFIRST,
    BitmapSetControl,
    ControlKind::Set,
    &CreateSetCore,
};

}  // namespace kiv::server
