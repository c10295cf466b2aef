#include "win32/LabelSurface.h"

#include <algorithm>

#include "comkit/Handle.h"
#include "win32/Dpi.h"
#include "win32/LabelSurfaceImpl.h"
#include "win32/PaintScope.h"
#include "win32/ShownColors.h"
#include "win32/SurfaceClass.h"

namespace kiv::win32 {

namespace {

constexpr UINT DpiChangedAfterParent = 0x02E3;  // WM_DPICHANGED_AFTERPARENT, Windows 10

Size SizeOf(const SIZE& pixels, int dpi) noexcept {
    return {TwipsFromPixels(pixels.cx, dpi), TwipsFromPixels(pixels.cy, dpi)};
}

}  // namespace

void LabelSurface::Impl::Open(HWND parent, const RECT& pixels, bool windowless) {
    if (m_bActive) return;
    const auto held = shared_from_this();
    UseDpi(DpiOf(parent));
    if (!m_pSurface || m_bActive) return;
    TakePixelRect(pixels);
    if (!m_pSurface || m_bActive) return;
    if (!windowless) {
        m_pNative = NativeWindow::Create(*this, {.className = SurfaceClass::NameForDrawing(),
                                                 .text = L"",
                                                 .style = WS_CHILD | WS_CLIPSIBLINGS | (m_bVisible ? WS_VISIBLE : 0u) |
                                                          (m_bEnabled ? 0u : WS_DISABLED),
                                                 .extendedStyle = 0,
                                                 .place = pixels,
                                                 .parent = parent,
                                                 .hasInnerWindows = false});
    }
    if (windowless) m_container = parent;
    m_bActive = true;
}

void LabelSurface::Impl::Close() noexcept {
    if (!m_bActive) return;
    const auto held = weak_from_this().lock();
    m_bActive = false;
    m_pPressed = nullptr;
    m_container = nullptr;
    if (!Window() && m_bCaptured && m_pSite) m_pSite->OnCapture(false);
    m_bCaptured = false;
    if (m_pNative) m_pNative->Retire();
    m_pNative.reset();
}

void LabelSurface::Impl::UseDpi(int dpi) {
    if (m_dpi == dpi) return;
    m_dpi = dpi;
    m_pGdiFont.reset();
    InvalidateAll();
    if (m_pListener) m_pListener->OnResize();
}

void LabelSurface::Impl::TakePixelRect(const RECT& pixels) {
    m_place = pixels;
    // A size that only rounding makes different is kept, or each round trip would lose a little.
    const SIZE size = PixelSizeOf(pixels);
    if (PixelsFromTwips(m_size.width, m_dpi) == size.cx && PixelsFromTwips(m_size.height, m_dpi) == size.cy) return;
    TakeSize(SizeOf(size, m_dpi));
}

// Another resolution is told to windows only: without one, the container's is asked for whenever it gives a place.
void LabelSurface::Impl::MoveTo(const RECT& pixels) {
    if (m_container) UseDpi(DpiOf(m_container));
    if (m_pSurface) TakePixelRect(pixels);
}

void LabelSurface::Impl::TakeSize(const Size& size) {
    if (m_size == size) return;
    m_size = size;
    if (m_pListener) m_pListener->OnResize();
}

void LabelSurface::Impl::SetOwnSize(const Size& size) {
    if (m_size == size) return;
    m_size = size;
    if (m_pSite) m_pSite->OnSizeChanged(size);
}

void LabelSurface::Impl::Invalidate(const Rect& bounds) {
    const RECT pixels = PixelEdges(bounds, m_dpi);
    if (IsRectEmpty(&pixels)) return;
    if (const HWND window = Window()) {
        InvalidateRect(window, &pixels, FALSE);
    } else if (m_pSite) {
        m_pSite->OnInvalidate(pixels);
    }
}

void LabelSurface::Impl::DrawAt(HDC dc, POINT origin) const {
    LabelPainter painter(dc, origin, LabelPainter::Target::Any);
    RECT uncovered = painter.Placed(OwnArea());
    // The first ones last: they are the ones that the mouse finds, too.
    std::for_each(m_labels.rbegin(), m_labels.rend(), [&](const DrawnLabel* label) {
        if (!label->IsVisible()) return;
        label->Draw(painter);
        const RECT covered = painter.Placed(label->PixelRect());
        SubtractRect(&uncovered, &uncovered, &covered);
    });
    // Where the labels fill the surface, as they do side by side, there is no ground to be seen.
    if (IsRectEmpty(&uncovered)) return;
    const int saved = SaveDC(dc);
    for (const DrawnLabel* const label : m_labels) {
        if (!label->IsVisible()) continue;
        const RECT covered = painter.Placed(label->PixelRect());
        ExcludeClipRect(dc, covered.left, covered.top, covered.right, covered.bottom);
    }
    FillFace(dc, uncovered, m_back);
    RestoreDC(dc, saved);
}

std::vector<LabelAccessSource::Facts> LabelSurface::Impl::LabelsForAccess() const {
    std::vector<Facts> all;
    for (const DrawnLabel* const label : m_labels)
        if (label->IsVisible()) all.push_back({label->Caption(), label->PixelRect(), label->IsEnabled()});
    return all;
}

LabelAccessSource::Place LabelSurface::Impl::PlaceForAccess() const noexcept {
    if (Window()) return {Window(), OwnArea(), true, m_bEnabled};
    return {m_container, m_place, false, m_bEnabled};
}

void LabelSurface::Impl::OnCaptionChanged(const DrawnLabel& label) {
    const auto held = shared_from_this();
    if (!DrawAtOnce(label)) Invalidate(label.Bounds());
    if (IsPresent(&label)) TellNameChanged(label);
}

/// As a static window does with its text: to have it painted costs the system several times as much as to draw it.
bool LabelSurface::Impl::DrawAtOnce(const DrawnLabel& label) {
    if (!m_bActive || IsOverlapped(label)) return false;
    const auto draw = [this, &label](HDC dc, POINT origin) {
        if (!IsPresent(&label)) return;
        LabelPainter painter(dc, origin, LabelPainter::Target::Window);
        label.Draw(painter);
    };
    if (const HWND window = Window()) {
        if (!IsWindowVisible(window)) return false;
        const comkit::WindowDc dc(window);
        if (dc.Get()) draw(dc.Get(), {0, 0});
        return dc.Get() != nullptr;
    }
    return m_bVisible && m_pSite && m_pSite->OnDraw(label.PixelRect(), draw);
}

bool LabelSurface::Impl::IsOverlapped(const DrawnLabel& label) const noexcept {
    const RECT area = label.PixelRect();
    return std::ranges::any_of(m_labels, [&](const DrawnLabel* other) {
        RECT common{};
        const RECT otherArea = other->PixelRect();
        return other != &label && other->IsVisible() && IntersectRect(&common, &area, &otherArea);
    });
}

// A place in another's window has no object numbers of its own to tell this for.
void LabelSurface::Impl::TellNameChanged(const DrawnLabel& label) const noexcept {
    if (!Window()) return;
    LONG number = 1;
    for (const DrawnLabel* const one : m_labels) {
        if (one == &label) break;
        if (one->IsVisible()) ++number;
    }
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, Window(), OBJID_CLIENT, number);
}

