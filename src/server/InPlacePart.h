// IOleInPlaceObject and IOleInPlaceActiveObject: the container moves, deactivates and feeds keys to the control; for a
// control that can do without a window IOleInPlaceObjectWindowless too, by which it gets its messages.
#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include "comkit/ComObject.h"
#include "server/Activation.h"

namespace kiv::server {

class InPlacePart final : public comkit::ComPart<IOleInPlaceObjectWindowless, IOleInPlaceActiveObject> {
public:
    InPlacePart(IUnknown& owner, Activation& activation, const ClientSite& site) noexcept
        : ComPart(owner), m_activation(activation), m_site(site) {}
    void Attach(ControlCore& core) noexcept { m_pCore = &core; }

    /// As ComPart, and IOleInPlaceObject, IOleWindow.
    void* Find(REFIID iid) noexcept;

    // IOleWindow
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    // IOleInPlaceObject
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT position, LPCRECT clip) override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
    // IOleInPlaceObjectWindowless
    HRESULT STDMETHODCALLTYPE OnWindowMessage(UINT id, WPARAM wParam, LPARAM lParam, LRESULT* out) override;
    HRESULT STDMETHODCALLTYPE GetDropTarget(IDropTarget** out) override;
    // IOleInPlaceActiveObject
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

private:
    Activation& m_activation;
    const ClientSite& m_site;
    ControlCore* m_pCore = nullptr;
};

}  // namespace kiv::server
