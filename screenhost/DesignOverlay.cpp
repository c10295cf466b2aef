#include "screenhost/DesignOverlay.h"

#include "screenhost/Units.h"

namespace screenhost {

/// Shows nothing and hands every mouse and key message to the view.
class DesignOverlay::GlassWindow final : public WindowBase {
public:
    explicit GlassWindow(HWND view) : m_view(view) {
        Create({L"ScreenHostGlass", L"", WS_CHILD | WS_TABSTOP, WS_EX_TRANSPARENT, COLOR_BTNFACE, nullptr}, view);
    }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        const bool isMouse = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
        const bool goesOn = isMouse || message == WM_KEYDOWN || message == WM_SETCURSOR || message == WM_CONTEXTMENU ||
                            message == WM_CANCELMODE || message == WM_CAPTURECHANGED;
        if (goesOn) return SendMessageW(m_view, message, wParam, lParam);
        if (message == WM_GETDLGCODE) return DLGC_WANTALLKEYS;
        if (message == WM_ERASEBKGND) return TRUE;
        return Default(message, wParam, lParam);
    }

    HWND m_view;
};

/// A few pixels in one colour. The mouse goes through it.
class DesignOverlay::Mark final : public WindowBase {
public:
    explicit Mark(HWND view) { Create({L"ScreenHostMark", L"", WS_CHILD, 0, COLOR_HIGHLIGHT, nullptr}, view); }

    void Place(const MarkPlace& mark) {
        if (mark.kind != m_kind) InvalidateRect(Handle(), nullptr, TRUE);
        m_kind = mark.kind;
        SetWindowPos(Handle(), HWND_TOP, mark.place.left, mark.place.top, WidthOf(mark.place), HeightOf(mark.place),
                     SWP_NOACTIVATE | SWP_SHOWWINDOW);
    }
    void Hide() {
        if (IsWindowVisible(Handle())) ShowWindow(Handle(), SW_HIDE);
    }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_NCHITTEST) return HTTRANSPARENT;
        if (message != WM_PAINT) return Default(message, wParam, lParam);
        PAINTSTRUCT paint{};
        const HDC dc = BeginPaint(Handle(), &paint);
        RECT area{};
        GetClientRect(Handle(), &area);
        // The leading control's handles are full, those of the others hollow.
        const bool isLeading = m_kind == MarkKind::LeadingHandle;
        FillRect(dc, &area, GetSysColorBrush(isLeading ? COLOR_WINDOW : COLOR_HIGHLIGHT));
        if (m_kind != MarkKind::Edge) {
            InflateRect(&area, -1, -1);
            FillRect(dc, &area, GetSysColorBrush(isLeading ? COLOR_HIGHLIGHT : COLOR_WINDOW));
        }
        EndPaint(Handle(), &paint);
        return 0;
    }

    MarkKind m_kind = MarkKind::Edge;
};

DesignOverlay::DesignOverlay(HWND view) : m_view(view), m_glass(std::make_unique<GlassWindow>(view)) {}

DesignOverlay::~DesignOverlay() = default;

HWND DesignOverlay::Glass() const noexcept {
    return m_glass->Handle();
}

void DesignOverlay::Cover() {
    RECT client{};
    GetClientRect(m_view, &client);
    SetWindowPos(Glass(), HWND_TOP, 0, 0, client.right, client.bottom, SWP_SHOWWINDOW | SWP_NOACTIVATE);
}

void DesignOverlay::Lift() {
    ShowMarks({});
    ShowWindow(Glass(), SW_HIDE);
}

void DesignOverlay::Focus() const {
    SetFocus(Glass());
}

void DesignOverlay::ShowMarks(const std::vector<MarkPlace>& marks) {
    while (m_marks.size() < marks.size()) m_marks.push_back(std::make_unique<Mark>(m_view));
    for (std::size_t i = 0; i < m_marks.size(); ++i) {
        if (i < marks.size())
            m_marks[i]->Place(marks[i]);
        else
            m_marks[i]->Hide();
    }
}

}  // namespace screenhost
