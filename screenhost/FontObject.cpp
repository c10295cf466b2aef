#include "screenhost/FontObject.h"

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <cmath>
#include <cstdlib>

#include "comkit/Bstr.h"
#include "comkit/Errors.h"
#include "comkit/Handle.h"

namespace screenhost {

namespace {

constexpr double CurrencyUnits = 10000.0;  // a CY counts ten-thousandths
constexpr int PointsPerInch = 72;

}  // namespace

comkit::ComPtr<IFontDisp> MakeFontObject(const FontSpec& spec) {
    std::u16string name = spec.name;
    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.lpstrName = reinterpret_cast<LPOLESTR>(name.data());
    description.cySize.int64 = std::llround(spec.size * CurrencyUnits);
    description.sWeight = static_cast<SHORT>(spec.weight);
    description.sCharset = static_cast<SHORT>(spec.charset);
    description.fItalic = spec.italic;
    description.fUnderline = spec.underline;
    description.fStrikethrough = spec.strikethrough;
    comkit::ComPtr<IFontDisp> font;
    comkit::ThrowIfFailed(OleCreateFontIndirect(&description, __uuidof(IFontDisp), font.PutVoid()));
    return font;
}

std::optional<FontSpec> ReadFontObject(IUnknown* object) {
    const auto font = comkit::ComPtr<IFont>::From(object);
    if (!font) return std::nullopt;
    comkit::Bstr name;
    CY size{};
    BOOL italic = FALSE;
    BOOL underline = FALSE;
    BOOL strikethrough = FALSE;
    SHORT weight = FW_NORMAL;
    SHORT charset = 0;
    const bool complete = SUCCEEDED(font->get_Name(name.Put())) && SUCCEEDED(font->get_Size(&size)) &&
                          SUCCEEDED(font->get_Italic(&italic)) && SUCCEEDED(font->get_Underline(&underline)) &&
                          SUCCEEDED(font->get_Strikethrough(&strikethrough)) && SUCCEEDED(font->get_Weight(&weight)) &&
                          SUCCEEDED(font->get_Charset(&charset));
    if (!complete) return std::nullopt;
    FontSpec spec;
    spec.name = name.View();
    spec.size = static_cast<double>(size.int64) / CurrencyUnits;
    spec.weight = weight;
    spec.charset = charset;
    spec.italic = italic != FALSE;
    spec.underline = underline != FALSE;
    spec.strikethrough = strikethrough != FALSE;
    return spec;
}

FontSpec SystemMessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    FontSpec spec;
    spec.name = u"Tahoma";
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) return spec;
    const LOGFONTW& font = metrics.lfMessageFont;
    const comkit::WindowDc screen(nullptr);
    const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSY);
    spec.name = comkit::ToUtf16(font.lfFaceName);
    // Quarters of a point, as font dialogs have them.
    if (font.lfHeight != 0 && dpi > 0)
        spec.size = std::round(4.0 * std::abs(font.lfHeight) * PointsPerInch / dpi) / 4.0;
    return spec;
}

}  // namespace screenhost
