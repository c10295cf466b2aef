// Owning BSTR, and conversions between the Windows string types and UTF-16 strings of the standard library.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace comkit {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline std::wstring_view ToWide(std::u16string_view text) noexcept {
    return {reinterpret_cast<const wchar_t*>(text.data()), text.size()};
}

inline std::u16string_view ToUtf16(std::wstring_view text) noexcept {
    return {reinterpret_cast<const char16_t*>(text.data()), text.size()};
}

/// A null BSTR is the empty text.
inline std::u16string_view ViewOf(BSTR text) noexcept {
    return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)};
}

class Bstr {
public:
    Bstr() noexcept = default;
    /// Throws std::bad_alloc.
    explicit Bstr(std::u16string_view text)
        : m_text(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()))) {
        if (!m_text) throw std::bad_alloc();
    }
    explicit Bstr(const wchar_t* text) : Bstr(ToUtf16(text)) {}
    Bstr(Bstr&& other) noexcept : m_text(other.Detach()) {}
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(m_text, other.m_text);
        return *this;
    }
    ~Bstr() { SysFreeString(m_text); }

    BSTR Get() const noexcept { return m_text; }
    BSTR Detach() noexcept { return std::exchange(m_text, nullptr); }
    BSTR* Put() noexcept {
        SysFreeString(Detach());
        return &m_text;
    }
    std::u16string_view View() const noexcept { return ViewOf(m_text); }

private:
    BSTR m_text = nullptr;
};

}  // namespace comkit
