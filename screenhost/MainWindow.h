// The host's window: buttons, the screen, the log, the status bar.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "comkit/Handle.h"
#include "screenhost/LogPanel.h"
#include "screenhost/ScreenView.h"
#include "screenhost/WindowBase.h"

namespace screenhost {

class MainWindow final : public WindowBase {
public:
    /// context, log and device outlive the window. Throws TextError.
    MainWindow(ScreenContext& context, ScreenFile file, std::string fileName);
    ~MainWindow() override;

    /// Opens the controls and shows the window, large enough for them.
    void Open();

    /// Keys for controls and commands, before they are dispatched. True: done.
    bool Filter(MSG& message);

    ScreenView& View() noexcept { return *m_view; }
    void SwitchMode(bool userMode);
    /// Throws TextError.
    void Save(const std::string& fileName);
    /// Fetches what is new from the device and shows it.
    void Poll();
    void ShowStatus(const std::string& text);
    /// While a script plays nobody can answer a message box; messages go to the log only.
    void SetQuiet(bool quiet) noexcept { m_bQuiet = quiet; }

private:
    static constexpr int SmallestWidth = 560;  ///< at 96 dots to the inch

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int command);
    void OnExchange(bool upload);
    void CreateParts();
    void Layout();
    void LayoutButtons(int width);
    void FitToContents();
    void UpdateCommands();
    void UpdateTitle();
    void ShowClock();
    void SaveAs();
    void SavePictureAs();
    void Report(const std::string& text);
    void PaintLines();
    SIZE ButtonSize(HWND button) const;
    int BarHeight() const;
    bool OnSplitter(UINT message, LPARAM lParam);

    ScreenContext& m_context;
    std::string m_fileName;
    comkit::UniqueFont m_font;
    comkit::ComPtr<InPlaceFrame> m_frame;
    HWND m_read = nullptr;
    HWND m_write = nullptr;
    HWND m_run = nullptr;
    HWND m_design = nullptr;
    HWND m_logTitle = nullptr;
    HWND m_clear = nullptr;
    HWND m_status = nullptr;
    HACCEL m_accelerators = nullptr;
    std::unique_ptr<ScreenView> m_view;
    std::optional<LogPanel> m_logPanel;
    int m_logHeight;
    bool m_bOpen = false;
    bool m_bQuiet = false;
    bool m_bSplitting = false;
};

}  // namespace screenhost
