// A dialog described at run time: the same as a dialog resource, made in memory.
//
// Places are dialog units. Font: the system's dialog font, 8 points, or the one that is named.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace kiv::win32 {

class DialogTemplate {
public:
    struct Area {
        int x;
        int y;
        int width;
        int height;
    };
    static constexpr const wchar_t* SystemFont = L"MS Shell Dlg";
    static constexpr int FontPoints = 8;

    /// DS_SETFONT is added.
    DialogTemplate(DWORD style, DWORD extendedStyle, const Area& area, std::wstring_view caption = {},
                   std::wstring_view font = SystemFont);

    /// WS_CHILD and WS_VISIBLE are added.
    void Add(std::wstring_view className, std::wstring_view text, DWORD style, DWORD extendedStyle, const Area& area,
             WORD id);

    /// As long as this object lives and nothing is added.
    const DLGTEMPLATE* Get() const noexcept { return reinterpret_cast<const DLGTEMPLATE*>(m_words.data()); }

private:
    void PutWord(WORD word) { m_words.push_back(word); }
    void PutLong(DWORD value);
    void PutArea(const Area& area);
    void PutText(std::wstring_view text);

    std::vector<WORD> m_words;
    WORD m_count = 0;
};

/// Dialog units in pixels, for a dialog in the system's dialog font.
SIZE DialogPixels(int width, int height);

}  // namespace kiv::win32
