// What the main window remembers between sessions, where it may: its place, and the screens that were used last.
#include <algorithm>
#include <array>

#include "screenhost/MainWindow.h"
#include "screenhost/ResourceIds.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr int RecentPosition = 2;  // in the File menu, behind New and Open

/// The name by which a later session finds the file, wherever it is started.
std::string FullPath(const std::string& fileName) {
    std::array<wchar_t, 1024> path{};
    const DWORD length =
        GetFullPathNameW(Wide(fileName).c_str(), static_cast<DWORD>(path.size()), path.data(), nullptr);
    return length == 0 || length >= path.size() ? fileName : Narrow(std::wstring_view(path.data(), length));
}

}  // namespace

void MainWindow::UseSettings(HostSettings& settings) {
    m_settings = &settings;
    m_recent = settings.Recent();
    ShowRecent();
    Remember(m_fileName);
}

void MainWindow::Remember(const std::string& fileName) {
    if (!m_settings || fileName.empty()) return;
    m_recent = m_settings->Recent();  // another host may have added to them
    m_recent.Add(FullPath(fileName));
    m_settings->SetRecent(m_recent);
    ShowRecent();
}

void MainWindow::ShowRecent() {
    const HMENU menu = GetSubMenu(GetSubMenu(GetMenu(Handle()), 0), RecentPosition);
    while (DeleteMenu(menu, 0, MF_BYPOSITION)) {
    }
    const std::vector<std::string>& names = m_recent.Names();
    for (std::size_t i = 0; i < names.size(); ++i)
        AppendMenuW(menu, MF_STRING, CMD_RECENT + i, Wide(RecentLabel(i, names[i])).c_str());
    if (names.empty()) AppendMenuW(menu, MF_STRING | MF_GRAYED, 0, L"(none)");
}

/// A screen that cannot be opened any more is forgotten.
bool MainWindow::OnRecentCommand(int command) {
    const auto index = static_cast<std::size_t>(command - CMD_RECENT);
    if (command < CMD_RECENT || index >= m_recent.Names().size()) return false;
    if (!MayDrop()) return true;
    const std::string name = m_recent.Names()[index];
    try {
        OpenFile(name);
    } catch (const TextError&) {
        m_recent.Remove(name);
        m_settings->SetRecent(m_recent);
        ShowRecent();
        throw;
    }
    return true;
}

/// Where the window was left, but never smaller than its contents need, and only where a monitor is.
void MainWindow::ShowAsRemembered() {
    const std::optional<WindowMemory> memory = m_settings ? m_settings->Window() : std::nullopt;
    if (!memory) {
        ShowWindow(Handle(), SW_SHOWNORMAL);
        return;
    }
    m_logHeight = memory->logHeight;
    WINDOWPLACEMENT placement{};
    placement.length = sizeof(placement);
    GetWindowPlacement(Handle(), &placement);
    RECT& place = placement.rcNormalPosition;
    RECT wanted{};
    wanted.left = memory->left;
    wanted.top = memory->top;
    wanted.right = wanted.left + std::max(WidthOf(place), static_cast<int>(memory->width));
    wanted.bottom = wanted.top + std::max(HeightOf(place), static_cast<int>(memory->height));
    if (MonitorFromRect(&wanted, MONITOR_DEFAULTTONULL)) place = wanted;
    placement.showCmd = memory->isMaximized ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    SetWindowPlacement(Handle(), &placement);
    Layout();
    if (memory->showsDevice) ShowDevicePanel(true);
}

void MainWindow::RememberWindow() {
    if (!m_settings) return;
    WINDOWPLACEMENT placement{};
    placement.length = sizeof(placement);
    if (!GetWindowPlacement(Handle(), &placement)) return;
    const RECT& place = placement.rcNormalPosition;
    WindowMemory memory;
    memory.left = place.left;
    memory.top = place.top;
    memory.width = WidthOf(place);
    memory.height = HeightOf(place);
    memory.logHeight = m_logHeight;
    memory.isMaximized = placement.showCmd == SW_SHOWMAXIMIZED || (placement.flags & WPF_RESTORETOMAXIMIZED) != 0;
    memory.showsDevice = IsWindowVisible(m_devicePanel->Handle()) != FALSE;
    m_settings->SetWindow(memory);
}

}  // namespace screenhost
