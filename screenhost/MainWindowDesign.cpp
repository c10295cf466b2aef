// Laying a screen out, as far as the main window has to do with it: palette, property frame, menus, status.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>

#include "screenhost/ErrorText.h"
#include "screenhost/MainWindow.h"
#include "screenhost/ResourceIds.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

class LoadedMenu {
public:
    explicit LoadedMenu(int id) noexcept : m_menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id))) {}
    LoadedMenu(const LoadedMenu&) = delete;
    LoadedMenu& operator=(const LoadedMenu&) = delete;
    ~LoadedMenu() { DestroyMenu(m_menu); }
    HMENU Popup() const noexcept { return GetSubMenu(m_menu, 0); }

private:
    HMENU m_menu;
};

struct AlignCommand {
    int command;
    Alignment alignment;
};

constexpr AlignCommand AlignCommands[] = {
    {CMD_ALIGN_LEFT, Alignment::Left},      {CMD_ALIGN_RIGHT, Alignment::Right},
    {CMD_ALIGN_TOP, Alignment::Top},        {CMD_ALIGN_BOTTOM, Alignment::Bottom},
    {CMD_SAME_WIDTH, Alignment::SameWidth}, {CMD_SAME_HEIGHT, Alignment::SameHeight},
};

NewControl ControlOf(const PaletteClass& chosen) {
    return {chosen.progId, chosen.Stem()};
}

}  // namespace

void MainWindow::ConnectDesign() {
    DesignSession& design = m_view->Design();
    design.onChange = [this] { OnDesignChange(); };
    design.onProperties = [this] { ShowProperties(); };
    design.onMenu = [this](POINT screen) { ShowControlMenu(screen); };
    design.onProblem = [this](const std::string& text) { Report(text); };
    m_context.onProperties = [this] { OpenPropertyFrame(); };
    m_palette->onChoice = [this] { OnClassChosen(); };
    m_palette->onPlaceNow = [this] { OnPlaceNow(); };
}

void MainWindow::OnDesignChange() {
    if (!m_view) return;
    // One class is placed once.
    if (!m_view->Design().IsPlacing() && m_palette->Chosen()) {
        m_palette->ChoosePointer();
        ShowStatus({});
    }
    UpdateTitle();
    UpdateCommands();
}

void MainWindow::OnClassChosen() {
    const PaletteClass* const chosen = m_palette->Chosen();
    m_view->Design().Choose(chosen ? ControlOf(*chosen) : NewControl{});
    ShowStatus(chosen ? "Click or draw where it goes." : "");
}

void MainWindow::OnPlaceNow() {
    if (const PaletteClass* const chosen = m_palette->Chosen()) m_view->Design().PlaceNow(ControlOf(*chosen));
    m_view->Design().Focus();
}

bool MainWindow::OnAlignCommand(int command) {
    const auto* const found = std::ranges::find(AlignCommands, command, &AlignCommand::command);
    if (found == std::end(AlignCommands)) return false;
    m_view->Design().Align(found->alignment);
    return true;
}

bool MainWindow::OnDesignCommand(int command) {
    if (m_context.userMode) return false;
    DesignSession& design = m_view->Design();
    switch (command) {
        case CMD_UNDO:
            design.Undo();
            return true;
        case CMD_REDO:
            design.Redo();
            return true;
        case CMD_CUT:
            design.Cut();
            return true;
        case CMD_COPY:
            design.Copy();
            return true;
        case CMD_PASTE:
            design.Paste();
            return true;
        case CMD_DELETE:
            design.Delete();
            return true;
        case CMD_SELECT_ALL:
            design.Model().SelectAll();
            design.Select(std::vector<std::string>(design.Model().Selected()));
            return true;
        case CMD_PROPERTIES:
            ShowProperties();
            return true;
        case CMD_ABOUT_CONTROL:
            ShowAboutControl();
            return true;
        case CMD_SNAP:
            design.Model().SnapToGrid(!design.Model().SnapsToGrid());
            UpdateCommands();
            return true;
        default:
            return OnAlignCommand(command);
    }
}

/// A single control is asked to bring up its frame itself, as its verb promises; several have the frame in common.
void MainWindow::ShowProperties() {
    const std::vector<HostedControl*> selection = m_view->Design().Selection();
    if (selection.empty()) return ShowStatus("Select a control first.");
    if (selection.size() == 1 && selection.front()->ShowProperties()) return;
    if (!Frame()) OpenPropertyFrame();
}

