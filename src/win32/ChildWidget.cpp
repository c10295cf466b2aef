#include "win32/ChildWidget.h"

#include <uxtheme.h>

#include <algorithm>

#include "win32/ApplicationHelpFile.h"
#include "win32/Dpi.h"

namespace kiv::win32 {

namespace {

const AccessibleSubject* SubjectOf(HWND window) noexcept {
    const NativeWindow::Owner* const owner = NativeWindow::OwnerOf(window);
    return owner ? owner->Accessible() : nullptr;
}

}  // namespace

ChildWidget::ChildWidget(std::shared_ptr<SurfaceContext> context, WidgetWindow& parent)
    : WidgetWindow(std::move(context)), m_parent(parent) {
    Context()->children.push_back(this);
}

ChildWidget::~ChildWidget() {
    std::erase(Context()->children, this);
}

void ChildWidget::Open() {
    WindowDescription description = Describe();
    description.parent = m_parent.Window();
    description.place = PixelEdges(EffectiveBounds(), Context()->dpi);
    description.style |= WS_CHILD | WS_CLIPSIBLINGS;
    if (m_bVisible) description.style |= WS_VISIBLE;
    if (!m_bEnabled) description.style |= WS_DISABLED;
    if (WantsTabStop()) description.style |= WS_TABSTOP;
    OpenWindow(description);
    if (NeedsThemeOff()) SetWindowTheme(Window(), L"", L"");
    ApplyFont(false);
    if (m_help.whatsThisID != 0) SetWindowContextHelpId(Window(), static_cast<DWORD>(m_help.whatsThisID));
    OnOpened();
}

std::optional<LRESULT> ChildWidget::HandleInstead(const Message& message) {
    // The parameter's upper half is undefined in 64 bits.
    if (message.id != WM_GETOBJECT || static_cast<LONG>(message.lParam) != OBJID_CLIENT || message.window != Window())
        return std::nullopt;
    return AnswerAccess(message.window, message.wParam, &SubjectOf);
}

void ChildWidget::PrepareToClose() noexcept {
    if (!Window()) return;
    if (IsBusy()) {
        CloseWindow();
    } else {
        KeepState();
    }
}

void ChildWidget::OnDpiChanged() {
    if (!Window()) return;
    UpdateFont();
    MoveWindowToBounds();
}

bool ChildWidget::IsTabStop() const noexcept {
    if (!Window() || !WantsTabStop() || !IsWindowVisible(Window())) return false;
    // A disabled frame disables what is in it, whatever the children say for themselves.
    for (HWND window = Window(); window && window != GetParent(Context()->window); window = GetParent(window))
        if (!IsWindowEnabled(window)) return false;
    return true;
}

void ChildWidget::PutBounds(const Rect& bounds) {
    if (m_bounds == bounds) return;
    m_bounds = bounds;
    MoveWindowToBounds();
}

void ChildWidget::MoveWindowToBounds() {
    if (!Window()) return;
    const RECT wanted = PixelEdges(EffectiveBounds(), Context()->dpi);
    RECT present{};
    GetWindowRect(Window(), &present);
    MapWindowPoints(nullptr, GetParent(Window()), reinterpret_cast<POINT*>(&present), 2);
    if (EqualRect(&wanted, &present)) return;
    SetWindowPos(Window(), nullptr, wanted.left, wanted.top, wanted.right - wanted.left, wanted.bottom - wanted.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

void ChildWidget::PutEnabled(bool enabled) {
    if (m_bEnabled == enabled) return;
    m_bEnabled = enabled;
    if (!Window()) return;
    EnableWindow(Window(), enabled);
    OnEnabledChanged();
}

void ChildWidget::PutVisible(bool visible) {
    if (m_bVisible == visible) return;
    m_bVisible = visible;
    if (Window()) ShowWindow(Window(), visible ? SW_SHOWNA : SW_HIDE);
}

void ChildWidget::PutBack(OleColor color) {
    if (m_back == color) return;
    m_back = color;
    OnColorChanged();
}

void ChildWidget::PutFore(OleColor color) {
    if (m_fore == color) return;
    m_fore = color;
    OnColorChanged();
}

void ChildWidget::OnColorChanged() {
    if (Window()) InvalidateRect(Window(), nullptr, TRUE);
}

void ChildWidget::PutFont(const FontPtr& font) {
    m_pFont = font;
    // The object may have changed in place: what it describes now decides, not whether it is another object.
    if (Window()) UpdateFont();
    OnFontChanged();
}

void ChildWidget::PutHelp(const WidgetHelp& help) {
    m_help = help;
    if (Window()) SetWindowContextHelpId(Window(), static_cast<DWORD>(help.whatsThisID));
}

bool ChildWidget::AnswersHelp(const HELPINFO& help) {
    if (help.iContextType != HELPINFO_WINDOW) return false;
    // The key and the pointer ask by the same message.
    const bool byKey = GetKeyState(VK_F1) < 0;
    return ApplicationHelpFile::Show({Window(), byKey ? m_help.contextID : m_help.whatsThisID, !byKey});
}

void ChildWidget::PutFocus() {
    const HWND window = Window();
    if (window && IsWindowVisible(window) && IsWindowEnabled(window)) SetFocus(window);
}

void ChildWidget::ApplyFont(bool redraw) {
    m_pGdiFont = FindGdiFont(TraitsOrDefault(m_pFont), Context()->dpi);
    SendMessageW(Window(), WM_SETFONT, reinterpret_cast<WPARAM>(m_pGdiFont->Handle()), redraw);
}

void ChildWidget::UpdateFont() {
    // A month calendar under Wine loses a font with each WM_SETFONT: only what really changes is sent.
    const GdiFontPtr former = m_pGdiFont;
    if (former != FindGdiFont(TraitsOrDefault(m_pFont), Context()->dpi)) ApplyFont(true);
}

}  // namespace kiv::win32
