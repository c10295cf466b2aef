#include "screenhost/MainWindow.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <array>

#include "screenhost/Dialogs.h"
#include "screenhost/ErrorText.h"
#include "screenhost/FontObject.h"
#include "screenhost/LateBound.h"
#include "screenhost/ResourceIds.h"
#include "screenhost/TextFile.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowPicture.h"

namespace screenhost {

namespace {

constexpr UINT_PTR PollTimer = 1;
constexpr UINT PollMilliseconds = 200;
constexpr int Gap = 8;
constexpr int SplitterHeight = 6;
constexpr int SmallestLog = 90;
constexpr int SmallestView = 80;
constexpr int FirstLogHeight = 210;
constexpr int SmallestWidth = 560;
constexpr DWORD ButtonStyle = WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD ToggleStyle = BS_AUTORADIOBUTTON | BS_PUSHLIKE;

HFONT MakeMessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

void MoveTo(HWND window, int x, int y, int width, int height) {
    SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

MainWindow::MainWindow(ScreenContext& context, ScreenFile file, std::string fileName)
    : m_context(context), m_fileName(std::move(fileName)), m_font(MakeMessageFont()) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    m_accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    Create({L"ScreenHostMain", L"Screen Host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT,
            COLOR_BTNFACE, LoadMenuW(instance, MAKEINTRESOURCEW(IDR_MENU))},
           nullptr);
    m_frame = comkit::MakeObject<InPlaceFrame>(Handle(), [this](const std::string& text) { ShowStatus(text); });
    m_context.frame = m_frame.Get();
    m_logHeight = Scaled(FirstLogHeight);
    CreateParts();
    m_view = std::make_unique<ScreenView>(Handle(), m_context, std::move(file));
    SetWindowLongPtrW(m_view->Handle(), GWLP_ID, ID_VIEW);
    // Between the buttons and the log in the order of the Tab key.
    SetWindowPos(m_view->Handle(), m_design, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    UpdateTitle();
    UpdateCommands();
}

MainWindow::~MainWindow() {
    m_view.reset();
    m_frame->Close();
    m_context.frame = nullptr;
}

void MainWindow::CreateParts() {
    const HFONT font = m_font.Get();
    m_read = MakeChild(Handle(), WC_BUTTONW, L"&Read from device", ButtonStyle | WS_GROUP, CMD_READ, font);
    m_write = MakeChild(Handle(), WC_BUTTONW, L"&Write to device", ButtonStyle, CMD_WRITE, font);
    m_run = MakeChild(Handle(), WC_BUTTONW, L"Run", ToggleStyle | WS_GROUP | WS_TABSTOP, CMD_RUN, font);
    m_design = MakeChild(Handle(), WC_BUTTONW, L"Design", ToggleStyle, CMD_DESIGN, font);
    m_logTitle = MakeChild(Handle(), WC_STATICW, L"Events and device log", SS_LEFT | SS_CENTERIMAGE | WS_GROUP,
                           ID_LOG_TITLE, font);
    m_clear = MakeChild(Handle(), WC_BUTTONW, L"&Clear", ButtonStyle, CMD_CLEAR_LOG, font);
    m_logPanel.emplace(Handle(), ID_LOG, font, *m_context.log);
    m_status = MakeChild(Handle(), STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, ID_STATUS, font);
}

void MainWindow::Open() {
    m_view->OpenControls();
    m_bOpen = true;
    FitToContents();
    ShowWindow(Handle(), SW_SHOWNORMAL);
    SetForegroundWindow(Handle());
    SetFocus(m_read);
    UpdateCommands();
    Poll();
    SetTimer(Handle(), PollTimer, PollMilliseconds, nullptr);
    UpdateWindow(Handle());
}

SIZE MainWindow::ButtonSize(HWND button) const {
    const comkit::WindowDc dc(button);
    const comkit::GdiSelection selection(dc.Get(), m_font.Get());
    std::array<wchar_t, 64> text{};
    const int length = GetWindowTextW(button, text.data(), static_cast<int>(text.size()));
    SIZE size{};
    GetTextExtentPoint32W(dc.Get(), text.data(), length, &size);
    return {std::max<LONG>(size.cx + Scaled(28), Scaled(75)), size.cy + Scaled(11)};
}

int MainWindow::BarHeight() const {
    return static_cast<int>(ButtonSize(m_read).cy) + 2 * Scaled(Gap);
}

void MainWindow::LayoutButtons(int width) {
    const int gap = Scaled(Gap);
    int x = gap;
    for (HWND button : {m_read, m_write}) {
        const SIZE size = ButtonSize(button);
        MoveTo(button, x, gap, static_cast<int>(size.cx), static_cast<int>(size.cy));
        x += static_cast<int>(size.cx) + gap;
    }
    // The two halves of the switch touch.
    const SIZE half = ButtonSize(m_design);
    const int halfWidth = static_cast<int>(half.cx);
    x = std::max(x + gap, width - gap - 2 * halfWidth);
    MoveTo(m_run, x, gap, halfWidth, static_cast<int>(half.cy));
    MoveTo(m_design, x + halfWidth, gap, halfWidth, static_cast<int>(half.cy));
}

void MainWindow::Layout() {
    if (!m_view || IsIconic(Handle())) return;
    SendMessageW(m_status, WM_SIZE, 0, 0);
    RECT client{};
    GetClientRect(Handle(), &client);
    RECT status{};
    GetWindowRect(m_status, &status);
    const int width = WidthOf(client);
    const int bottom = HeightOf(client) - HeightOf(status);
    const int gap = Scaled(Gap);
    const int bar = BarHeight();
    const int titleHeight = static_cast<int>(ButtonSize(m_clear).cy);
    const int free = bottom - bar - 2 - Scaled(SplitterHeight) - titleHeight - gap;
    const int log =
        std::clamp(m_logHeight, Scaled(SmallestLog), std::max(Scaled(SmallestLog), free - Scaled(SmallestView)));
    const int listTop = bottom - gap - log + titleHeight;
    const int titleTop = listTop - titleHeight - Scaled(2);
    LayoutButtons(width);
    MoveTo(m_view->Handle(), 0, bar + 2, width, std::max(0, titleTop - Scaled(SplitterHeight) - bar - 2));
    const int clearWidth = static_cast<int>(ButtonSize(m_clear).cx);
    MoveTo(m_logTitle, gap, titleTop, width - clearWidth - 3 * gap, titleHeight - Scaled(2));
    MoveTo(m_clear, width - clearWidth - gap, titleTop - Scaled(1), clearWidth, titleHeight - Scaled(2));
    m_logPanel->SetPlace({gap, listTop, width - gap, bottom - gap});
    std::array<int, 3> parts{std::max(Scaled(120), width - Scaled(340)), std::max(Scaled(200), width - Scaled(250)),
                             -1};
    SendMessageW(m_status, SB_SETPARTS, parts.size(), reinterpret_cast<LPARAM>(parts.data()));
    InvalidateRect(Handle(), nullptr, TRUE);
}

/// Makes the window larger where the controls need it; never smaller.
void MainWindow::FitToContents() {
    if (!m_bOpen) return;
    const SIZE content = m_view->ContentSize();
    RECT view{};
    GetClientRect(m_view->Handle(), &view);
    RECT window{};
    GetWindowRect(Handle(), &window);
    const bool isFirst = !IsWindowVisible(Handle());
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    int width = WidthOf(window) + std::max(0, static_cast<int>(content.cx) - WidthOf(view));
    int height = HeightOf(window) + std::max(0, static_cast<int>(content.cy) - HeightOf(view));
    if (isFirst) {
        RECT frame{};
        frame.right = std::max<LONG>(content.cx, Scaled(SmallestWidth));
        RECT status{};
        GetWindowRect(m_status, &status);
        frame.bottom =
            BarHeight() + 2 + content.cy + Scaled(SplitterHeight) + m_logHeight + Scaled(Gap + 2) + HeightOf(status);
        AdjustWindowRectEx(&frame, WS_OVERLAPPEDWINDOW, TRUE, 0);
        width = WidthOf(frame);
        height = HeightOf(frame);
    }
    width = std::min(width, WidthOf(work));
    height = std::min(height, HeightOf(work));
    if (isFirst)
        SetWindowPos(Handle(), nullptr, static_cast<int>(work.left) + (WidthOf(work) - width) / 2,
                     static_cast<int>(work.top) + (HeightOf(work) - height) / 2, width, height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    else if (width != WidthOf(window) || height != HeightOf(window))
        SetWindowPos(Handle(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool MainWindow::Filter(MSG& message) {
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (isKey && m_context.userMode) {
        const comkit::ComPtr<IOleInPlaceActiveObject> active(m_frame->Active());
        const bool inView = IsChild(m_view->Handle(), message.hwnd) != FALSE;
        if (active && inView && active->TranslateAccelerator(&message) == S_OK) return true;
    }
    if (isKey && TranslateAcceleratorW(Handle(), m_accelerators, &message)) return true;
    if (message.message == WM_SYSCHAR && m_context.userMode)
        for (const auto& control : m_view->Controls())
            if (control->OnMnemonic(message)) return true;
    return IsDialogMessageW(Handle(), &message) != FALSE;
}

void MainWindow::SwitchMode(bool userMode) {
    if (userMode != m_context.userMode) {
        SetFocus(Handle());
        m_view->SwitchMode(userMode);
        FitToContents();
        m_context.log->Add("host", userMode ? "the screen runs" : "the screen is being laid out");
    }
    UpdateCommands();
    Poll();
}

void MainWindow::OnExchange(bool upload) {
    if (!m_context.userMode) return;
    m_context.log->Add("host", upload ? "reading from the device" : "writing to the device");
    for (const auto& control : m_view->Controls()) {
        IDispatch* const members = control->ControlDispatch();
        wchar_t name[] = L"DataInUpload";
        LPOLESTR names = name;
        DISPID id = DISPID_UNKNOWN;
        // Other controls than set controls may be on the screen.
        if (!members || FAILED(members->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) continue;
        try {
            PutMember(*members, "DataInUpload", upload);
        } catch (const TextError& error) {
            Report(control->Name() + ": " + error.what());
        }
    }
    Poll();
    ShowStatus(upload ? "Read from the device." : "Written to the device.");
}

void MainWindow::Save(const std::string& fileName) {
    WriteTextFile(fileName, m_view->SavedText());
    ShowStatus("Saved " + fileName + ".");
}

void MainWindow::SaveAs() {
    const std::string name = AskForFile(Handle(), m_fileName, {L"Screens (*.screen)\0*.screen\0", L"screen"});
    if (name.empty()) return;
    Save(name);
    m_fileName = name;
    UpdateTitle();
}

void MainWindow::SavePictureAs() {
    const std::string name = AskForFile(Handle(), {}, {L"Pictures (*.png)\0*.png\0", L"png"});
    if (!name.empty()) SaveWindowPicture(Handle(), name);
}

void MainWindow::Report(const std::string& text) {
    m_context.log->Add("error", text);
    ShowStatus(text);
    if (!m_bQuiet) MessageBoxW(Handle(), Wide(text).c_str(), L"Screen Host", MB_ICONWARNING);
}

void MainWindow::ShowStatus(const std::string& text) {
    SendMessageW(m_status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

void MainWindow::ShowClock() {
    std::string text = "No device";
    try {
        if (m_context.device->IsConnected()) {
            const auto now = CivilFromOle(m_context.device->Now());
            text = "Device clock  " + (now ? Describe(*now) : "?");
        }
    } catch (const TextError&) {
        text = "Device does not answer";
    }
    std::array<wchar_t, 128> shown{};
    SendMessageW(m_status, SB_GETTEXTW, 2, reinterpret_cast<LPARAM>(shown.data()));
    // Only when it changed, or the bar flickers.
    if (Narrow(std::wstring_view(shown.data())) != text)
        SendMessageW(m_status, SB_SETTEXTW, 2, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

void MainWindow::Poll() {
    m_context.device->CollectLog(*m_context.log);
    m_logPanel->Refresh();
    ShowClock();
}

void MainWindow::UpdateTitle() {
    std::string name = m_view->Title();
    if (name.empty()) name = m_fileName.substr(m_fileName.find_last_of("/\\") + 1);
    SetWindowTextW(Handle(), Wide(name.empty() ? "Screen Host" : name + " - Screen Host").c_str());
}

void MainWindow::UpdateCommands() {
    const bool runs = m_context.userMode;
    for (HWND button : {m_read, m_write}) EnableWindow(button, runs);
    SendMessageW(m_run, BM_SETCHECK, runs ? BST_CHECKED : BST_UNCHECKED, 0);
    SendMessageW(m_design, BM_SETCHECK, runs ? BST_UNCHECKED : BST_CHECKED, 0);
    const HMENU menu = GetMenu(Handle());
    for (const UINT command : {UINT{CMD_READ}, UINT{CMD_WRITE}})
        EnableMenuItem(menu, command, MF_BYCOMMAND | static_cast<UINT>(runs ? MF_ENABLED : MF_GRAYED));
    EnableMenuItem(menu, CMD_SAVE, MF_BYCOMMAND | static_cast<UINT>(runs ? MF_GRAYED : MF_ENABLED));
    CheckMenuRadioItem(menu, CMD_DESIGN, CMD_RUN, static_cast<UINT>(runs ? CMD_RUN : CMD_DESIGN), MF_BYCOMMAND);
    SendMessageW(m_status, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(runs ? L"Run" : L"Design"));
}

void MainWindow::OnCommand(int command) {
    switch (command) {
        case CMD_READ:
        case CMD_WRITE:
            return OnExchange(command == CMD_READ);
        case CMD_RUN:
        case CMD_DESIGN:
            return SwitchMode(command == CMD_RUN);
        case CMD_SAVE:
            if (!m_context.userMode) m_fileName.empty() ? SaveAs() : Save(m_fileName);
            return;
        case CMD_SAVE_AS:
            return SaveAs();
        case CMD_PICTURE:
            return SavePictureAs();
        case CMD_CLEAR_LOG:
            return m_logPanel->Clear();
        case CMD_EXIT:
            SendMessageW(Handle(), WM_CLOSE, 0, 0);
            return;
        case CMD_ABOUT:
            MessageBoxW(Handle(), L"Screen Host 1.0\n\nShows a screen of device controls, for use or for design.",
                        L"About Screen Host", MB_ICONINFORMATION);
            return;
        case ID_VIEW:
            return FitToContents();
        default:
            return;
    }
}

/// Thin lines under the buttons and above the log.
void MainWindow::PaintLines() {
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT line{};
    GetClientRect(Handle(), &line);
    line.top = BarHeight();
    line.bottom = line.top + 2;
    DrawEdge(dc, &line, EDGE_ETCHED, BF_TOP);
    RECT view{};
    GetWindowRect(m_view->Handle(), &view);
    MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&view), 2);
    line.top = view.bottom + Scaled(SplitterHeight) / 2 - 1;
    line.bottom = line.top + 2;
    DrawEdge(dc, &line, EDGE_ETCHED, BF_TOP);
    EndPaint(Handle(), &paint);
}

/// The gap between screen and log can be dragged.
bool MainWindow::OnSplitter(UINT message, LPARAM lParam) {
    RECT view{};
    GetWindowRect(m_view->Handle(), &view);
    MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&view), 2);
    const int y = GET_Y_LPARAM(lParam);
    if (message == WM_LBUTTONDOWN && y >= view.bottom && y < view.bottom + Scaled(SplitterHeight)) {
        m_bSplitting = true;
        SetCapture(Handle());
    } else if (message == WM_MOUSEMOVE && m_bSplitting) {
        m_logHeight = std::max(Scaled(SmallestLog), m_logHeight + static_cast<int>(view.bottom) - y);
        Layout();
    } else if (message == WM_LBUTTONUP && m_bSplitting) {
        m_bSplitting = false;
        ReleaseCapture();
    } else {
        return false;
    }
    return true;
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_PAINT:
            PaintLines();
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(m_font.Get());
        case WM_TIMER:
            Poll();
            return 0;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {Scaled(SmallestWidth), Scaled(320)};
            return 0;
        case WM_COMMAND:
            try {
                OnCommand(LOWORD(wParam));
            } catch (const TextError& error) {
                Report(error.what());
            }
            return 0;
        case WM_NOTIFY:
            if (wParam == ID_LOG && m_logPanel) return m_logPanel->OnNotify(*reinterpret_cast<NMHDR*>(lParam));
            return 0;
        case WM_LBUTTONDOWN:
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
            if (m_view && OnSplitter(message, lParam)) return 0;
            break;
        case WM_SETCURSOR:
            if (LOWORD(lParam) == HTCLIENT && reinterpret_cast<HWND>(wParam) == Handle()) {
                POINT at{};
                GetCursorPos(&at);
                ScreenToClient(Handle(), &at);
                if (at.y > BarHeight() + 2) return SetCursor(LoadCursorW(nullptr, IDC_SIZENS)), TRUE;
            }
            break;
        case WM_CLOSE:
            KillTimer(Handle(), PollTimer);
            m_view->CloseControls();
            PostQuitMessage(0);
            return 0;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

}  // namespace screenhost
