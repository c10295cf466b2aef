// The host's window: buttons, the screen, the palette beside it, the log, the status bar; and the property frame over
// it.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "comkit/Handle.h"
#include "screenhost/DevicePanel.h"
#include "screenhost/ExchangeOutcome.h"
#include "screenhost/HostSettings.h"
#include "screenhost/LogPanel.h"
#include "screenhost/PalettePanel.h"
#include "screenhost/PropertyFrame.h"
#include "screenhost/ScreenView.h"
#include "screenhost/WindowBase.h"

namespace screenhost {

/// Throws TextError when there is no such file; what is wrong inside goes into the log.
ScreenFile ReadScreen(const std::string& fileName, HostLog& log);

class MainWindow final : public WindowBase {
public:
    /// context, log and device outlive the window. Throws TextError.
    MainWindow(ScreenContext& context, ScreenFile file, std::string fileName);
    ~MainWindow() override;

    /// Remembers the screens that are opened and where the window stands. They outlive the window. To be called before
    /// Open.
    void UseSettings(HostSettings& settings);

    /// Opens the controls and shows the window, large enough for them.
    void Open();

    /// Keys for controls and commands, before they are dispatched. True: done.
    bool Filter(MSG& message);

    ScreenView& View() noexcept { return *m_view; }
    void SwitchMode(bool userMode);
    /// The screen as it is laid out. Throws TextError.
    void Save(const std::string& fileName);
    /// Another screen, whatever becomes of the present one. Throws TextError.
    void OpenFile(const std::string& fileName);
    /// An empty screen, laid out; whatever becomes of the present one.
    void NewFile();
    /// What a menu item or a button does. Throws TextError.
    void OnCommand(int command);

    void SetPalette(std::vector<PaletteClass> classes) { m_palette->SetClasses(std::move(classes)); }
    PalettePanel& Palette() noexcept { return *m_palette; }
    /// Throws TextError while the panel is not shown.
    DevicePanel& Device();
    std::string StatusText() const;
    /// Null while no property frame is open.
    PropertyFrame* Frame() noexcept { return m_properties && m_properties->IsOpen() ? m_properties.get() : nullptr; }
    /// Fetches what is new from the device and shows it.
    void Poll();
    void ShowStatus(const std::string& text);
    /// While a script plays nobody can answer a message box; messages go to the log only.
    void SetQuiet(bool quiet) noexcept { m_bQuiet = quiet; }

private:
    static constexpr int SmallestWidth = 560;  ///< at 96 dots to the inch
    static constexpr UINT_PTR PollTimer = 1;
    static constexpr UINT FrameClosedMessage = WM_APP + 1;
    enum StatusPart { TextPart, PlacePart, ModePart, ClockPart, StatusParts };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void ConnectDesign();
    bool OnFileCommand(int command);
    bool OnRecentCommand(int command);
    void Remember(const std::string& fileName);
    void ShowRecent();
    void ShowAsRemembered();
    void RememberWindow();
    void TellProblems(std::size_t count);
    bool OnDesignCommand(int command);
    bool OnAlignCommand(int command);
    void OnDesignChange();
    void OnClassChosen();
    void OnPlaceNow();
    void ShowProperties();
    void OpenPropertyFrame();
    void ShowAboutControl();
    void ShowControlMenu(POINT screen);
    void FocusNextPane();
    void ShowPlace();
    void SaveDocument();
    /// False when the user would rather go on with the present document.
    bool MayDrop();
    void OnClose();
    void OnActivate(bool active);
    bool OnSplitterCursor(LPARAM lParam) const;
    void OnExchange(bool upload);
    void FollowExchange();
    void EndExchange();
    void ShowDevicePanel(bool shown);
    void OnFilterChange();
    void CopyLog();
    void ShowLogTitle();
    void LayoutLog(int width, int titleTop, int listTop, int bottom);
    void CreateParts();
    void Layout();
    void LayoutButtons(int width);
    void FitToContents();
    void UpdateCommands();
    void UpdateTitle();
    void ShowClock();
    void SaveAs();
    void SavePictureAs();
    void EnableCommands(std::initializer_list<UINT> commands, bool enabled);
    void Report(const std::string& text);
    void ShowInBox(HWND over, const std::string& text) const;
    void PaintLines();
    SIZE ButtonSize(HWND button) const;
    int BarHeight() const;
    int SideWidth() const;
    int DeviceWidth() const;
    SIZE LeastContent() const;
    bool OnSplitter(UINT message, LPARAM lParam);

    ScreenContext& m_context;
    std::string m_fileName;
    std::size_t m_problems;              ///< lines of the first screen that could not be understood
    HostSettings* m_settings = nullptr;  ///< null: nothing is remembered
    RecentFiles m_recent;
    comkit::UniqueFont m_font;
    comkit::ComPtr<InPlaceFrame> m_frame;
    HWND m_read = nullptr;
    HWND m_write = nullptr;
    HWND m_panelButton = nullptr;
    HWND m_run = nullptr;
    HWND m_design = nullptr;
    HWND m_logTitle = nullptr;
    HWND m_filterLabel = nullptr;
    HWND m_filter = nullptr;
    HWND m_copy = nullptr;
    HWND m_clear = nullptr;
    HWND m_status = nullptr;
    HWND m_lastFocus = nullptr;
    HACCEL m_accelerators = nullptr;
    HACCEL m_designAccelerators = nullptr;  ///< keys that are the controls' own at run time
    std::unique_ptr<ScreenView> m_view;
    std::optional<LogPanel> m_logPanel;
    std::optional<PalettePanel> m_palette;
    std::unique_ptr<DevicePanel> m_devicePanel;
    std::unique_ptr<PropertyFrame> m_properties;
    std::optional<ExchangeOutcome> m_exchange;  ///< while the outcome is still open
    std::size_t m_exchangeLog = 0;              ///< the first line of the log that it has not taken
    ULONGLONG m_exchangeEnd = 0;
    std::wstring m_logTitleText;
    int m_logHeight;
    bool m_bOpen = false;
    bool m_bQuiet = false;
    bool m_bSplitting = false;
};

}  // namespace screenhost
