// A container that lets controls live in its own window, and draws them there when it is painted.
#pragma once

#include <ocidl.h>
#include <oleidl.h>
#include <windows.h>

#include <vector>

#include "comkit/ComObject.h"
#include "comkit/ComPtr.h"
#include "comkit/Handle.h"

namespace bench {

/// The container's window with the views of all controls that live in it.
class WindowlessForm {
public:
    WindowlessForm();
    WindowlessForm(const WindowlessForm&) = delete;
    WindowlessForm& operator=(const WindowlessForm&) = delete;
    ~WindowlessForm() = default;

    HWND Window() const noexcept { return m_window.Get(); }
    void Show(comkit::ComPtr<IViewObject> view) { m_views.push_back(std::move(view)); }
    void Clear() noexcept { m_views.clear(); }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

    std::vector<comkit::ComPtr<IViewObject>> m_views;
    comkit::UniqueWindow m_window;
};

/// The site of one control, in run mode.
class WindowlessSite final : public comkit::ComObject<WindowlessSite, IOleClientSite, IOleInPlaceSiteWindowless> {
public:
    WindowlessSite(WindowlessForm& form, const RECT& place) noexcept : m_form(form), m_place(place) {}

    void* FindInterface(REFIID iid) noexcept {
        const bool isOlder = IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceSite) ||
                             IsEqualIID(iid, IID_IOleInPlaceSiteEx);
        return isOlder ? static_cast<IOleInPlaceSiteWindowless*>(this) : nullptr;
    }

    HRESULT STDMETHODCALLTYPE SaveObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override {
        *out = m_form.Window();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
        *frame = nullptr;
        *document = nullptr;
        *place = m_place;
        *clip = m_place;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivateEx(BOOL* noRedraw, DWORD) override {
        *noRedraw = TRUE;  // the form draws all of itself once all of its controls are there
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivateEx(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestUIActivate() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE CanWindowlessActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetCapture() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE SetCapture(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetFocus() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE SetFocus(BOOL) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE GetDC(LPCRECT, DWORD, HDC*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ReleaseDC(HDC) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InvalidateRect(LPCRECT rect, BOOL erase) override {
        ::InvalidateRect(m_form.Window(), rect ? rect : &m_place, erase);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InvalidateRgn(HRGN, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ScrollRect(INT, INT, LPCRECT, LPCRECT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AdjustRect(LPRECT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDefWindowMessage(UINT, WPARAM, LPARAM, LRESULT*) override { return S_FALSE; }

private:
    WindowlessForm& m_form;
    RECT m_place;
};

}  // namespace bench
