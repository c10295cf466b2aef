#include "server/Activation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "comkit/Errors.h"
#include "comkit/Handle.h"

namespace kiv::server {

namespace {

class LeavingScope {
public:
    explicit LeavingScope(unsigned& depth) noexcept : m_depth(depth) { ++m_depth; }
    LeavingScope(const LeavingScope&) = delete;
    LeavingScope& operator=(const LeavingScope&) = delete;
    ~LeavingScope() { --m_depth; }

private:
    unsigned& m_depth;
};

/// Moves the far edge to so many pixels behind the near one, and both where that would lie beyond all numbers: a
/// container may have put them anywhere.
void PutApart(LONG& nearEdge, LONG& farEdge, double pixels) noexcept {
    constexpr LONG Most = std::numeric_limits<LONG>::max();
    const auto length = static_cast<LONG>(std::clamp(std::round(pixels), 0.0, static_cast<double>(Most)));
    nearEdge = std::min(nearEdge, Most - length);
    farEdge = nearEdge + length;
}

bool ContainsFocus(HWND window) noexcept {
    const HWND focus = GetFocus();
    return focus && (focus == window || IsChild(window, focus));
}

}  // namespace

void Activation::Activate() {
    if (m_bActive) return;
    if (m_lLeaving > 0) throw comkit::ComError(OLE_E_NOT_INPLACEACTIVE);
    m_host.EnsureInitialized();
    EnterPlace();
    if (!m_bActive) return;  // the container ended it while it was coming up
    FollowUiDead();
    if (const auto site = m_site.Get()) site->ShowObject();
    if (m_bActive) m_pCore->OnShown();
    TellKeysChanged();
}

void Activation::EnterPlace() {
    const auto place = m_site.Get().As<IOleInPlaceSite>();
    if (!place || place->CanInPlaceActivate() != S_OK) throw comkit::ComError(OLE_E_NOT_INPLACEACTIVE);
    auto windowlessPlace = OfferOfNoWindow(place);
    if (m_bActive) return;  // asked whether it may, the container did it
    m_pPlace = place;
    m_pWindowlessPlace = std::move(windowlessPlace);
    m_bActive = true;
    const unsigned visit = ++m_lVisits;
    BOOL noRedraw = TRUE;
    if (const HRESULT hr = TellInPlace(noRedraw); FAILED(hr)) {
        if (IsVisit(visit)) ForgetPlace();
        throw comkit::ComError(hr);
    }
    try {
        if (IsVisit(visit)) OpenWindows(*place, visit);
    } catch (...) {
        if (IsVisit(visit)) LeavePlace();
        throw;
    }
    const auto drawn = m_pWindowlessPlace;
    if (drawn && !noRedraw && IsVisit(visit)) drawn->InvalidateRect(nullptr, FALSE);
}

/// Null where the control needs a window, or the container wants it to have one.
comkit::ComPtr<IOleInPlaceSiteWindowless> Activation::OfferOfNoWindow(
    const comkit::ComPtr<IOleInPlaceSite>& place) const {
    if (!m_pCore->Surface().CanBeWindowless()) return {};
    auto windowless = place.As<IOleInPlaceSiteWindowless>();
    if (windowless && windowless->CanWindowlessActivate() != S_OK) windowless.Reset();
    return windowless;
}

HRESULT Activation::TellInPlace(BOOL& noRedraw) const {
    if (const auto windowless = m_pWindowlessPlace) {
        noRedraw = FALSE;
        return windowless->OnInPlaceActivateEx(&noRedraw, ACTIVATE_WINDOWLESS);
    }
    const auto place = m_pPlace;
    return place->OnInPlaceActivate();
}

void Activation::OpenWindows(IOleInPlaceSite& place, unsigned visit) {
    HWND parent = nullptr;
    comkit::ThrowIfFailed(place.GetWindow(&parent));
    comkit::ComPtr<IOleInPlaceFrame> frame;
    comkit::ComPtr<IOleInPlaceUIWindow> document;
    RECT position{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof(info);
    comkit::ThrowIfFailed(place.GetWindowContext(frame.Put(), document.Put(), &position, &clip, &info));
    if (!IsVisit(visit)) return;
    m_pFrame = std::move(frame);
    m_pDocument = std::move(document);
    m_position = position;
    win32::HostedSurface& surface = m_pCore->Surface();
    if (m_pWindowlessPlace) {
        surface.ActivateWindowless(parent, m_position);
    } else {
        surface.Activate(parent, m_position);
    }
    // Asked for another place, the container may have ended it all.
    if (!m_bActive) surface.Deactivate();
    if (HWND window = surface.Window()) ClipWindow(window, clip);
}

void Activation::ForgetPlace() noexcept {
    ++m_lVisits;
    m_bActive = false;
    m_bClipped = false;
    m_bCaptured = false;
    m_pFrame.Reset();
    m_pDocument.Reset();
    m_pWindowlessPlace.Reset();
    m_pPlace.Reset();
}

void Activation::LeavePlace() noexcept {
    const LeavingScope leaving(m_lLeaving);
    const auto place = m_pPlace;
    const auto captor = m_bCaptured ? m_pWindowlessPlace : nullptr;
    // Forgotten first: what the windows tell when they go may come back here.
    ForgetPlace();
    if (captor) captor->SetCapture(FALSE);
    m_pCore->Surface().Deactivate();
    if (place) place->OnInPlaceDeactivate();
}

void Activation::UiActivate(bool takeFocus) {
    Activate();
    if (!m_bActive || (m_class.miscStatus & OLEMISC_NOUIACTIVATE)) return;
    if (!m_bUiActive) {
        if (m_lLeaving > 0) throw comkit::ComError(OLE_E_NOT_INPLACEACTIVE);
        const auto place = m_pPlace;
        const unsigned visit = m_lVisits;
        m_bUiActive = true;
        if (const HRESULT hr = place->OnUIActivate(); FAILED(hr)) {
            if (IsVisit(visit)) m_bUiActive = false;
            throw comkit::ComError(hr);
        }
        // Told of it, the container may have ended it.
        if (m_bUiActive && IsVisit(visit)) TellFrame(m_pActiveObject);
    }
    if (takeFocus && m_bUiActive) TakeFocus();
}

void Activation::TakeFocus() {
    win32::HostedSurface& surface = m_pCore->Surface();
    const HWND window = surface.Window();
    if (!window || ContainsFocus(window)) return;
    const HWND first = surface.FirstTabStop();
    SetFocus(first ? first : window);
}

void Activation::TellFrame(IOleInPlaceActiveObject* object) noexcept {
    const auto frame = m_pFrame;
    const auto document = m_pDocument;
    const wchar_t* name = object ? m_class.name : nullptr;
    if (frame) frame->SetActiveObject(object, name);
    if (object && !m_bUiActive) return;  // the frame ended it
    if (document) document->SetActiveObject(object, name);
    // The control has no tools of its own: the container keeps its own.
    if (object && frame) frame->SetBorderSpace(nullptr);
}

void Activation::UiDeactivate() noexcept {
    if (!m_bUiActive) return;
    const LeavingScope leaving(m_lLeaving);
    m_bUiActive = false;
    TellFrame(nullptr);
    if (const auto place = m_pPlace) place->OnUIDeactivate(FALSE);
}

void Activation::Deactivate() noexcept {
    if (!m_bActive) return;
    const LeavingScope leaving(m_lLeaving);
    UiDeactivate();
    if (m_bActive) LeavePlace();
}

void Activation::ClipWindow(HWND window, const RECT& clip) noexcept {
    RECT visible{};
    IntersectRect(&visible, &m_position, &clip);
    const bool clips = !IsRectEmpty(&clip) && !EqualRect(&visible, &m_position);
    // A region costs a round trip to the system and a repaint: a window that needs none is left alone.
    if (!clips && !m_bClipped) return;
    OffsetRect(&visible, -m_position.left, -m_position.top);
    comkit::UniqueRegion region(clips ? CreateRectRgnIndirect(&visible) : nullptr);
    if ((clips && !region) || !SetWindowRgn(window, region.Get(), TRUE)) return;
    region.Detach();  // the window owns it from here on
    m_bClipped = clips;
}

void Activation::Show(bool visible) {
    const HWND window = m_pCore->Surface().Window();
    if (!window) return;
    const bool isVisible = (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (visible != isVisible) ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
}

bool Activation::Invalidate(const RECT& pixels) noexcept {
    // With a window nobody is to be told: the window is invalid already.
    const auto place = m_pWindowlessPlace;
    if (!place) return false;
    // While it comes up it is laid out, and then drawn as a whole.
    if (!m_pCore->Surface().WindowlessPlace()) return true;
    RECT area = pixels;
    OffsetRect(&area, m_position.left, m_position.top);
    place->InvalidateRect(&area, FALSE);
    return true;
}

bool Activation::DrawAtOnce(const RECT& pixels, const win32::WindowlessSite::Drawing& draw) {
    const auto place = m_pWindowlessPlace;
    if (!place || !m_pCore->Surface().WindowlessPlace()) return false;
    const POINT origin{m_position.left, m_position.top};
    RECT area = pixels;
    OffsetRect(&area, origin.x, origin.y);
    HDC dc = nullptr;
    // No flags: the labels fill their places, so nothing has to be painted behind them.
    if (FAILED(place->GetDC(&area, 0, &dc)) || !dc) return false;
    struct Return {
        IOleInPlaceSiteWindowless& place;
        HDC dc;
        ~Return() { place.ReleaseDC(dc); }
    } const atTheEnd{*place, dc};
    draw(dc, origin);
    return true;
}

void Activation::Capture(bool wanted) noexcept {
    const auto place = m_pWindowlessPlace;
    if (!place || wanted == m_bCaptured) return;
    m_bCaptured = wanted;
    place->SetCapture(wanted ? TRUE : FALSE);
}

void Activation::FollowUiDead() noexcept {
    if (!m_bActive) return;
    const bool dead = m_site.IsUiDead();
    m_bUiDead = dead;
    const HWND window = m_pCore->Surface().Window();
    if (!window) return;
    const bool enabled = m_pCore->Surface().Area().IsEnabled() && !dead;
    if (enabled != (IsWindowEnabled(window) != FALSE)) EnableWindow(window, enabled);
}

void Activation::TellKeysChanged() noexcept {
    const auto site = m_site.Control();
    if (m_bActive && site) site->OnControlInfoChanged();
}

void Activation::SetRects(const RECT& position, const RECT& clip) {
    m_position = position;
    win32::HostedSurface& surface = m_pCore->Surface();
    surface.SetPixelRect(position);
    // Taking the place may have ended the windows, or moved them on.
    if (HWND window = surface.Window()) ClipWindow(window, clip);
}

void Activation::RequestSize(const Size& twips) {
    if (!m_bActive) {
        if (const auto site = m_site.Get()) site->RequestNewObjectLayout();
        return;
    }
    const double perPixel = m_pCore->Surface().Area().TwipsPerPixel();
    PutApart(m_position.left, m_position.right, twips.width / perPixel);
    PutApart(m_position.top, m_position.bottom, twips.height / perPixel);
    const RECT wanted = m_position;
    if (const auto place = m_pPlace) place->OnPosRectChange(&wanted);
}

}  // namespace kiv::server
