// Self-registration as data, and the one interpreter that applies it.
//
// RegistryWriter writes entries below a root of classes and takes back everything it wrote, created keys and former
// values included, unless Commit is called: a registration that fails half-way leaves the registry as it was. Taking
// away is RemoveKeys. Errors are ComError with the system's own result.
#pragma once

#include <objbase.h>
#include <windows.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "comkit/Errors.h"
#include "comkit/Handle.h"

namespace comkit {

enum class RegistrationScope {
    Machine,
    User,  ///< the current user; needs no administrator
};

/// One text value. key is a path below the root of classes; an empty name is the key's default value.
struct RegistryEntry {
    std::wstring key;
    std::wstring name;
    std::wstring text;
};

inline void ThrowIfRegistryFailed(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw ComError(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

/// The key below which classes are registered.
inline UniqueRegKey OpenClassesRoot(RegistrationScope scope) {
    UniqueRegKey root;
    const HKEY hive = scope == RegistrationScope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    ThrowIfRegistryFailed(
        RegCreateKeyExW(hive, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, root.Put(), nullptr));
    return root;
}

class RegistryWriter {
public:
    /// root must outlive the writer.
    explicit RegistryWriter(HKEY root) noexcept : m_root(root) {}
    RegistryWriter(const RegistryWriter&) = delete;
    RegistryWriter& operator=(const RegistryWriter&) = delete;
    ~RegistryWriter() { RollBack(); }

    void Write(const RegistryEntry& entry) {
        CreateKeys(entry.key);
        UniqueRegKey key;
        ThrowIfRegistryFailed(RegOpenKeyExW(m_root, entry.key.c_str(), 0, KEY_QUERY_VALUE | KEY_SET_VALUE, key.Put()));
        m_undo.push_back({entry.key, entry.name, FormerValue(key.Get(), entry.name)});
        ThrowIfRegistryFailed(RegSetValueExW(key.Get(), entry.name.c_str(), 0, REG_SZ,
                                             reinterpret_cast<const BYTE*>(entry.text.c_str()),
                                             static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t))));
    }

    void Write(const std::vector<RegistryEntry>& entries) {
        for (const RegistryEntry& entry : entries) Write(entry);
    }

    void Commit() noexcept { m_undo.clear(); }

private:
    struct Value {
        DWORD type = REG_NONE;
        std::vector<BYTE> data;
    };
    /// Without a name, the key itself was created.
    struct Undo {
        std::wstring key;
        std::optional<std::wstring> name;
        std::optional<Value> former;
    };

    void CreateKeys(const std::wstring& path) {
        for (std::size_t end = 0; end != std::wstring::npos;) {
            end = path.find(L'\\', end + 1);
            Undo created{path.substr(0, end), std::nullopt, std::nullopt};
            m_undo.reserve(m_undo.size() + 1);  // so that noting a created key cannot fail
            UniqueRegKey key;
            DWORD disposition = 0;
            ThrowIfRegistryFailed(RegCreateKeyExW(m_root, created.key.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE,
                                                  nullptr, key.Put(), &disposition));
            if (disposition == REG_CREATED_NEW_KEY) m_undo.push_back(std::move(created));
        }
    }

    static std::optional<Value> FormerValue(HKEY key, const std::wstring& name) {
        Value value;
        DWORD size = 0;
        if (RegQueryValueExW(key, name.c_str(), nullptr, &value.type, nullptr, &size) != ERROR_SUCCESS)
            return std::nullopt;
        value.data.resize(size);
        ThrowIfRegistryFailed(RegQueryValueExW(key, name.c_str(), nullptr, &value.type, value.data.data(), &size));
        value.data.resize(size);
        return value;
    }

    void RollBack() noexcept {
        std::for_each(m_undo.rbegin(), m_undo.rend(), [this](const Undo& undo) { TakeBack(undo); });
        m_undo.clear();
    }

    /// What cannot be taken back stays: there is nobody left to tell.
    void TakeBack(const Undo& undo) const noexcept {
        if (!undo.name) {
            RegDeleteKeyW(m_root, undo.key.c_str());
            return;
        }
        UniqueRegKey key;
        if (RegOpenKeyExW(m_root, undo.key.c_str(), 0, KEY_SET_VALUE, key.Put()) != ERROR_SUCCESS) return;
        if (undo.former)
            RegSetValueExW(key.Get(), undo.name->c_str(), 0, undo.former->type, undo.former->data.data(),
                           static_cast<DWORD>(undo.former->data.size()));
        else
            RegDeleteValueW(key.Get(), undo.name->c_str());
    }

    HKEY m_root;
    std::vector<Undo> m_undo;
};

namespace detail {
/// Registering for one user may have had to make "CLSID" itself.
inline void RemoveParentIfEmpty(HKEY root, const std::wstring& path) noexcept {
    const std::size_t end = path.rfind(L'\\');
    if (end == std::wstring::npos) return;
    try {
        const std::wstring parent = path.substr(0, end);
        UniqueRegKey key;
        DWORD keys = 1;
        DWORD values = 1;
        if (RegOpenKeyExW(root, parent.c_str(), 0, KEY_READ, key.Put()) != ERROR_SUCCESS) return;
        if (RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr, nullptr,
                             nullptr, nullptr) != ERROR_SUCCESS)
            return;
        key.Reset();
        if (keys == 0 && values == 0) RegDeleteKeyW(root, parent.c_str());
    } catch (const std::bad_alloc&) {
        return;  // an empty key left behind does no harm
    }
}
}  // namespace detail

/// Deletes keys with all that is below them. A missing key is no error; the first real failure is thrown after the
/// other keys were tried.
inline void RemoveKeys(HKEY root, const std::vector<std::wstring>& keys) {
    LSTATUS first = ERROR_SUCCESS;
    for (const std::wstring& key : keys) {
        const LSTATUS status = RegDeleteTreeW(root, key.c_str());
        if (status == ERROR_SUCCESS) detail::RemoveParentIfEmpty(root, key);
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND && first == ERROR_SUCCESS) first = status;
    }
    ThrowIfRegistryFailed(first);
}

inline std::wstring GuidText(REFGUID guid) {
    wchar_t text[39];
    StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
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
