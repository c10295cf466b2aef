// The text of an edit window, and its selection.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

#include "comkit/Bstr.h"
#include "platform/UserServices.h"

namespace kiv::win32 {

/// Of any window.
inline std::u16string WindowTextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return std::u16string(comkit::ToUtf16(text));
}

class EditText final : public TextSelection {
public:
    explicit EditText(HWND edit) noexcept : m_edit(edit) {}

    std::u16string Text() const override { return WindowTextOf(m_edit); }
    std::size_t SelStart() const override { return Selection().start; }
    void SetSelStart(std::size_t start) override { Select(start, start); }
    std::size_t SelLength() const override {
        const Range range = Selection();
        return range.end - range.start;
    }
    void SetSelLength(std::size_t length) override {
        const std::size_t start = SelStart();
        Select(start, start + length);
    }

private:
    struct Range {
        DWORD start = 0;
        DWORD end = 0;
    };
    Range Selection() const noexcept {
        Range range;
        SendMessageW(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&range.start), reinterpret_cast<LPARAM>(&range.end));
        return range;
    }
    void Select(std::size_t start, std::size_t end) noexcept {
        SendMessageW(m_edit, EM_SETSEL, static_cast<WPARAM>(start), static_cast<LPARAM>(end));
    }

    HWND m_edit;
};

}  // namespace kiv::win32
