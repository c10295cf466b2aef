#include "win32/DialogTemplate.h"

#include "comkit/Errors.h"
#include "comkit/Handle.h"

namespace kiv::win32 {

namespace {

// Layout of an extended template, in words: version, signature, help, extended style, style, count of controls, ...
constexpr WORD ExtendedSignature = 0xFFFF;
constexpr WORD ExtendedVersion = 1;
constexpr std::size_t CountPosition = 8;

constexpr int PointsPerInch = 72;

}  // namespace

DialogTemplate::DialogTemplate(DWORD style, DWORD extendedStyle, const Area& area, std::wstring_view caption,
                               std::wstring_view font) {
    PutWord(ExtendedVersion);
    PutWord(ExtendedSignature);
    PutLong(0);
    PutLong(extendedStyle);
    PutLong(style | DS_SETFONT);
    PutWord(0);
    PutArea(area);
    PutText({});  // no menu
    PutText({});  // the usual class
    PutText(caption);
    PutWord(FontPoints);
    PutWord(FW_NORMAL);
    PutWord(MAKEWORD(FALSE, DEFAULT_CHARSET));
    PutText(font);
}

void DialogTemplate::Add(std::wstring_view className, std::wstring_view text, DWORD style, DWORD extendedStyle,
                         const Area& area, WORD id) {
    if (m_words.size() % 2 != 0) PutWord(0);
    PutLong(0);
    PutLong(extendedStyle);
    PutLong(style | WS_CHILD | WS_VISIBLE);
    PutArea(area);
    PutLong(id);
    PutText(className);
    PutText(text);
    PutWord(0);  // nothing for the control's creation
    m_words[CountPosition] = ++m_count;
}

void DialogTemplate::PutLong(DWORD value) {
    PutWord(LOWORD(value));
    PutWord(HIWORD(value));
}

void DialogTemplate::PutArea(const Area& area) {
    for (const int length : {area.x, area.y, area.width, area.height}) PutWord(static_cast<WORD>(length));
}

void DialogTemplate::PutText(std::wstring_view text) {
    for (const wchar_t c : text) PutWord(static_cast<WORD>(c));
    PutWord(0);
}

SIZE DialogPixels(int width, int height) {
    const comkit::WindowDc dc(nullptr);
    LOGFONTW wanted{};
    wanted.lfHeight = -MulDiv(DialogTemplate::FontPoints, GetDeviceCaps(dc.Get(), LOGPIXELSY), PointsPerInch);
    wanted.lfWeight = FW_NORMAL;
    wanted.lfCharSet = DEFAULT_CHARSET;
    std::wstring_view(DialogTemplate::SystemFont).copy(wanted.lfFaceName, LF_FACESIZE - 1);
    const comkit::UniqueFont font(CreateFontIndirectW(&wanted));
    if (!font) throw comkit::ComError(E_OUTOFMEMORY);
    const comkit::GdiSelection selection(dc.Get(), font.Get());
    // A dialog's units come from the average width of these letters and the height of a line.
    constexpr std::wstring_view Letters = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    SIZE extent{};
    GetTextExtentPoint32W(dc.Get(), Letters.data(), static_cast<int>(Letters.size()), &extent);
    const int unitX = (extent.cx / static_cast<int>(Letters.size() / 2) + 1) / 2;
    return {MulDiv(width, unitX, 4), MulDiv(height, extent.cy, 8)};
}

}  // namespace kiv::win32