LRESULT LabelSurface::Impl::OnMessage(NativeWindow& native, const Message& message) {
    const auto held = shared_from_this();
    switch (message.id) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
        case WM_PRINTCLIENT: {
            const PaintScope scope(message);
            DrawAt(scope.Dc(), {0, 0});
            return 0;
        }
        case WM_SYSCOLORCHANGE:
        case WM_SETTINGCHANGE:
            TakeSettings(message.id);
            return 0;
        case WM_GETOBJECT:
            // The parameter's upper half is undefined in 64 bits.
            if (static_cast<LONG>(message.lParam) == OBJID_CLIENT)
                return AnswerLabelAccess(message.wParam, weak_from_this());
            break;
        case WM_HELP:
            if (ShowHelpFor(message.lParam)) return TRUE;
            break;
        case DpiChangedAfterParent:
            UseDpi(DpiOf(message.window));
            return 0;
        default:
            break;
    }
    if (const auto result = HandleInput(message.id, message.wParam, message.lParam)) return *result;
    return native.IsLive() ? native.CallNative(message) : 0;
}

void LabelSurface::Impl::TakeSettings(UINT id) {
    InvalidateAll();
    if (id == WM_SETTINGCHANGE && m_pSite) m_pSite->OnSettingsChanged();
}

LabelSurface::LabelSurface(WindowlessSite& site) : m_pImpl(std::make_shared<Impl>(*this, site)) {}

