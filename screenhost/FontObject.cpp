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

comkit::ComPtr<IFontDisp> MakeFontObject(const FontSpec& wanted) {
    std::u16string name = wanted.name;
    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.lpstrName = reinterpret_cast<LPOLESTR>(name.data());
    description.cySize.int64 = std::llround(wanted.size * CurrencyUnits);
    description.sWeight = static_cast<SHORT>(wanted.weight);
    description.sCharset = static_cast<SHORT>(wanted.charset);
    description.fItalic = wanted.italic;
    description.fUnderline = wanted.underline;
    description.fStrikethrough = wanted.strikethrough;
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
    FontSpec result;
    result.name = name.View();
    result.size = static_cast<double>(size.int64) / CurrencyUnits;
    result.weight = weight;
    result.charset = charset;
    result.italic = italic != FALSE;
    result.underline = underline != FALSE;
    result.strikethrough = strikethrough != FALSE;
    return result;
}

FontSpec SystemMessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    FontSpec result;
    result.name = u"Tahoma";
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) return result;
    const LOGFONTW& font = metrics.lfMessageFont;
    const comkit::WindowDc screen(nullptr);
    const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSY);
    result.name = comkit::ToUtf16(font.lfFaceName);
    // Quarters of a point, as font dialogs have them.
    if (font.lfHeight != 0 && dpi > 0)
        result.size = std::round(4.0 * std::abs(font.lfHeight) * PointsPerInch / dpi) / 4.0;
    return result;
}

}  // namespace screenhost
