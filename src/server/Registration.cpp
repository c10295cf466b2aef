#include "server/Registration.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "server/Module.h"
#include "server/RegistryEntries.h"

namespace kiv::server {

namespace {

constexpr std::wstring_view ClassesPath = L"Software\\Classes";
#ifdef _WIN64
constexpr REGSAM OtherBitness = KEY_WOW64_32KEY;
#else
constexpr REGSAM OtherBitness = KEY_WOW64_64KEY;
#endif

HKEY BaseOf(RegistrationScope scope) noexcept {
    return scope == RegistrationScope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

void ThrowIfError(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw comkit::ComError(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

bool IsEmpty(HKEY key) noexcept {
    DWORD keys = 0;
    DWORD values = 0;
    const LSTATUS status = RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                                            nullptr, nullptr, nullptr);
    return status == ERROR_SUCCESS && keys == 0 && values == 0;
}

std::wstring ClassesKey(const std::wstring& key) {
    return std::wstring(ClassesPath) + L"\\" + key;
}

/// Deletes a key and the keys above it, up to the first that still holds something; a user need not have the root of
/// all classes either.
void DeleteWhileEmpty(HKEY root, std::wstring path) noexcept {
    while (path.size() >= ClassesPath.size()) {
        comkit::UniqueRegKey key;
        if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, key.Put()) == ERROR_SUCCESS) {
            if (!IsEmpty(key.Get())) return;
            key.Reset();
            if (RegDeleteKeyW(root, path.c_str()) != ERROR_SUCCESS) return;
        }
        const auto cut = path.find_last_of(L'\\');
        path.resize(cut == path.npos ? 0 : cut);
    }
}

/// Writes entries and, unless told to keep them, puts everything back as it was.
class RegistryTransaction {
public:
    explicit RegistryTransaction(HKEY root) noexcept : m_root(root) {}
    RegistryTransaction(const RegistryTransaction&) = delete;
    RegistryTransaction& operator=(const RegistryTransaction&) = delete;
    ~RegistryTransaction() {
        for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step) Undo(*step);
    }

    void Write(const RegistryEntry& entry) {
        const std::wstring path = ClassesKey(entry.key);
        const comkit::UniqueRegKey key = CreateKey(path);
        if (entry.text) WriteValue(key.Get(), path, entry);
    }
    void Keep() noexcept { m_steps.clear(); }

private:
    struct Step {
        std::wstring key;
        bool keyIsNew = false;
        std::wstring name;
        bool hadValue = false;
        DWORD type = REG_SZ;
        std::vector<BYTE> data;
    };

    /// Key by key, since each that is new has to be known.
    comkit::UniqueRegKey CreateKey(const std::wstring& path) {
        comkit::UniqueRegKey key;
        for (std::size_t end = 0; end != path.npos;) {
            end = path.find(L'\\', end == 0 ? 0 : end + 1);
            Step step;
            step.key = path.substr(0, end);
            m_steps.reserve(m_steps.size() + 1);
            DWORD disposition = 0;
            // The keys above the root of all classes exist, and need not be writable.
            const bool exists = step.key.size() < ClassesPath.size();
            const REGSAM access = exists ? KEY_READ : KEY_READ | KEY_WRITE;
            ThrowIfError(
                RegCreateKeyExW(m_root, step.key.c_str(), 0, nullptr, 0, access, nullptr, key.Put(), &disposition));
            step.keyIsNew = disposition == REG_CREATED_NEW_KEY;
            if (step.keyIsNew) m_steps.push_back(std::move(step));
        }
        return key;
    }

    void WriteValue(HKEY key, const std::wstring& path, const RegistryEntry& entry) {
        Step step;
        step.key = path;
        step.name = entry.name;
        DWORD size = 0;
        step.hadValue = RegQueryValueExW(key, entry.name.c_str(), nullptr, &step.type, nullptr, &size) == ERROR_SUCCESS;
        if (step.hadValue) {
            step.data.resize(size);
            ThrowIfError(RegQueryValueExW(key, entry.name.c_str(), nullptr, &step.type, step.data.data(), &size));
        }
        m_steps.push_back(std::move(step));
        ThrowIfError(RegSetValueExW(key, entry.name.c_str(), 0, REG_SZ,
                                    reinterpret_cast<const BYTE*>(entry.text->c_str()),
                                    static_cast<DWORD>((entry.text->size() + 1) * sizeof(wchar_t))));
    }

    void Undo(const Step& step) noexcept {
        if (step.keyIsNew) {
            RegDeleteKeyW(m_root, step.key.c_str());
            return;
        }
        comkit::UniqueRegKey key;
        if (RegOpenKeyExW(m_root, step.key.c_str(), 0, KEY_WRITE, key.Put()) != ERROR_SUCCESS) return;
        if (step.hadValue)
            RegSetValueExW(key.Get(), step.name.c_str(), 0, step.type, step.data.data(),
                           static_cast<DWORD>(step.data.size()));
        else
            RegDeleteValueW(key.Get(), step.name.c_str());
    }

    HKEY m_root;
    std::vector<Step> m_steps;
};

void RemoveValue(HKEY root, const RegistryEntry& entry) {
    comkit::UniqueRegKey key;
    const LSTATUS opened = RegOpenKeyExW(root, ClassesKey(entry.key).c_str(), 0, KEY_READ | KEY_WRITE, key.Put());
    if (opened == ERROR_FILE_NOT_FOUND) return;
    ThrowIfError(opened);
    if (!entry.text) return;
    const LSTATUS deleted = RegDeleteValueW(key.Get(), entry.name.c_str());
    if (deleted != ERROR_FILE_NOT_FOUND) ThrowIfError(deleted);
}

void RemoveEntries(HKEY root, const std::vector<RegistryEntry>& entries, bool shared) {
    for (const RegistryEntry& entry : entries)
        if (entry.shared == shared) RemoveValue(root, entry);
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        if (entry->shared == shared) DeleteWhileEmpty(root, ClassesKey(entry->key));
}

bool OtherBitnessRegistered(RegistrationScope scope) {
    const auto keys = ServerKeys();
    return std::any_of(keys.begin(), keys.end(), [scope](const std::wstring& key) {
        comkit::UniqueRegKey opened;
        return RegOpenKeyExW(BaseOf(scope), ClassesKey(key).c_str(), 0, KEY_READ | OtherBitness, opened.Put()) ==
               ERROR_SUCCESS;
    });
}

}  // namespace

void RegisterServer(RegistrationScope scope) {
    RegistryTransaction transaction(BaseOf(scope));
    for (const RegistryEntry& entry : ServerEntries(Module::FileName())) transaction.Write(entry);
    transaction.Keep();
}

void UnregisterServer(RegistrationScope scope) {
    const auto entries = ServerEntries(Module::FileName());
    RemoveEntries(BaseOf(scope), entries, false);
    if (!OtherBitnessRegistered(scope)) RemoveEntries(BaseOf(scope), entries, true);
}

}  // namespace kiv::server