void MainWindow::OpenPropertyFrame() {
    if (m_context.userMode || Frame()) return;
    PropertyFrameRequest request;
    const std::vector<HostedControl*> selection = m_view->Design().Selection();
    for (const HostedControl* control : selection)
        if (auto object = control->Object()) request.objects.push_back(std::move(object));
    if (request.objects.size() != selection.size())
        return Report("A control that could not be opened has no properties to show.");
    request.pages = CommonPages(request.objects);
    if (request.pages.empty())
        return Report(selection.size() == 1 ? selection.front()->Name() + " has no property pages."
                                            : std::string("The selected controls have no property pages in common."));
    request.owner = Handle();
    request.title = Wide(selection.size() == 1 ? selection.front()->Name() + " - Properties"
                                               : std::to_string(selection.size()) + " Controls - Properties");
    request.font = m_font.Get();
    request.create = m_context.createPage;
    request.report = [this](HWND over, const std::string& text) {
        m_context.log->Add(over ? "error" : "host", text);
        if (!over) return;
        ShowStatus(text);
        ShowInBox(over, text);
    };
    request.applied = [this] {
        m_view->Design().Commit("Edit Properties");
        m_view->OnLayout();
        Poll();
    };
    request.closed = [this] { PostMessageW(Handle(), FrameClosedMessage, 0, 0); };
    try {
        m_properties = std::make_unique<PropertyFrame>(std::move(request));
        m_properties->Open();
    } catch (const TextError& error) {
        Report(error.what());
    }
}

void MainWindow::ShowAboutControl() {
    const std::vector<HostedControl*> selection = m_view->Design().Selection();
    if (selection.size() == 1) selection.front()->ShowAboutBox();
}

void MainWindow::ShowControlMenu(POINT screen) {
    const LoadedMenu menu(IDR_CONTROL_MENU);
    const std::size_t selected = m_view->Design().Selection().size();
    const auto enable = [&menu](UINT command, bool enabled) {
        EnableMenuItem(menu.Popup(), command, MF_BYCOMMAND | static_cast<UINT>(enabled ? MF_ENABLED : MF_GRAYED));
    };
    for (const UINT command : {UINT{CMD_PROPERTIES}, UINT{CMD_CUT}, UINT{CMD_COPY}, UINT{CMD_DELETE}})
        enable(command, selected > 0);
    enable(CMD_ABOUT_CONTROL, selected == 1);
    TrackPopupMenu(menu.Popup(), TPM_RIGHTBUTTON, static_cast<int>(screen.x), static_cast<int>(screen.y), 0, Handle(),
                   nullptr);
}

/// From the screen to the palette, the device and the log and round again.
void MainWindow::FocusNextPane() {
    const HWND screen = m_context.userMode ? m_view->Handle() : m_view->Design().InputWindow();
    const std::array<HWND, 4> panes{screen, m_palette->List(), m_devicePanel->List(), m_logPanel->Handle()};
    const HWND focus = GetFocus();
    const HWND device = m_devicePanel->Handle();
    const auto isHere = [&](HWND pane) {
        return focus == pane || IsChild(pane, focus) || (pane == panes[2] && IsChild(device, focus));
    };
    std::size_t next = 0;
    for (std::size_t i = 0; i < panes.size(); ++i)
        if (isHere(panes[i])) next = i + 1;
    next %= panes.size();
    while (!IsWindowVisible(panes[next])) next = (next + 1) % panes.size();
    const HWND inside = m_context.userMode && next == 0 ? GetNextDlgTabItem(panes[0], nullptr, FALSE) : nullptr;
    SetFocus(inside ? inside : panes[next]);
}

/// Place and size of the leading control, or of what is being drawn.
void MainWindow::ShowPlace() {
    std::string text;
    const DesignModel& model = m_view->Design().Model();
    const DesignItem* const leading = m_context.userMode ? nullptr : model.Leading();
    const bool draws = model.Dragging() == DesignModel::Drag::Placement;
    if (draws || leading) {
        const Box& box = draws ? model.Band() : leading->box;
        const std::size_t count = model.Selected().size();
        if (!draws) text = count > 1 ? std::to_string(count) + " controls" : leading->name;
        text += (text.empty() ? "" : ": ") + std::to_string(box.left) + ", " + std::to_string(box.top) + "  " +
                std::to_string(box.width) + " x " + std::to_string(box.height) + " twips";
    }
    SendMessageW(m_status, SB_SETTEXTW, PlacePart, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

}  // namespace screenhost
