#include "win32/GdiFont.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

#include "comkit/Bstr.h"
#include "win32/Dpi.h"
#include "win32/OleFont.h"

namespace kiv::win32 {

namespace {

constexpr double SizeUnitsPerPoint = 10000;
constexpr double PointsPerInch = 72;

LOGFONTW DescribeFont(const FontTraits& traits, int dpi) {
    LOGFONTW result{};
    const double points = static_cast<double>(traits.size) / SizeUnitsPerPoint;
    result.lfHeight = -static_cast<LONG>(std::lround(std::clamp(points, 1.0, 1000.0) * dpi / PointsPerInch));
    result.lfWeight = traits.weight;
    result.lfItalic = traits.italic;
    result.lfUnderline = traits.underline;
    result.lfStrikeOut = traits.strikethrough;
    result.lfCharSet = static_cast<BYTE>(traits.charset);
    const std::wstring_view name = comkit::ToWide(traits.name);
    std::copy_n(name.begin(), std::min<std::size_t>(name.size(), LF_FACESIZE - 1), result.lfFaceName);
    return result;
}

constexpr std::size_t LongestRemembered = 64;

HDC MakeMeasuringDc() {
    const HDC dc = CreateCompatibleDC(nullptr);
    if (!dc) throw std::bad_alloc();
    return dc;
}

SIZE MeasureWith(HFONT font, std::wstring_view text) {
    // One device context for all, made once: asking the system for the screen's costs more than the measuring.
    static comkit::SlimLock lock;
    static const comkit::UniqueMemoryDc dc(MakeMeasuringDc());
    const std::lock_guard guard(lock);
    const comkit::GdiSelection selection(dc.Get(), font);
    SIZE size{};
    GetTextExtentPoint32W(dc.Get(), text.data(), static_cast<int>(text.size()), &size);
    return size;
}

struct CachedFont {
    FontTraits traits;
    int dpi;
    std::weak_ptr<const GdiFont> font;
};

}  // namespace

GdiFont::GdiFont(const FontTraits& traits, int dpi) {
    const LOGFONTW description = DescribeFont(traits, dpi);
    m_font.Reset(CreateFontIndirectW(&description));
    if (!m_font) throw std::bad_alloc();
}

SIZE GdiFont::Measure(std::wstring_view text) const {
    const std::lock_guard guard(m_lock);
    for (const Measured& entry : m_recent)
        if (entry.size.cy != 0 && entry.text == text) return entry.size;
    const SIZE size = MeasureWith(m_font.Get(), text);
    if (text.size() > LongestRemembered) return size;
    Measured& entry = m_recent.at(m_oldest);
    entry.text = text;
    entry.size = size;
    m_oldest = (m_oldest + 1) % m_recent.size();
    return size;
}

LONG GdiFont::LineHeightIn(HDC screen) const noexcept {
    LONG height = m_lineHeight.load(std::memory_order_relaxed);
    if (TEXTMETRICW metrics{}; height == 0 && GetTextMetricsW(screen, &metrics)) {
        height = metrics.tmHeight;
        m_lineHeight.store(height, std::memory_order_relaxed);
    }
    return height;
}

GdiFontPtr FindGdiFont(const FontTraits& traits, int dpi) {
    // Controls may live in several apartments, hence the lock.
    static comkit::SlimLock lock;
    static std::vector<CachedFont> cache;
    const std::lock_guard guard(lock);
    std::erase_if(cache, [](const CachedFont& entry) { return entry.font.expired(); });
    for (const CachedFont& entry : cache) {
        if (entry.dpi != dpi || entry.traits != traits) continue;
        if (GdiFontPtr font = entry.font.lock()) return font;
    }
    GdiFontPtr font = std::make_shared<const GdiFont>(traits, dpi);
    cache.push_back({traits, dpi, font});
    return font;
}

Size MeasureTextIn(const FontPtr& font, std::u16string_view text, int dpi) {
    return MeasureTextIn(*FindGdiFont(TraitsOrDefault(font), dpi), text, dpi);
}

Size MeasureTextIn(const GdiFont& font, std::u16string_view text, int dpi) {
    const SIZE size = font.Measure(comkit::ToWide(text));
    return {TwipsFromPixels(size.cx, dpi), TwipsFromPixels(size.cy, dpi)};
}

FontTraits TraitsOrDefault(const FontPtr& font) {
    return font ? font->Traits() : DefaultFontTraits();
}

}  // namespace kiv::win32
