#include "simulator/RegistryObject.h"

#include <iterator>
#include <string>

#include "comkit/Errors.h"
#include "framework/FrameworkNames.h"
#include "simulator/Simulation.h"

namespace vexa {

using comkit::ComError;
using comkit::Variant;

namespace {

/// The root arrives as a signed 32-bit number; the system's own handles are that, sign-extended.
HKEY RootOf(std::int32_t root) noexcept {
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(root));
}

std::wstring WideText(const LateArguments& arguments, std::size_t position) {
    const std::u16string text = arguments.Text(position);
    return std::wstring(comkit::ToWide(text));
}

/// The error carries the system's own description of it.
void ThrowIfRegistryFailed(LSTATUS status) {
    if (status == ERROR_SUCCESS) return;
    wchar_t text[256];
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                       nullptr, static_cast<DWORD>(status), 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    std::wstring_view description(text, length);
    description = description.substr(0, description.find_last_not_of(L' ') + 1);
    throw ComError(HRESULT_FROM_WIN32(static_cast<DWORD>(status)), {}, std::u16string(comkit::ToUtf16(description)));
}

Variant TextOf(std::wstring data) {
    data.resize(wcsnlen(data.c_str(), data.size()));
    return Variant(comkit::ToUtf16(data));
}

}  // namespace

RegistryObject::RegistryObject() {
    Simulation::CheckInjectedFailure();
}

std::span<const LateMember<RegistryObject>> RegistryObject::Members() {
    static constexpr LateMember<RegistryObject> members[] = {
        {Member::OpenKey, 1, CallOrGet, 3, 3, &RegistryObject::OpenKey},
        {Member::CreateKey, 2, CallOrGet, 3, 3, &RegistryObject::CreateKey},
        {Member::QueryValue, 3, CallOrGet, 1, 1, &RegistryObject::QueryValue},
        {Member::SetValue, 4, CallOrGet, 3, 3, &RegistryObject::SetValue},
        {Member::CloseKey, 5, CallOrGet, 0, 0, &RegistryObject::CloseKey},
    };
    return members;
}

HKEY RegistryObject::OpenedKey() const {
    Simulation::CheckInjectedFailure();
    if (!m_key) throw ComError(HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE), {}, u"no key is open");
    return m_key.Get();
}

Variant RegistryObject::OpenKey(const LateArguments& arguments) {
    Simulation::CheckInjectedFailure();
    ThrowIfRegistryFailed(RegOpenKeyExW(RootOf(arguments.Long(0)), WideText(arguments, 1).c_str(), 0,
                                        static_cast<REGSAM>(arguments.Long(2)), m_key.Put()));
    return {};
}

Variant RegistryObject::CreateKey(const LateArguments& arguments) {
    Simulation::CheckInjectedFailure();
    ThrowIfRegistryFailed(RegCreateKeyExW(RootOf(arguments.Long(0)), WideText(arguments, 1).c_str(), 0, nullptr, 0,
                                          static_cast<REGSAM>(arguments.Long(2)), nullptr, m_key.Put(), nullptr));
    return {};
}

/// Numbers as Long, texts as String; other kinds of values are a type mismatch.
Variant RegistryObject::QueryValue(const LateArguments& arguments) {
    const std::wstring name = WideText(arguments, 0);
    DWORD type = REG_NONE;
    DWORD size = 0;
    ThrowIfRegistryFailed(RegQueryValueExW(OpenedKey(), name.c_str(), nullptr, &type, nullptr, &size));
    if (type == REG_DWORD && size == sizeof(std::int32_t)) {
        std::int32_t number = 0;
        ThrowIfRegistryFailed(
            RegQueryValueExW(m_key.Get(), name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(&number), &size));
        return Variant(number);
    }
    if (type != REG_SZ && type != REG_EXPAND_SZ) throw ComError(DISP_E_TYPEMISMATCH);
    std::wstring data(size / sizeof(wchar_t) + 1, L'\0');
    size = static_cast<DWORD>((data.size() - 1) * sizeof(wchar_t));
    ThrowIfRegistryFailed(
        RegQueryValueExW(m_key.Get(), name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size));
    return TextOf(std::move(data));
}

Variant RegistryObject::SetValue(const LateArguments& arguments) {
    const std::wstring name = WideText(arguments, 0);
    const auto type = static_cast<DWORD>(arguments.Long(1));
    const HKEY key = OpenedKey();
    if (type == REG_DWORD) {
        const std::int32_t number = arguments.Long(2);
        ThrowIfRegistryFailed(
            RegSetValueExW(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(&number), sizeof(number)));
    } else if (type == REG_SZ || type == REG_EXPAND_SZ) {
        const std::wstring text = WideText(arguments, 2);
        ThrowIfRegistryFailed(RegSetValueExW(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(text.c_str()),
                                             static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
    } else {
        throw ComError(E_INVALIDARG, {}, u"only texts and 32-bit numbers are stored");
    }
    return {};
}

Variant RegistryObject::CloseKey(const LateArguments&) {
    OpenedKey();
    m_key.Reset();
    return {};
}

}  // namespace vexa
