// A container's site that records what a control asks of it and answers as it is told to.
#pragma once

#include <ocidl.h>
#include <oleacc.h>
#include <olectl.h>
#include <oleidl.h>
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "comkit/ComObject.h"
#include "comkit/Handle.h"
#include "comkit/Variant.h"
#include "server/AccessibleWindowlessSite.h"

namespace component {

/// The container's frame, which learns of the active object.
class RecordingFrame final : public comkit::ComObject<RecordingFrame, IOleInPlaceFrame> {
public:
    explicit RecordingFrame(HWND window) noexcept : m_window(window) {}
    /// As the site's.
    std::function<std::optional<HRESULT>(const char*)> onCall;
    bool HasActiveObject() const noexcept { return static_cast<bool>(m_pActive); }
    /// What EnableModeless was called with, in order.
    std::vector<bool> modeless;

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override {
        *out = m_window;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override {
        return onCall ? onCall("SetBorderSpace").value_or(S_OK) : S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
        if (const auto answer = onCall ? onCall("SetActiveObject") : std::nullopt) return *answer;
        m_pActive = comkit::ComPtr<IOleInPlaceActiveObject>(object);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override {
        modeless.push_back(enable != FALSE);
        return onCall ? onCall("EnableModeless").value_or(S_OK) : S_OK;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

private:
    HWND m_window;
    comkit::ComPtr<IOleInPlaceActiveObject> m_pActive;
};

class RecordingSite final : public comkit::ComObject<RecordingSite, IOleClientSite, IOleInPlaceSiteWindowless,
                                                     IOleControlSite, IDispatch, IAccessibleWindowlessSite> {
public:
    /// What the container is like.
    std::optional<bool> userMode = true;  ///< nothing: no such ambient property
    std::wstring extenderName = L"KivSetDateTime1";
    std::wstring displayName = L"Display1";
    comkit::ComPtr<IDispatch> font;
    bool allowsInPlace = true;
    bool followsPlace = true;  ///< answers OnPosRectChange with SetObjectRects
    bool hasFrame = true;
    /// The window of the document within the frame, of a container that has several. Null: it has none.
    comkit::ComPtr<RecordingFrame> documentWindow;
    /// Whether controls may live in the container's own window. Otherwise it has not the interfaces for it.
    bool offersNoWindow = false;
    /// What controls without a window lie in, for accessibility clients. Null: the container has no interface for that.
    comkit::ComPtr<IAccessible> accessibleParent;
    double unitsPerHimetric = 0.5;
    RECT position{20, 30, 320, 330};
    std::optional<RECT> clip;    ///< instead of the window's client area
    std::optional<HWND> parent;  ///< instead of the container's window
    /// Called when the extender is asked for the control's name; what it returns is what the control gets.
    std::function<HRESULT(VARIANT&)> onExtenderName;
    /// Called on OnPosRectChange, before the answer.
    std::function<void()> onPosRectChange;
    bool uiDead = false;
    std::vector<IID> missing;  ///< interfaces that this container has not
    /// Called first in every method that a control calls, with all out-values cleared. An answer takes the place of
    /// the method's own work.
    std::function<std::optional<HRESULT>(const char*)> onCall;
    /// Called for each ambient property that is asked for; true where it filled the value itself.
    std::function<bool(DISPID, VARIANT&)> onAmbient;

    /// Parts of the container's window that a control without a window asked to have drawn anew; empty: all of it.
    std::vector<RECT> outdated;
    /// The device context that it gives such a control to draw with, and the parts that were asked for. Null: none.
    HDC lent = nullptr;
    std::vector<RECT> drawn;
    DWORD keyModifiers = 0;  ///< of the last key that a control did not want: 1 Shift, 2 Ctrl, 4 Alt
    /// What happened, in order, by method name.
    std::vector<std::string> calls;
    int Count(const char* call) const;
    bool IsUiActive() const { return m_frame->HasActiveObject(); }
    HWND Window() const noexcept { return m_window.Get(); }

    RecordingSite();
    void Attach(IUnknown* control) noexcept { m_pControl = control; }
    RecordingFrame& Frame() const noexcept { return *m_frame; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    void* FindInterface(REFIID iid) noexcept;

    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override { return Note("SaveObject"); }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** out) override;
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** out) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override { return Note("ShowObject"); }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return Note("OnShowWindow"); }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return Note("RequestNewObjectLayout"); }
    // IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return Note("OnInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return Note("OnUIActivate"); }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT rect,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return Note("OnUIDeactivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return Note("OnInPlaceDeactivate"); }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT rect) override;
    // IOleInPlaceSiteEx
    HRESULT STDMETHODCALLTYPE OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivateEx(BOOL) override { return Note("OnInPlaceDeactivateEx"); }
    HRESULT STDMETHODCALLTYPE RequestUIActivate() override { return Note("RequestUIActivate"); }
    // IOleInPlaceSiteWindowless
    HRESULT STDMETHODCALLTYPE CanWindowlessActivate() override {
        return Intercept("CanWindowlessActivate").value_or(S_OK);
    }
    HRESULT STDMETHODCALLTYPE GetCapture() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE SetCapture(BOOL wanted) override {
        return Note(wanted ? "SetCapture(1)" : "SetCapture(0)");
    }
    HRESULT STDMETHODCALLTYPE GetFocus() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE SetFocus(BOOL) override { return Note("SetFocus"); }
    HRESULT STDMETHODCALLTYPE GetDC(LPCRECT rect, DWORD flags, HDC* out) override;
    HRESULT STDMETHODCALLTYPE ReleaseDC(HDC) override { return Note("ReleaseDC"); }
    HRESULT STDMETHODCALLTYPE InvalidateRect(LPCRECT rect, BOOL erase) override;
    HRESULT STDMETHODCALLTYPE InvalidateRgn(HRGN, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ScrollRect(INT, INT, LPCRECT, LPCRECT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AdjustRect(LPRECT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDefWindowMessage(UINT, WPARAM, LPARAM, LRESULT*) override { return S_FALSE; }
    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return Note("OnControlInfoChanged"); }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override;
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL gained) override { return Note(gained ? "OnFocus(1)" : "OnFocus(0)"); }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override;
    // IDispatch: the ambient properties
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* out) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;
    // IAccessibleWindowlessSite
    HRESULT STDMETHODCALLTYPE AcquireObjectIdRange(long, IAccessibleHandler*, long*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ReleaseObjectIdRange(long, IAccessibleHandler*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryObjectIdRanges(IAccessibleHandler*, SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetParentAccessible(IAccessible** out) override;

private:
    /// Notes a call and gives onCall's answer to it, else S_OK.
    HRESULT Note(const char* call);
    std::optional<HRESULT> Intercept(const char* call) const;

    comkit::UniqueWindow m_window;
    comkit::ComPtr<RecordingFrame> m_frame;
    IUnknown* m_pControl = nullptr;
};

}  // namespace component
