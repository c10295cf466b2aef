#include "win32/ControlSurface.h"

#include "comkit/Bstr.h"
#include "comkit/Handle.h"
#include "win32/ChildWidget.h"
#include "win32/Dpi.h"
#include "win32/NativeCalendar.h"
#include "win32/NativeCheckBox.h"
#include "win32/NativeFrame.h"
#include "win32/NativeTimeField.h"
#include "win32/SurfaceWindow.h"
#include "win32/SystemAnswers.h"

namespace kiv::win32 {

namespace {

/// A child that is created while the surface is active gets its window at once.
template <class Child>
std::unique_ptr<Child> MakeChild(const std::shared_ptr<SurfaceContext>& context, WidgetWindow& parent) {
    auto child = std::make_unique<Child>(context, parent);
    if (parent.Window()) child->Open();
    return child;
}

}  // namespace

ControlSurface::ControlSurface(SurfaceSite& site) : m_pImpl(std::make_shared<Impl>(*this, site)) {}

ControlSurface::~ControlSurface() {
    m_pImpl->Detach();
}

void ControlSurface::Activate(HWND parent, const RECT& pixels) {
    m_pImpl->Open(parent, pixels);
}

void ControlSurface::Deactivate() noexcept {
    m_pImpl->Close();
}

HWND ControlSurface::Window() const noexcept {
    return m_pImpl->Window();
}

void ControlSurface::SetPixelRect(const RECT& pixels) {
    if (const HWND window = m_pImpl->Window()) {
        const SIZE size = PixelSizeOf(pixels);
        MoveWindow(window, pixels.left, pixels.top, size.cx, size.cy, TRUE);
        if (m_pImpl->Window() != window) return;
    }
    m_pImpl->TakePixelSize(pixels);
}

void ControlSurface::SetSizeFromContainer(const Size& twips) {
    m_pImpl->TakeSize(twips);
}

int ControlSurface::Dpi() const noexcept {
    return m_pImpl->Context()->dpi;
}

void ControlSurface::Draw(HDC dc, const RECT& bounds) {
    m_pImpl->Draw(dc, bounds);
}

Rect ControlSurface::Bounds() const {
    return {0, 0, m_pImpl->m_size.width, m_pImpl->m_size.height};
}

void ControlSurface::SetBounds(const Rect& bounds) {
    SetSize({bounds.width, bounds.height});
}

bool ControlSurface::IsEnabled() const {
    return m_pImpl->m_bEnabled;
}

void ControlSurface::SetEnabled(bool enabled) {
    m_pImpl->m_bEnabled = enabled;
    if (const HWND window = m_pImpl->Window()) EnableWindow(window, enabled);
}

bool ControlSurface::IsVisible() const {
    return m_pImpl->m_bVisible;
}

void ControlSurface::SetVisible(bool visible) {
    m_pImpl->m_bVisible = visible;
    if (const HWND window = m_pImpl->Window()) ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
}

OleColor ControlSurface::BackColor() const {
    return m_pImpl->m_back;
}

void ControlSurface::SetBackColor(OleColor color) {
    m_pImpl->m_back = color;
    if (const HWND window = m_pImpl->Window()) InvalidateRect(window, nullptr, TRUE);
}

OleColor ControlSurface::ForeColor() const {
    return m_pImpl->m_fore;
}

void ControlSurface::SetForeColor(OleColor color) {
    m_pImpl->m_fore = color;
}

FontPtr ControlSurface::GetFont() const {
    return m_pImpl->m_pFont;
}

void ControlSurface::SetFont(const FontPtr& font) {
    m_pImpl->m_pFont = font;
}

void ControlSurface::SetSize(const Size& size) {
    m_pImpl->SetOwnSize(size);
}

Size ControlSurface::MeasureText(std::u16string_view text) const {
    return MeasureTextIn(m_pImpl->m_pFont, text, Dpi());
}

double ControlSurface::TwipsPerPixel() const {
    return TwipsFromPixels(1, Dpi());
}

int ControlSurface::ScrollBarWidthPixels() const {
    return SystemAnswers::Current().scrollBarWidthAt(Dpi());
}

std::unique_ptr<Frame> ControlSurface::CreateFrame(Widget& parent, std::u16string_view /*name*/) {
    return MakeChild<NativeFrame>(m_pImpl->Context(), m_pImpl->ParentFor(parent));
}

std::unique_ptr<CheckBox> ControlSurface::CreateCheckBox(Widget& parent, std::u16string_view /*name*/) {
    return MakeChild<NativeCheckBox>(m_pImpl->Context(), m_pImpl->ParentFor(parent));
}

std::unique_ptr<Calendar> ControlSurface::CreateCalendar(Widget& parent, std::u16string_view /*name*/) {
    return MakeChild<NativeCalendar>(m_pImpl->Context(), m_pImpl->ParentFor(parent));
}

std::unique_ptr<TimeField> ControlSurface::CreateTimeField(Widget& parent, std::u16string_view /*name*/) {
    return MakeChild<NativeTimeField>(m_pImpl->Context(), m_pImpl->ParentFor(parent));
}

void ControlSurface::SetListener(WidgetListener* listener) {
    m_pImpl->Context()->listener = listener;
}

}  // namespace kiv::win32
