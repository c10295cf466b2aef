#include "server/FontWatch.h"

#include <utility>

#include "server/Boundary.h"

namespace kiv::server {

/// Held by the font, which may outlive the control.
class FontWatch::Sink final : public comkit::ComObject<Sink, IPropertyNotifySink> {
public:
    explicit Sink(FontWatch& watch) noexcept : m_pWatch(&watch) {}
    void Forget() noexcept { m_pWatch = nullptr; }

    HRESULT STDMETHODCALLTYPE OnChanged(DISPID) override {
        if (!m_pWatch) return S_OK;
        // A copy: the control may take another font in answer, or end.
        const auto changed = m_pWatch->m_changed;
        return AtBoundary([&] { changed(); });
    }
    HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override { return S_OK; }

private:
    FontWatch* m_pWatch;
};

FontWatch::FontWatch(std::function<void()> changed) : m_changed(std::move(changed)) {}

FontWatch::~FontWatch() {
    Stop();
}

void FontWatch::Watch(const FontPtr& font) {
    const auto next = win32::OleFontOf(font);
    if (next && !next->HasObject()) {
        if (next == m_pUnmade) return;
        Stop();
        m_pUnmade = next;
        m_pUnmade->SetWatcher(this);
        return;
    }
    const auto identity = next ? comkit::ComPtr<IUnknown>::From(next->Object().Get()) : nullptr;
    if (identity && identity == m_pFont) return;
    Stop();
    if (next) Advise(*next->Object().Get());
}

void FontWatch::OnObjectMade() {
    const auto font = std::exchange(m_pUnmade, nullptr);
    Advise(*font->Object().Get());
}

void FontWatch::Advise(IFont& object) {
    const auto points = comkit::ComPtr<IConnectionPointContainer>::From(&object);
    comkit::ComPtr<IConnectionPoint> point;
    if (!points || FAILED(points->FindConnectionPoint(IID_IPropertyNotifySink, point.Put()))) return;
    auto sink = comkit::MakeObject<Sink>(*this);
    if (FAILED(point->Advise(sink.Get(), &m_cookie))) return;
    m_pFont = comkit::ComPtr<IUnknown>::From(&object);
    m_pPoint = std::move(point);
    m_pSink = std::move(sink);
}

void FontWatch::Stop() noexcept {
    if (const auto font = std::exchange(m_pUnmade, nullptr)) font->SetWatcher(nullptr);
    if (const auto sink = std::exchange(m_pSink, nullptr)) sink->Forget();
    if (const auto point = std::exchange(m_pPoint, nullptr)) point->Unadvise(m_cookie);
    m_pFont.Reset();
}

}  // namespace kiv::server
