// Where the parts of the main window go.
#include <windows.h>
#include <windowsx.h>

#include <algorithm>
#include <array>

#include "screenhost/MainWindow.h"
#include "screenhost/Units.h"

namespace screenhost {

namespace {

constexpr int Gap = 8;
constexpr int SplitterHeight = 6;
constexpr int SmallestLog = 90;
constexpr int SmallestView = 80;

void MoveTo(HWND window, int x, int y, int width, int height) {
    SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

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
    for (HWND button : {m_read, m_write, m_panelButton}) {
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
    const int side = SideWidth();
    const int screenHeight = std::max(0, titleTop - Scaled(SplitterHeight) - bar - 2);
    m_palette->Show(side > 0);
    m_palette->SetPlace({gap, bar + 2, side - gap, bar + 2 + screenHeight - gap / 2});
    const int device = DeviceWidth();
    MoveTo(m_view->Handle(), side, bar + 2, std::max(0, width - side - device), screenHeight);
    MoveTo(m_devicePanel->Handle(), width - device + gap, bar + 2, std::max(0, device - gap), screenHeight);
    LayoutLog(width, titleTop, listTop, bottom);
    // Only a screen that is laid out has a place to show.
    const int place = m_context.userMode ? 0 : Scaled(265);
    std::array<int, StatusParts> parts{std::max(Scaled(20), width - Scaled(255) - place),
                                       std::max(Scaled(100), width - Scaled(255)),
                                       std::max(Scaled(200), width - Scaled(200)), -1};
    SendMessageW(m_status, SB_SETPARTS, parts.size(), reinterpret_cast<LPARAM>(parts.data()));
    // The parts move over one another; what the system copied along is not always right.
    RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

/// The row above the list from the right to the left, the title takes what is left; then the list.
void MainWindow::LayoutLog(int width, int titleTop, int listTop, int bottom) {
    const int gap = Scaled(Gap);
    const int height = static_cast<int>(ButtonSize(m_clear).cy) - Scaled(2);
    int right = width - gap;
    for (HWND button : {m_clear, m_copy}) {
        const int taken = static_cast<int>(ButtonSize(button).cx);
        MoveTo(button, right - taken, titleTop - Scaled(1), taken, height);
        right -= taken + gap;
    }
    const int field = std::clamp(width / 4, Scaled(90), Scaled(220));
    const int label = Scaled(42);
    MoveTo(m_filter, right - field, titleTop, field, height - Scaled(3));
    MoveTo(m_filterLabel, right - field - label, titleTop, label - gap / 2, height - Scaled(3));
    MoveTo(m_logTitle, gap, titleTop, std::max(0, right - field - label - 2 * gap), height);
    m_logPanel->SetPlace({gap, listTop, width - gap, bottom - gap});
}

/// Of what stands to the right of the screen.
int MainWindow::DeviceWidth() const {
    return IsWindowVisible(m_devicePanel->Handle()) ? m_devicePanel->Width() + 2 * Scaled(Gap) : 0;
}

/// What the screen and the panels beside it need.
SIZE MainWindow::LeastContent() const {
    SIZE content = m_view->ContentSize();
    if (!m_context.userMode)
        content = {std::max<LONG>(content.cx, Scaled(480)), std::max<LONG>(content.cy, Scaled(320))};
    if (DeviceWidth() > 0) content.cy = std::max<LONG>(content.cy, m_devicePanel->LeastHeight());
    return content;
}

/// Of what stands to the left of the screen.
int MainWindow::SideWidth() const {
    return m_context.userMode ? 0 : m_palette->Width() + 2 * Scaled(Gap);
}

/// Makes the window larger where the controls need it; never smaller.
void MainWindow::FitToContents() {
    if (!m_bOpen) return;
    const SIZE content = LeastContent();
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
        frame.right = std::max<LONG>(content.cx + SideWidth() + DeviceWidth(), Scaled(SmallestWidth));
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
    if (isFirst) {
        SetWindowPos(Handle(), nullptr, static_cast<int>(work.left) + (WidthOf(work) - width) / 2,
                     static_cast<int>(work.top) + (HeightOf(work) - height) / 2, width, height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    } else if (width != WidthOf(window) || height != HeightOf(window)) {
        // Growing must not push it off the screen.
        const LONG left = std::max(work.left, std::min<LONG>(window.left, work.right - width));
        const LONG top = std::max(work.top, std::min<LONG>(window.top, work.bottom - height));
        SetWindowPos(Handle(), nullptr, static_cast<int>(left), static_cast<int>(top), width, height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
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
    line.left = 0;
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

}  // namespace screenhost
