#include "screenhost/ScreenView.h"

#include <windowsx.h>

#include <algorithm>

#include "comkit/Handle.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr int MarginTwips = 240;
constexpr int GridTwips = 120;
constexpr DWORD ViewStyle = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN;

class PaintDc {
public:
    explicit PaintDc(HWND window) noexcept : m_window(window), m_dc(BeginPaint(window, &m_paint)) {}
    PaintDc(const PaintDc&) = delete;
    PaintDc& operator=(const PaintDc&) = delete;
    ~PaintDc() { EndPaint(m_window, &m_paint); }
    HDC Get() const noexcept { return m_dc; }
    const RECT& Area() const noexcept { return m_paint.rcPaint; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
};

void PaintGrid(HDC dc, const RECT& area) {
    const int step = std::max(4, PixelsFromTwips(GridTwips));
    const COLORREF color = GetSysColor(COLOR_BTNSHADOW);
    for (LONG y = area.top / step * step; y < area.bottom; y += step)
        for (LONG x = area.left / step * step; x < area.right; x += step) SetPixelV(dc, x, y, color);
}

}  // namespace

/// Lies over the controls at design time. Shows nothing and hands every mouse and key message to the view.
class ScreenView::Glass final : public WindowBase {
public:
    explicit Glass(HWND view) : m_view(view) {
        Create({L"ScreenHostGlass", L"", WS_CHILD, WS_EX_TRANSPARENT, COLOR_BTNFACE, nullptr}, view);
    }
    void Cover() {
        RECT client{};
        GetClientRect(m_view, &client);
        SetWindowPos(Handle(), HWND_TOP, 0, 0, client.right, client.bottom, SWP_SHOWWINDOW | SWP_NOACTIVATE);
    }
    void Lift() { ShowWindow(Handle(), SW_HIDE); }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if ((message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == WM_KEYDOWN)
            return SendMessageW(m_view, message, wParam, lParam);
        if (message == WM_SETCURSOR) return SendMessageW(m_view, message, wParam, lParam);
        if (message == WM_GETDLGCODE) return DLGC_WANTARROWS;
        if (message == WM_ERASEBKGND) return TRUE;
        return Default(message, wParam, lParam);
    }

    HWND m_view;
};

ScreenView::ScreenView(HWND parent, ScreenContext& context, ScreenFile file)
    : m_context(context), m_file(std::move(file)) {
    Create({L"ScreenHostView", L"", ViewStyle, WS_EX_CONTROLPARENT, COLOR_BTNFACE, nullptr}, parent);
    m_context.view = Handle();
    m_context.onLayout = [this] { OnLayout(); };
    m_glass = std::make_unique<Glass>(Handle());
    m_tool.emplace(
        Handle(), [this](std::size_t i) { return m_controls.at(i)->PixelRect(); },
        [this](std::size_t i, const RECT& place) { m_controls.at(i)->SetPixelRect(place); });
    for (ScreenSection* section : m_file.Controls())
        m_controls.push_back(std::make_unique<HostedControl>(m_context, *section));
}

ScreenView::~ScreenView() {
    CloseControls();
    m_controls.clear();
    m_context.onLayout = nullptr;
}

void ScreenView::OpenControls() {
    for (const auto& control : m_controls) control->Open();
    m_tool->Reset(m_context.userMode ? 0 : m_controls.size());
    if (m_context.userMode)
        m_glass->Lift();
    else
        m_glass->Cover();
    OnLayout();
}

void ScreenView::CloseControls() noexcept {
    for (const auto& control : m_controls) control->Close();
}

void ScreenView::SwitchMode(bool userMode) {
    if (userMode == m_context.userMode) return;
    if (!m_context.userMode)
        for (const auto& control : m_controls) control->Save();
    CloseControls();
    m_controls.clear();
    m_context.userMode = userMode;
    for (ScreenSection* section : m_file.Controls())
        m_controls.push_back(std::make_unique<HostedControl>(m_context, *section));
    OpenControls();
}

