#include "win32/OleFont.h"

#include <utility>

#include "comkit/Bstr.h"
#include "comkit/Errors.h"

namespace kiv::win32 {

using comkit::Bstr;
using comkit::ComPtr;

namespace {

ComPtr<IFont> MakeObject(const FontTraits& traits) {
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
    return font;
}

}  // namespace

OleFont::OleFont(ComPtr<IFont> font) : m_pFont(std::move(font)) {}

OleFont::OleFont(FontTraits traits) : m_traits(std::move(traits)) {}

const ComPtr<IFont>& OleFont::Object() {
    if (!m_pFont) {
        m_pFont = MakeObject(m_traits);
        if (Watcher* const watcher = std::exchange(m_pWatcher, nullptr)) watcher->OnObjectMade();
    }
    return m_pFont;
}

FontTraits OleFont::Traits() const {
    if (!m_pFont) return m_traits;
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

std::shared_ptr<OleFont> OleFontOf(const FontPtr& font) noexcept {
    PlatformFont* const own = font ? font->OfPlatform() : nullptr;
    return own ? std::shared_ptr<OleFont>(font, static_cast<OleFont*>(own)) : nullptr;
}

FontPtr WrapFont(IUnknown* object) {
    ComPtr<IFont> font = ComPtr<IFont>::From(object);
    return font ? std::make_shared<OleFont>(std::move(font)) : nullptr;
}

FontPtr MakeFont(const FontTraits& traits) {
    return std::make_shared<OleFont>(traits);
}

ComPtr<IFontDisp> FontDispOf(const FontPtr& font) {
    if (!font) return nullptr;
    if (const auto ole = OleFontOf(font)) return ole->Object().As<IFontDisp>();
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
