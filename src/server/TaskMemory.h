// Task memory (CoTaskMemAlloc) on its way to a caller, who frees it; freed here where it never gets there.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <cstddef>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace kiv::server {

/// Elements, all zero at first. Throws std::bad_alloc.
template <class T>
class TaskArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    explicit TaskArray(std::size_t count)
        : m_p(static_cast<T*>(CoTaskMemAlloc((count ? count : 1) * sizeof(T)))), m_count(count) {
        if (!m_p) throw std::bad_alloc();
        for (std::size_t i = 0; i < count; ++i) m_p[i] = T{};
    }
    TaskArray(const TaskArray&) = delete;
    TaskArray& operator=(const TaskArray&) = delete;
    ~TaskArray() { CoTaskMemFree(m_p); }

    T& operator[](std::size_t index) noexcept { return m_p[index]; }
    T* begin() noexcept { return m_p; }
    T* end() noexcept { return m_p + m_count; }
    T* Release() noexcept { return std::exchange(m_p, nullptr); }

private:
    T* m_p;
    std::size_t m_count;
};

/// A copy with its terminator. Throws std::bad_alloc.
inline LPOLESTR TaskString(std::wstring_view text) {
    TaskArray<wchar_t> copy(text.size() + 1);
    text.copy(copy.begin(), text.size());
    return copy.Release();
}

/// Copies of texts that are not yet in their caller's hands.
class TaskStrings {
public:
    TaskStrings() = default;
    TaskStrings(const TaskStrings&) = delete;
    TaskStrings& operator=(const TaskStrings&) = delete;
    ~TaskStrings() {
        for (const LPOLESTR text : m_texts) CoTaskMemFree(text);
    }
    LPOLESTR Add(std::wstring_view text) {
        m_texts.reserve(m_texts.size() + 1);
        return m_texts.emplace_back(TaskString(text));
    }
    void Release() noexcept { m_texts.clear(); }

private:
    std::vector<LPOLESTR> m_texts;
};

}  // namespace kiv::server