LabelSurface::~LabelSurface() {
    m_pImpl->Detach();
}

void LabelSurface::Activate(HWND parent, const RECT& pixels) {
    m_pImpl->Open(parent, pixels, false);
}

void LabelSurface::ActivateWindowless(HWND containerWindow, const RECT& pixels) {
    m_pImpl->Open(containerWindow, pixels, true);
}

void LabelSurface::Deactivate() noexcept {
    m_pImpl->Close();
}

bool LabelSurface::IsActive() const noexcept {
    return m_pImpl->m_bActive;
}

HWND LabelSurface::Window() const noexcept {
    return m_pImpl->Window();
}

RECT LabelSurface::PixelRect() const noexcept {
    return m_pImpl->m_place;
}

std::optional<RECT> LabelSurface::WindowlessPlace() const noexcept {
    return IsActive() && !Window() ? std::optional(m_pImpl->m_place) : std::nullopt;
}

void LabelSurface::SetPixelRect(const RECT& pixels) {
    const auto held = m_pImpl;
    if (const HWND window = held->Window()) {
        const SIZE size = PixelSizeOf(pixels);
        MoveWindow(window, pixels.left, pixels.top, size.cx, size.cy, TRUE);
    }
    held->MoveTo(pixels);
}

void LabelSurface::SetSizeFromContainer(const Size& twips) {
    m_pImpl->TakeSize(twips);
}

int LabelSurface::Dpi() const noexcept {
    return m_pImpl->m_dpi;
}

void LabelSurface::Draw(HDC dc, const RECT& bounds) {
    const RECT own = m_pImpl->OwnArea();
    if (own.right <= 0 || own.bottom <= 0) return;
    // At its own size and in pixels, as on a screen, the picture is only moved. To save a device context and to restore
    // it costs more than the drawing.
    const SIZE size = PixelSizeOf(bounds);
    const bool inPixels = GetMapMode(dc) == MM_TEXT && GetObjectType(dc) != OBJ_METADC;
    if (inPixels && size.cx == own.right && size.cy == own.bottom)
        return m_pImpl->DrawAt(dc, {bounds.left, bounds.top});
    const int saved = SaveDC(dc);
    if (GetObjectType(dc) == OBJ_METADC) {
        // Such a recording knows no device, and whoever plays it sets the viewport: it is drawn as all of the window.
        SetWindowOrgEx(dc, 0, 0, nullptr);
        SetWindowExtEx(dc, own.right, own.bottom, nullptr);
        m_pImpl->DrawAt(dc, {0, 0});
        RestoreDC(dc, saved);
        return;
    }
    // The mapping is put on top of whatever mapping the device context has.
    RECT device = bounds;
    LPtoDP(dc, reinterpret_cast<POINT*>(&device), 2);
    SetMapMode(dc, MM_ANISOTROPIC);
    SetWindowOrgEx(dc, 0, 0, nullptr);
    SetWindowExtEx(dc, own.right, own.bottom, nullptr);
    SetViewportOrgEx(dc, device.left, device.top, nullptr);
    SetViewportExtEx(dc, device.right - device.left, device.bottom - device.top, nullptr);
    m_pImpl->DrawAt(dc, {0, 0});
    RestoreDC(dc, saved);
}

