#include "screenhost/InPlaceFrame.h"

#include "comkit/Errors.h"
#include "screenhost/WideText.h"

namespace screenhost {

InPlaceFrame::InPlaceFrame(HWND window, std::function<void(const std::string&)> showStatus)
    : m_window(window), m_showStatus(std::move(showStatus)) {}

void InPlaceFrame::Close() noexcept {
    m_window = nullptr;
    m_showStatus = nullptr;
    m_active.Reset();
}

void* InPlaceFrame::FindInterface(REFIID iid) noexcept {
    const bool base = IsEqualIID(iid, __uuidof(IOleWindow)) || IsEqualIID(iid, __uuidof(IOleInPlaceUIWindow));
    return base ? static_cast<IOleInPlaceFrame*>(this) : nullptr;
}

HRESULT InPlaceFrame::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = m_window;
    return m_window ? S_OK : E_UNEXPECTED;
}

HRESULT InPlaceFrame::SetBorderSpace(const BORDERWIDTHS* widths) {
    const bool none = !widths || (!widths->left && !widths->top && !widths->right && !widths->bottom);
    return none ? S_OK : INPLACE_E_NOTOOLSPACE;
}

HRESULT InPlaceFrame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    m_active = comkit::ComPtr<IOleInPlaceActiveObject>(object);
    return S_OK;
}

HRESULT InPlaceFrame::SetStatusText(LPCOLESTR text) {
    return comkit::Guarded([&] {
        if (m_showStatus) m_showStatus(text ? Narrow(std::wstring_view(text)) : std::string());
    });
}

}  // namespace screenhost
