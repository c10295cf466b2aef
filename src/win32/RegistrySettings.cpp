#include "win32/RegistrySettings.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "comkit/Bstr.h"
#include "comkit/Dispatch.h"
#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "framework/FrameworkNames.h"
#include "win32/ObjectByProgId.h"
#include "win32/VariantConversion.h"

namespace kiv::win32 {

using comkit::ComPtr;

namespace {

// What the registry object expects for the root and the access of a key, and as a value's type.
const auto LocalMachine = static_cast<std::int32_t>(reinterpret_cast<ULONG_PTR>(HKEY_LOCAL_MACHINE));
constexpr std::int32_t FullAccess = KEY_ALL_ACCESS;
constexpr std::int32_t NumberType = REG_DWORD;

void ThrowIfError(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw comkit::ComError(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

/// A number or a text, as the registry object hands it out.
Value SettingOf(const VARIANT& setting) {
    if (setting.vt == VT_BSTR) return std::u16string(comkit::ViewOf(setting.bstrVal));
    // Wide enough for a DWORD that is handed out as an unsigned number.
    return ConvertedTo(VT_R8, setting).Get().dblVal;
}

/// A key that the framework's registry object has open.
class ObjectKey final : public SettingsKey {
public:
    ObjectKey(ComPtr<IDispatch> registry, const wchar_t* opener, std::u16string_view path)
        : m_pRegistry(std::move(registry)) {
        comkit::Call(*m_pRegistry, opener, LocalMachine, path, FullAccess);
    }
    ObjectKey(const ObjectKey&) = delete;
    ObjectKey& operator=(const ObjectKey&) = delete;
    ~ObjectKey() override {
        try {
            comkit::Call(*m_pRegistry, vexa::Member::CloseKey);
        } catch (...) {
            // The object is let go next; there is nothing else to be done about a key that does not close.
            return;
        }
    }

    Value QueryValue(std::u16string_view name) override {
        return SettingOf(comkit::Call(*m_pRegistry, vexa::Member::QueryValue, name).Get());
    }

    void SetNumber(std::u16string_view name, std::int32_t value) override {
        comkit::Call(*m_pRegistry, vexa::Member::SetValue, name, NumberType, value);
    }

private:
    ComPtr<IDispatch> m_pRegistry;
};

class RegistryKey final : public SettingsKey {
public:
    explicit RegistryKey(comkit::UniqueRegKey key) noexcept : m_key(std::move(key)) {}

    Value QueryValue(std::u16string_view name) override {
        const std::wstring valueName(comkit::ToWide(name));
        DWORD type = 0;
        std::vector<BYTE> data(sizeof(DWORD) * 64);
        auto size = static_cast<DWORD>(data.size());
        LSTATUS status = RegQueryValueExW(m_key.Get(), valueName.c_str(), nullptr, &type, data.data(), &size);
        if (status == ERROR_MORE_DATA) {
            data.resize(size);
            status = RegQueryValueExW(m_key.Get(), valueName.c_str(), nullptr, &type, data.data(), &size);
        }
        ThrowIfError(status);
        return Decode(type, data, size);
    }

    void SetNumber(std::u16string_view name, std::int32_t value) override {
        const std::wstring valueName(comkit::ToWide(name));
        ThrowIfError(RegSetValueExW(m_key.Get(), valueName.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value),
                                    sizeof value));
    }

private:
    static Value Decode(DWORD type, const std::vector<BYTE>& data, DWORD size) {
        if (type == REG_DWORD && size == sizeof(DWORD)) {
            std::int32_t number = 0;
            std::copy_n(data.data(), sizeof number, reinterpret_cast<BYTE*>(&number));
            return number;
        }
        if (type != REG_SZ && type != REG_EXPAND_SZ) return Unsupported{};
        std::u16string text(size / sizeof(char16_t), u'\0');
        std::copy_n(data.data(), text.size() * sizeof(char16_t), reinterpret_cast<BYTE*>(text.data()));
        text.resize(std::min(text.size(), text.find(u'\0')));
        return text;
    }

    comkit::UniqueRegKey m_key;
};

}  // namespace

std::unique_ptr<SettingsKey> RegistrySettings::OpenKey(std::u16string_view path) {
    if (auto registry = TryCreateObject(vexa::ProgId::Registry))
        return std::make_unique<ObjectKey>(std::move(registry), vexa::Member::OpenKey, path);
    comkit::UniqueRegKey key;
    ThrowIfError(
        RegOpenKeyExW(HKEY_LOCAL_MACHINE, std::wstring(comkit::ToWide(path)).c_str(), 0, KEY_ALL_ACCESS, key.Put()));
    return std::make_unique<RegistryKey>(std::move(key));
}

std::unique_ptr<SettingsKey> RegistrySettings::CreateKey(std::u16string_view path) {
    if (auto registry = TryCreateObject(vexa::ProgId::Registry))
        return std::make_unique<ObjectKey>(std::move(registry), vexa::Member::CreateKey, path);
    comkit::UniqueRegKey key;
    ThrowIfError(RegCreateKeyExW(HKEY_LOCAL_MACHINE, std::wstring(comkit::ToWide(path)).c_str(), 0, nullptr,
                                 REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr));
    return std::make_unique<RegistryKey>(std::move(key));
}

}  // namespace kiv::win32