std::optional<LRESULT> LabelSurface::OnWindowMessage(UINT id, WPARAM wParam, LPARAM lParam) {
    const auto held = m_pImpl;
    if (!held->m_bActive || held->Window()) return std::nullopt;
    if (id == WM_SYSCOLORCHANGE || id == WM_SETTINGCHANGE) held->TakeSettings(id);
    if (id == WM_HELP && held->ShowHelpFor(lParam)) return TRUE;
    if (IsMouseMessage(id)) {
        const POINTS at = MAKEPOINTS(lParam);
        lParam = MAKELPARAM(at.x - held->m_place.left, at.y - held->m_place.top);
    }
    return held->HandleInput(id, wParam, lParam);
}

comkit::ComPtr<IAccessible> LabelSurface::Access() const {
    return MakeLabelAccess(std::weak_ptr<const Impl>(m_pImpl));
}

Rect LabelSurface::Bounds() const {
    return {0, 0, m_pImpl->m_size.width, m_pImpl->m_size.height};
}

void LabelSurface::SetBounds(const Rect& bounds) {
    SetSize({bounds.width, bounds.height});
}

bool LabelSurface::IsEnabled() const {
    return m_pImpl->m_bEnabled;
}

void LabelSurface::SetEnabled(bool enabled) {
    if (m_pImpl->m_bEnabled == enabled) return;
    m_pImpl->m_bEnabled = enabled;
    if (const HWND window = m_pImpl->Window()) EnableWindow(window, enabled);
}

bool LabelSurface::IsVisible() const {
    return m_pImpl->m_bVisible;
}

void LabelSurface::SetVisible(bool visible) {
    if (m_pImpl->m_bVisible == visible) return;
    m_pImpl->m_bVisible = visible;
    if (const HWND window = m_pImpl->Window()) {
        ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
    } else {
        m_pImpl->InvalidateAll();
    }
}

OleColor LabelSurface::BackColor() const {
    return m_pImpl->m_back;
}

void LabelSurface::SetBackColor(OleColor color) {
    if (m_pImpl->m_back == color) return;
    m_pImpl->m_back = color;
    m_pImpl->InvalidateAll();
}

OleColor LabelSurface::ForeColor() const {
    return m_pImpl->m_fore;
}

void LabelSurface::SetForeColor(OleColor color) {
    m_pImpl->m_fore = color;
}

FontPtr LabelSurface::GetFont() const {
    return m_pImpl->m_pFont;
}

void LabelSurface::SetFont(const FontPtr& font) {
    m_pImpl->m_pFont = font;
    m_pImpl->m_pGdiFont.reset();
}

void LabelSurface::SetSize(const Size& size) {
    m_pImpl->SetOwnSize(size);
}

Size LabelSurface::MeasureText(std::u16string_view text) const {
    GdiFontPtr& font = m_pImpl->m_pGdiFont;
    if (!font) font = FindGdiFont(TraitsOrDefault(m_pImpl->m_pFont), Dpi());
    return MeasureTextIn(*font, text, Dpi());
}

double LabelSurface::TwipsPerPixel() const {
    return TwipsFromPixels(1, Dpi());
}

void LabelSurface::SetListener(WidgetListener* listener) {
    m_pImpl->m_pListener = listener;
}

std::unique_ptr<Label> LabelSurface::CreateLabel(std::u16string_view /*name*/) {
    auto label = std::make_unique<DrawnLabel>(m_pImpl);
    m_pImpl->m_labels.push_back(label.get());
    return label;
}

}  // namespace kiv::win32
