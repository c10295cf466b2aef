// The host's main window, as active controls see it: where they are, who of them is active, their status text.
//
// Tool bars and menus of controls are declined.
#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include <functional>
#include <string>

#include "comkit/ComObject.h"

namespace screenhost {

class InPlaceFrame final : public comkit::ComObject<InPlaceFrame, IOleInPlaceFrame> {
public:
    InPlaceFrame(HWND window, std::function<void(const std::string&)> showStatus);

    /// The object that has the keyboard, or null.
    IOleInPlaceActiveObject* Active() const noexcept { return m_active.Get(); }
    /// The host is going away.
    void Close() noexcept;

    void* FindInterface(REFIID iid) noexcept;

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetBorder(RECT*) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(const BORDERWIDTHS*) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(const BORDERWIDTHS* widths) override;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR text) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, WORD) override { return S_FALSE; }

private:
    HWND m_window;
    std::function<void(const std::string&)> m_showStatus;
    comkit::ComPtr<IOleInPlaceActiveObject> m_active;
};

}  // namespace screenhost
