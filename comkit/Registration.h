// Self-registration as data, and the one interpreter that applies it.
//
// Registering is all or nothing: a failure puts everything back, created keys and former values included, and is
// reported as it came. Unregistering takes away exactly what registering wrote, and the keys that are empty then; what
// the server of the other bitness still needs stays until that one goes. Errors are ComError.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "comkit/Errors.h"
#include "comkit/Handle.h"

namespace comkit {

enum class RegistrationScope {
    Machine,
    User,  ///< the current user alone; needs no administrator
};

struct RegistryEntry {
    std::wstring key;                  ///< path below the root of all classes
    std::wstring name;                 ///< empty: the key's default value
    std::optional<std::wstring> text;  ///< nothing: the key alone
    /// Serves the server of the other bitness too, which sees the same key.
    bool shared = false;
};

namespace detail {

inline constexpr const wchar_t* ClassesPath = L"Software\\Classes";
inline constexpr REGSAM OtherBitness = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

inline void ThrowIfRegistryFailed(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw ComError(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

inline HKEY HiveOf(RegistrationScope scope) noexcept {
    return scope == RegistrationScope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

/// From the root of all classes to the hive: a user need not have the root itself, it may have to be made.
inline std::wstring InHive(const std::wstring& key) {
    return std::wstring(ClassesPath) + L"\\" + key;
}

inline bool IsEmptyKey(HKEY key) {
    DWORD keys = 0;
    DWORD values = 0;
    ThrowIfRegistryFailed(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                                           nullptr, nullptr, nullptr));
    return keys == 0 && values == 0;
}

/// Deletes a key and the keys above it, up to the first that still holds something; the root of all classes is the
/// last that may go.
inline void DeleteWhileEmpty(HKEY hive, std::wstring path) {
    while (path.size() >= std::wstring_view(ClassesPath).size()) {
        UniqueRegKey key;
        const LSTATUS opened = RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, key.Put());
        if (opened != ERROR_FILE_NOT_FOUND) {
            ThrowIfRegistryFailed(opened);
            if (!IsEmptyKey(key.Get())) return;
            key.Reset();
            ThrowIfRegistryFailed(RegDeleteKeyW(hive, path.c_str()));
        }
        const std::size_t cut = path.rfind(L'\\');
        path.resize(cut == std::wstring::npos ? 0 : cut);
    }
}

inline void RemoveValue(HKEY hive, const RegistryEntry& entry) {
    UniqueRegKey key;
    const LSTATUS opened = RegOpenKeyExW(hive, InHive(entry.key).c_str(), 0, KEY_READ | KEY_WRITE, key.Put());
    if (opened == ERROR_FILE_NOT_FOUND) return;
    ThrowIfRegistryFailed(opened);
    if (!entry.text) return;
    const LSTATUS deleted = RegDeleteValueW(key.Get(), entry.name.c_str());
    if (deleted != ERROR_FILE_NOT_FOUND) ThrowIfRegistryFailed(deleted);
}

inline void RemoveEntries(HKEY hive, const std::vector<RegistryEntry>& entries, bool shared) {
    for (const RegistryEntry& entry : entries)
        if (entry.shared == shared) RemoveValue(hive, entry);
    std::for_each(entries.rbegin(), entries.rend(), [&](const RegistryEntry& entry) {
        if (entry.shared == shared) DeleteWhileEmpty(hive, InHive(entry.key));
    });
}

}  // namespace detail

/// Writes entries below a root and, unless told to keep them, puts everything back as it was.
class RegistryTransaction {
public:
    /// root must outlive the transaction.
    explicit RegistryTransaction(HKEY root) noexcept : m_root(root) {}
    RegistryTransaction(const RegistryTransaction&) = delete;
    RegistryTransaction& operator=(const RegistryTransaction&) = delete;
    ~RegistryTransaction() {
        std::for_each(m_steps.rbegin(), m_steps.rend(), [this](const Step& step) { Undo(step); });
    }

