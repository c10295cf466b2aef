// One control on the screen, from its section of the file to its end.
//
// Its keys go in and out through a property bag over the section. The control is made anew for every change between
// design and run mode, so that what happens while the screen runs never reaches the file by itself.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "screenhost/ControlSite.h"
#include "screenhost/DesignModel.h"
#include "screenhost/DeviceLink.h"
#include "screenhost/EventSink.h"
#include "screenhost/Extender.h"
#include "screenhost/HostLog.h"
#include "screenhost/InPlaceFrame.h"
#include "screenhost/ScreenFile.h"

namespace screenhost {

/// What all controls of a screen share. Outlives them.
struct ScreenContext {
    HWND view = nullptr;
    InPlaceFrame* frame = nullptr;
    HostLog* log = nullptr;
    DeviceLink* device = nullptr;
    bool userMode = true;
    comkit::ComPtr<IFontDisp> font;
    OLE_COLOR backColor = 0x8000000F;  ///< button face
    OLE_COLOR foreColor = 0x80000012;  ///< button text
    /// Throws TextError for a name that nobody knows.
    std::function<CLSID(const std::string& progId)> resolve;
    /// A property page, from whoever has it. Throws comkit::ComError.
    std::function<comkit::ComPtr<IPropertyPage>(REFCLSID clsid)> createPage;
    /// A control took another place or size.
    std::function<void()> onLayout;
    /// A control asks for its property frame.
    std::function<void()> onProperties;
};

class HostedControl final : private SiteOwner, private ExtenderOwner {
public:
    /// The section must live as long as the control, or until Rebind.
    HostedControl(ScreenContext& context, ScreenSection& section);
    HostedControl(const HostedControl&) = delete;
    HostedControl& operator=(const HostedControl&) = delete;
    ~HostedControl() { Close(); }

    /// Creates, loads and shows the control. What goes wrong is in Failure() and in the log.
    void Open();
    void Close() noexcept;
    bool IsOpen() const noexcept { return static_cast<bool>(m_control); }
    const std::string& Failure() const noexcept { return m_failure; }

    /// Writes place and keys into the section. A control that could not be opened writes its place, if it was moved.
    void Save();
    /// The same control in another file.
    void Rebind(ScreenSection& section) noexcept { m_section = &section; }

    std::string Name() const override { return m_section->Name(); }
    std::string ProgId() const;
    RECT PixelRect() const override { return m_pixels; }
    void SetPixelRect(const RECT& pixels);
    /// In twips.
    Box TwipBox() const noexcept;
    /// Offers the control another place; it may take another size.
    void MoveTo(const Box& box);

    /// Extender and control in one. Throws TextError while the control is not open.
    IDispatch& Members() const;
    /// The control alone; null while it is not open.
    IDispatch* ControlDispatch() const override { return m_dispatch.Get(); }
    /// Null while the control has no window.
    HWND Window() const noexcept;

    /// The control itself, for its property pages; null while it is not open.
    comkit::ComPtr<IUnknown> Object() const { return m_control.As<IUnknown>(); }
    /// Has the control ask for its property frame. False when it has no such verb.
    bool ShowProperties();
    /// Throws TextError when it has none. Comes back when the box is closed.
    void ShowAboutBox();

    /// Alt and a letter: true if the control took it.
    bool OnMnemonic(MSG& message);
    void OnAmbientChange(DISPID id);

private:
    void Create();
    void Load();
    void Connect();
    void Place();
    void SizeAtOpening();
    void PlaceAgain();
    void SavePlace(std::string& last);
    void Activate();
    bool HasOwnKeys() const;
    void OnEvent(const EventCall& call);
    void SupplyDeviceDateTime(const EventCall& call) const;
    void TakePixels(const RECT& pixels);

    // SiteOwner
    HWND ViewWindow() const override { return m_context.view; }
    IOleInPlaceFrame& Frame() const override { return *m_context.frame; }
    void OnPosRectChange(const RECT& pixels) override;
    void OnUIActivated(bool) override {}
    void OnInPlaceActivated(bool) override {}
    void OnAccelerators() override;
    void OnPropertyChanged(DISPID id) override;
    bool MayUIActivate() const override { return m_context.userMode; }
    bool OnShowPropertyFrame() override;
    IDispatch& Extender() const override { return *m_extender; }
    comkit::Variant Ambient(DISPID id) const override;

    // ExtenderOwner
    double GetPlace(std::size_t side) const override { return m_twips.at(side); }
    void SetPlace(std::size_t side, double twips) override;
    bool IsVisible() const override;
    void SetVisible(bool visible) override;

    ScreenContext& m_context;
    ScreenSection* m_section;
    std::string m_failure;
    std::vector<std::string> m_knownKeys;

    std::array<double, 4> m_twips{};  ///< left, top, width, height
    RECT m_pixels{};                  ///< in the view's client area

    comkit::ComPtr<ControlSite> m_site;
    comkit::ComPtr<screenhost::Extender> m_extender;
    comkit::ComPtr<IOleObject> m_control;
    comkit::ComPtr<IOleInPlaceObject> m_inPlace;
    comkit::ComPtr<IDispatch> m_dispatch;
    comkit::ComPtr<EventSink> m_events;
    comkit::ComPtr<IConnectionPoint> m_notifyPoint;
    DWORD m_notifyCookie = 0;
    CONTROLINFO m_accelerators{};
    bool m_bLoading = false;
    bool m_bMoved = false;
    bool m_bLastWasMove = false;
};

}  // namespace screenhost
