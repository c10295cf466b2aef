#include "win32/OleFont.h"

#include <utility>

#include "comkit/Bstr.h"
#include "comkit/Errors.h"

namespace kiv::win32 {

using comkit::Bstr;
using comkit::ComPtr;

OleFont::OleFont(ComPtr<IFont> font) : m_pFont(std::move(font)) {}

FontTraits OleFont::Traits() const {
    FontTraits result;
    Bstr name;
    if (SUCCEEDED(m_pFont->get_Name(name.Put()))) result.name = name.View();
    CY size{};
    if (SUCCEEDED(m_pFont->get_Size(&size))) result.size = size.int64;
    SHORT number = 0;
    if (SUCCEEDED(m_pFont->get_Weight(&number))) result.weight = number;
    if (SUCCEEDED(m_pFont->get_Charset(&number))) result.charset = number;
    BOOL flag = FALSE;
    if (SUCCEEDED(m_pFont->get_Italic(&flag))) result.italic = flag != FALSE;
    if (SUCCEEDED(m_pFont->get_Underline(&flag))) result.underline = flag != FALSE;
    if (SUCCEEDED(m_pFont->get_Strikethrough(&flag))) result.strikethrough = flag != FALSE;
    return result;
}

FontPtr WrapFont(IUnknown* object) {
    ComPtr<IFont> font = ComPtr<IFont>::From(object);
    return font ? std::make_shared<OleFont>(std::move(font)) : nullptr;
}

FontPtr MakeFont(const FontTraits& traits) {
    std::wstring name(comkit::ToWide(traits.name));
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = name.data();
    description.cySize.int64 = traits.size;
    description.sWeight = traits.weight;
    description.sCharset = traits.charset;
    description.fItalic = traits.italic;
    description.fUnderline = traits.underline;
    description.fStrikethrough = traits.strikethrough;
    ComPtr<IFont> font;
    comkit::ThrowIfFailed(OleCreateFontIndirect(&description, __uuidof(IFont), font.PutVoid()));
    return std::make_shared<OleFont>(std::move(font));
}

ComPtr<IFontDisp> FontDispOf(const FontPtr& font) {
    if (!font) return nullptr;
    if (const auto* ole = dynamic_cast<const OleFont*>(font.get())) return ole->Object().As<IFontDisp>();
    return FontDispOf(MakeFont(font->Traits()));
}

FontPtr DefaultFont() {
    return MakeFont(DefaultFontTraits());
}

FontTraits DefaultFontTraits() {
    // The shell's logical font: always there, and scalable at every resolution.
    FontTraits result;
    result.name = u"MS Shell Dlg";
    return result;
}

}  // namespace kiv::win32
