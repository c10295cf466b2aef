#include "server/ControlObject.h"

#include <Vexa.h>

#include "server/Boundary.h"
#include "server/ModalScope.h"
#include "server/Module.h"

namespace kiv::server {

namespace {

/// Captions carry access keys, and only what is visible and enabled answers to them.
bool ChangesAccessKeys(std::u16string_view key) noexcept {
    return key == u"Caption" || key == u"Enabled" || key == u"Mode" || key == u"ShowDST" || key == u"UsePCDateTime";
}

}  // namespace

ControlObject::ControlObject(const ControlClass& controlClass)
    : m_class(controlClass),
      m_events(*ComObject::Identity(), controlClass.eventInterface),
      m_activation(*this, m_site, controlClass),
      m_font([this] {
          const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
          m_pCore->OnFontChanged();
      }),
      m_persist(*ComObject::Identity(), controlClass, *this),
      m_connections(*ComObject::Identity(), m_events),
      m_control(*ComObject::Identity(), m_events, *this),
      m_oleObject(*ComObject::Identity(), controlClass, *this, m_site, m_activation, *this),
      m_inPlace(*ComObject::Identity(), m_activation, m_site),
      m_view(*ComObject::Identity(), *this),
      m_data(*ComObject::Identity(), *this),
      m_browse(*ComObject::Identity(), controlClass),
      m_quickActivate(*ComObject::Identity(), controlClass, m_events) {
    m_pCore = controlClass.createCore(*this);
    m_persist.Attach(*m_pCore);
    m_control.Attach(*m_pCore);
    m_oleObject.Attach(*m_pCore);
    m_inPlace.Attach(*m_pCore);
    m_view.Attach(*m_pCore);
    m_data.Attach(*m_pCore);
    m_activation.Attach(*m_pCore, m_inPlace);
}

ControlObject::~ControlObject() {
    m_font.Stop();
    m_activation.Deactivate();
    m_events.DropSinks();
    m_pCore->Terminate();
}

void* ControlObject::FindInterface(REFIID iid) noexcept {
    if (IsEqualIID(iid, IID_IProvideClassInfo)) return static_cast<IProvideClassInfo2*>(this);
    // While the object is being made there is no control yet.
    void* found = m_pCore ? m_pCore->FindInterface(iid) : nullptr;
    if (!found) found = m_oleObject.Find(iid);
    if (!found) found = m_persist.Find(iid);
    if (!found) found = m_view.Find(iid);
    if (!found) found = m_control.Find(iid);
    if (!found) found = m_inPlace.Find(iid);
    if (!found) found = m_connections.Find(iid);
    if (!found) found = m_quickActivate.Find(iid);
    if (!found) found = m_data.Find(iid);
    if (!found) found = m_browse.Find(iid);
    return found;
}

HRESULT ControlObject::GetClassInfo(ITypeInfo** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundary([&] { *out = Module::TypeInfo(m_class.clsid).Detach(); });
}

HRESULT ControlObject::GetGUID(DWORD kind, GUID* out) {
    if (!out) return E_POINTER;
    *out = GUID{};
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    *out = m_class.eventInterface;
    return S_OK;
}

HRESULT ControlObject::InterfaceSupportsErrorInfo(REFIID iid) {
    return IsEqualIID(iid, m_class.dualInterface) || IsEqualIID(iid, __uuidof(IVexaSupport)) ? S_OK : S_FALSE;
}

void ControlObject::OnLoaded() {
    m_font.Watch(m_pCore->Surface().Area().GetFont());
    TellPictureChanged();
    m_activation.FollowUiDead();
    m_activation.TellKeysChanged();
}

void ControlObject::TellPictureChanged() noexcept {
    m_view.NotifyChanged();
    m_data.NotifyChanged();
}

FontPtr ControlObject::AmbientFont() const {
    FontPtr font = m_site.Font();
    return font ? font : m_pCore->Surface().Area().GetFont();
}

bool ControlObject::RequestEdit(DISPID member) {
    return m_persist.IsLoading() || m_events.RequestEdit(member);
}

HWND ControlObject::DialogOwner() const noexcept {
    HWND window = m_pCore->Surface().Window();
    if (!window) {
        // A control without a window lies in its container's.
        const auto site = m_site.Get().As<IOleWindow>();
        if (!site || FAILED(site->GetWindow(&window))) window = nullptr;
    }
    return window ? GetAncestor(window, GA_ROOT) : GetActiveWindow();
}

void ControlObject::RunModal(const std::function<void(HWND owner)>& dialog) {
    const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
    const HWND owner = DialogOwner();
    const ModalScope modal(m_activation.Frame());
    dialog(owner);
}

void ControlObject::PropertyChanged(std::u16string_view key) {
    if (m_persist.IsLoading()) return;
    m_persist.MarkDirty();
    const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
    const DISPID member = m_pCore->MemberOfKey(key);
    if (key == u"Font") m_font.Watch(m_pCore->Surface().Area().GetFont());
    m_events.RaiseChanged(member);
    TellPictureChanged();
    if (key == u"Enabled") m_activation.FollowUiDead();
    if (ChangesAccessKeys(key)) m_activation.TellKeysChanged();
}

void ControlObject::MarkDirty() {
    if (!m_persist.IsLoading()) m_persist.MarkDirty();
}

void ControlObject::OnSizeChanged(const Size& twips) {
    const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
    m_activation.RequestSize(twips);
    TellPictureChanged();
}

void ControlObject::OnFocus(bool gained) {
    const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
    AtBoundary([&] {
        if (gained) m_activation.UiActivate(false);
        if (const auto site = m_site.Control()) site->OnFocus(gained);
    });
}

void ControlObject::OnMouseActivate() {
    const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
    AtBoundary([&] { m_activation.UiActivate(false); });
}

void ControlObject::OnInvalidate(const RECT& pixels) {
    if (m_persist.IsLoading()) return;
    const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
    if (!m_activation.Invalidate(pixels)) TellPictureChanged();
}

bool ControlObject::OnDraw(const RECT& pixels, const Drawing& draw) {
    if (m_persist.IsLoading()) return false;
    const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
    return m_activation.DrawAtOnce(pixels, draw);
}

void ControlObject::OnCapture(bool wanted) {
    const comkit::ComPtr<IUnknown> keepAlive(ComObject::Identity());
    m_activation.Capture(wanted);
}

void ControlObject::OnSettingsChanged() {
    m_pCore->OnSettingsChanged();
}

void ControlObject::OnAmbientsChanged() {
    // The others are read where they are needed, each time anew. Loading reads the mode too.
    if (m_persist.IsInitialized()) m_pCore->OnUserModeChanged();
    m_activation.FollowUiDead();
}

void ControlObject::OnClosing() noexcept {
    m_events.DropSinks();
    m_view.DropSink();
    m_data.DropSinks();
}

}  // namespace kiv::server