    void Write(const RegistryEntry& entry) {
        const UniqueRegKey key = CreateKeys(entry.key);
        if (!entry.text) return;
        m_steps.push_back({entry.key, false, entry.name, FormerValue(key.Get(), entry.name)});
        detail::ThrowIfRegistryFailed(RegSetValueExW(key.Get(), entry.name.c_str(), 0, REG_SZ,
                                                     reinterpret_cast<const BYTE*>(entry.text->c_str()),
                                                     static_cast<DWORD>((entry.text->size() + 1) * sizeof(wchar_t))));
    }

    void Keep() noexcept { m_steps.clear(); }

private:
    struct Value {
        DWORD type = REG_NONE;
        std::vector<BYTE> data;
    };
    struct Step {
        std::wstring key;
        bool keyIsNew = false;
        std::wstring name;
        std::optional<Value> former;
    };

    /// Key by key, since each that is new has to be known.
    UniqueRegKey CreateKeys(const std::wstring& path) {
        UniqueRegKey key;
        for (std::size_t end = 0; end != std::wstring::npos;) {
            end = path.find(L'\\', end + 1);
            Step step{path.substr(0, end), true, {}, std::nullopt};
            m_steps.reserve(m_steps.size() + 1);  // so that noting a new key cannot fail
            DWORD disposition = 0;
            detail::ThrowIfRegistryFailed(RegCreateKeyExW(m_root, step.key.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE,
                                                          nullptr, key.Put(), &disposition));
            if (disposition == REG_CREATED_NEW_KEY) m_steps.push_back(std::move(step));
        }
        return key;
    }

    static std::optional<Value> FormerValue(HKEY key, const std::wstring& name) {
        Value value;
        DWORD size = 0;
        if (RegQueryValueExW(key, name.c_str(), nullptr, &value.type, nullptr, &size) != ERROR_SUCCESS)
            return std::nullopt;
        value.data.resize(size);
        detail::ThrowIfRegistryFailed(
            RegQueryValueExW(key, name.c_str(), nullptr, &value.type, value.data.data(), &size));
        value.data.resize(size);
        return value;
    }

    /// What cannot be put back stays: there is nobody left to tell.
    void Undo(const Step& step) const noexcept {
        if (step.keyIsNew) {
            RegDeleteKeyW(m_root, step.key.c_str());
            return;
        }
        UniqueRegKey key;
        if (RegOpenKeyExW(m_root, step.key.c_str(), 0, KEY_WRITE, key.Put()) != ERROR_SUCCESS) return;
        if (!step.former) {
            RegDeleteValueW(key.Get(), step.name.c_str());
            return;
        }
        const auto& data = step.former->data;
        RegSetValueExW(key.Get(), step.name.c_str(), 0, step.former->type, data.data(),
                       static_cast<DWORD>(data.size()));
    }

    HKEY m_root;
    std::vector<Step> m_steps;
};

inline void RegisterEntries(RegistrationScope scope, const std::vector<RegistryEntry>& entries) {
    RegistryTransaction transaction(detail::HiveOf(scope));
    for (RegistryEntry entry : entries) {
        entry.key = detail::InHive(entry.key);
        transaction.Write(entry);
    }
    transaction.Keep();
}

/// marks are keys of a bitness of its own whose presence tells that a server is registered.
inline void UnregisterEntries(RegistrationScope scope, const std::vector<RegistryEntry>& entries,
                              const std::vector<std::wstring>& marks) {
    const HKEY hive = detail::HiveOf(scope);
    detail::RemoveEntries(hive, entries, false);
    const bool otherStays = std::any_of(marks.begin(), marks.end(), [scope](const std::wstring& mark) {
        UniqueRegKey key;
        return RegOpenKeyExW(detail::HiveOf(scope), detail::InHive(mark).c_str(), 0, KEY_READ | detail::OtherBitness,
                             key.Put()) == ERROR_SUCCESS;
    });
    if (!otherStays) detail::RemoveEntries(hive, entries, true);
}

inline std::wstring GuidText(REFGUID guid) {
    wchar_t text[39];
    if (!StringFromGUID2(guid, text, static_cast<int>(std::size(text)))) throw ComError(E_FAIL);
    return text;
}

/// Full path of a loaded module.
inline std::wstring ModulePath(HMODULE module) {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) throw ComError(LastErrorResult());
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace comkit
