// What the main window shows beside the screen: the device panel, and the log with its filter.
#include "screenhost/Clipboard.h"
#include "screenhost/MainWindow.h"
#include "screenhost/ResourceIds.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowSearch.h"

namespace screenhost {

DevicePanel& MainWindow::Device() {
    if (!IsWindowVisible(m_devicePanel->Handle())) throw TextError("the device panel is not shown");
    return *m_devicePanel;
}

void MainWindow::ShowDevicePanel(bool shown) {
    const bool hadFocus = IsChild(m_devicePanel->Handle(), GetFocus()) != FALSE;
    if (!shown && hadFocus) SetFocus(m_panelButton);
    if (shown) m_devicePanel->Refresh();
    ShowWindow(m_devicePanel->Handle(), shown ? SW_SHOWNA : SW_HIDE);
    Layout();
    FitToContents();
    SendMessageW(m_panelButton, BM_SETCHECK, shown ? BST_CHECKED : BST_UNCHECKED, 0);
    CheckMenuItem(GetMenu(Handle()), CMD_DEVICE_PANEL,
                  MF_BYCOMMAND | static_cast<UINT>(shown ? MF_CHECKED : MF_UNCHECKED));
}

void MainWindow::OnFilterChange() {
    if (!m_logPanel) return;
    m_logPanel->SetFilter(CaptionOf(m_filter));
    ShowLogTitle();
}

void MainWindow::CopyLog() {
    const std::string text = m_logPanel->CopiedText();
    if (text.empty()) return ShowStatus("There is nothing in the log to copy.");
    ShowStatus(PutClipboardText(Handle(), text) ? "The log was copied." : "Another program holds the clipboard.");
}

/// How many lines a filter leaves.
void MainWindow::ShowLogTitle() {
    std::string text = "Events and device log";
    if (m_logPanel->IsFiltered())
        text += ": " + std::to_string(m_logPanel->ShownLines()) + " of " + std::to_string(m_logPanel->AllLines()) +
                " lines";
    std::wstring wide = Wide(text);
    if (wide == m_logTitleText) return;
    m_logTitleText = std::move(wide);
    SetWindowTextW(m_logTitle, m_logTitleText.c_str());
}

}  // namespace screenhost