std::string ScreenView::SavedText() {
    // What happened at run time must not become the layout to which design mode returns.
    ScreenFile copy = m_file;
    ScreenFile& file = m_context.userMode ? copy : m_file;
    for (const auto& control : m_controls)
        if (ScreenSection* section = file.FindControl(control->Name())) control->SaveTo(*section);
    return file.Text();
}

std::string ScreenView::Title() {
    const ScreenValue* const title = m_file.Screen().Find("Title");
    if (!title || !std::holds_alternative<std::u16string>(*title)) return {};
    return Utf8FromUtf16(std::get<std::u16string>(*title));
}

HostedControl& ScreenView::Find(const std::string& name) {
    const auto found =
        std::ranges::find_if(m_controls, [&](const auto& control) { return EqualWithoutCase(control->Name(), name); });
    if (found == m_controls.end()) throw TextError("there is no control named " + name);
    return **found;
}

HostedControl* ScreenView::Selected() {
    const auto selected = m_tool->Selected();
    return selected && *selected < m_controls.size() ? m_controls[*selected].get() : nullptr;
}

SIZE ScreenView::ContentSize() const {
    SIZE size{};
    for (const auto& control : m_controls) {
        const RECT place = control->PixelRect();
        size.cx = std::max(size.cx, place.right);
        size.cy = std::max(size.cy, place.bottom);
    }
    const int margin = PixelsFromTwips(MarginTwips);
    return {size.cx + margin, size.cy + margin};
}

void ScreenView::OnLayout() {
    InvalidateRect(Handle(), nullptr, TRUE);
    SendMessageW(GetParent(Handle()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(Handle()), 0),
                 reinterpret_cast<LPARAM>(Handle()));
}

LRESULT ScreenView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) {
        Paint();
        return 0;
    }
    if (message == WM_SIZE && m_glass && !m_context.userMode) m_glass->Cover();
    if (!m_context.userMode && m_tool && OnDesignMessage(message, wParam, lParam)) return TRUE;
    return Default(message, wParam, lParam);
}

bool ScreenView::OnDesignMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
        case WM_LBUTTONDOWN:
            SetFocus(m_glass->Handle());
            m_tool->OnButtonDown(point);
            return true;
        case WM_MOUSEMOVE:
            m_tool->OnMouseMove(point);
            return true;
        case WM_LBUTTONUP:
            m_tool->OnButtonUp();
            return true;
        case WM_KEYDOWN:
            return m_tool->OnKey(wParam, GetKeyState(VK_SHIFT) < 0);
        case WM_SETCURSOR: {
            POINT at{};
            GetCursorPos(&at);
            ScreenToClient(Handle(), &at);
            SetCursor(LoadCursorW(nullptr, m_tool->CursorAt(at)));
            return true;
        }
        default:
            return false;
    }
}

void ScreenView::Paint() {
    const PaintDc dc(Handle());
    if (!m_context.userMode) {
        PaintGrid(dc.Get(), dc.Area());
        if (m_tool) m_tool->Paint(dc.Get());
    }
    for (const auto& control : m_controls)
        if (!control->IsOpen()) PaintFailure(dc.Get(), *control);
}

/// A control that could not be opened says so in its place.
void ScreenView::PaintFailure(HDC dc, const HostedControl& control) const {
    RECT place = control.PixelRect();
    FillRect(dc, &place, GetSysColorBrush(COLOR_WINDOW));
    FrameRect(dc, &place, GetSysColorBrush(COLOR_BTNSHADOW));
    InflateRect(&place, -Scaled(8), -Scaled(8));
    const auto font = reinterpret_cast<HFONT>(SendMessageW(GetParent(Handle()), WM_GETFONT, 0, 0));
    const comkit::GdiSelection selection(dc, font ? font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    const std::wstring text = Wide(control.Name() + "\n\n" + control.Failure());
    DrawTextW(dc, text.c_str(), -1, &place, DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace screenhost
