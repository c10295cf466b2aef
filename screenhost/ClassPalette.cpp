#include "screenhost/ClassPalette.h"

#include <comcat.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cwchar>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"
#include "comkit/Errors.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

// {40FC6ED4-2438-11CF-A3DB-080036F12502}
constexpr CATID ControlCategory = {0x40FC6ED4, 0x2438, 0x11CF, {0xA3, 0xDB, 0x08, 0x00, 0x36, 0xF1, 0x25, 0x02}};

std::wstring ClassKey(REFCLSID clsid) {
    std::array<wchar_t, 40> text{};
    StringFromGUID2(clsid, text.data(), text.size());
    return std::wstring(L"CLSID\\") + text.data();
}

/// The default value of a key below the class; empty where there is none.
std::wstring ClassText(REFCLSID clsid, const wchar_t* subkey) {
    std::wstring key = ClassKey(clsid);
    if (*subkey) (key += L'\\') += subkey;
    std::array<wchar_t, 1024> text{};
    DWORD bytes = sizeof(text);
    const LSTATUS status =
        RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    return status == ERROR_SUCCESS ? text.data() : std::wstring();
}

bool HasClassKey(REFCLSID clsid, const wchar_t* subkey) {
    comkit::UniqueRegKey key;
    const std::wstring name = ClassKey(clsid) + L"\\" + subkey;
    return RegOpenKeyExW(HKEY_CLASSES_ROOT, name.c_str(), 0, KEY_READ, key.Put()) == ERROR_SUCCESS;
}

/// "C:\...\Server.ocx, 101"
comkit::UniqueBitmap ToolboxPicture(REFCLSID clsid) {
    const std::wstring entry = ClassText(clsid, L"ToolboxBitmap32");
    const std::size_t comma = entry.find_last_of(L',');
    if (comma == std::wstring::npos) return {};
    const auto number = static_cast<WORD>(std::wcstoul(entry.c_str() + comma + 1, nullptr, 10));
    const comkit::UniqueModule module(
        LoadLibraryExW(entry.substr(0, comma).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    if (!module) return {};
    return comkit::UniqueBitmap(static_cast<HBITMAP>(
        LoadImageW(module.Get(), MAKEINTRESOURCEW(number), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
}

PaletteClass DescribeClass(REFCLSID clsid, const std::wstring& name, const std::wstring& title) {
    std::wstring progId = ClassText(clsid, L"VersionIndependentProgID");
    if (progId.empty()) progId = ClassText(clsid, L"ProgID");
    if (progId.empty()) progId = name;
    std::wstring shown = title.empty() ? ClassText(clsid, L"") : title;
    if (shown.empty()) shown = progId;
    return {Narrow(std::wstring_view(progId)), Narrow(std::wstring_view(shown)), ToolboxPicture(clsid)};
}

std::wstring TextOf(const comkit::Bstr& text) {
    return text.Get() ? std::wstring(text.Get()) : std::wstring();
}

/// Adds the class if it is a control that a designer is meant to see.
void AddIfControl(ITypeInfo& type, const std::wstring& library, std::vector<PaletteClass>& list) {
    TYPEATTR* attributes = nullptr;
    if (FAILED(type.GetTypeAttr(&attributes))) return;
    const CLSID clsid = attributes->guid;
    const WORD flags = attributes->wTypeFlags;
    type.ReleaseTypeAttr(attributes);
    const bool isControl = (flags & TYPEFLAG_FCONTROL) != 0 || HasClassKey(clsid, L"Control");
    if (!isControl || (flags & TYPEFLAG_FHIDDEN)) return;
    comkit::Bstr name;
    comkit::Bstr title;
    if (FAILED(type.GetDocumentation(MEMBERID_NIL, name.Put(), title.Put(), nullptr, nullptr))) return;
    std::wstring registered = ClassText(clsid, L"");
    list.push_back(
        DescribeClass(clsid, library + L"." + TextOf(name), registered.empty() ? TextOf(title) : registered));
}

}  // namespace

std::string PaletteClass::Stem() const {
    std::string stem = progId;
    // A version at the end is no name.
    while (!stem.empty() && ((stem.back() >= '0' && stem.back() <= '9') || stem.back() == '.')) stem.pop_back();
    stem.erase(0, stem.find_last_of('.') + 1);
    return stem.empty() ? "Control" : stem;
}

std::vector<PaletteClass> ControlsOfLibrary(const std::wstring& file) {
    std::vector<PaletteClass> result;
    comkit::ComPtr<ITypeLib> library;
    comkit::Bstr name;
    if (FAILED(LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.Put())) ||
        FAILED(library->GetDocumentation(-1, name.Put(), nullptr, nullptr, nullptr)))
        return result;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        comkit::ComPtr<ITypeInfo> type;
        if (SUCCEEDED(library->GetTypeInfoType(i, &kind)) && kind == TKIND_COCLASS &&
            SUCCEEDED(library->GetTypeInfo(i, type.Put())))
            AddIfControl(*type, TextOf(name), result);
    }
    return result;
}

std::vector<PaletteClass> RegisteredControls() {
    std::vector<PaletteClass> result;
    comkit::ComPtr<ICatInformation> categories;
    comkit::ComPtr<IEnumCLSID> classes;
    CATID wanted = ControlCategory;
    if (FAILED(CoCreateInstance(CLSID_StdComponentCategoriesMgr, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(ICatInformation), categories.PutVoid())) ||
        FAILED(categories->EnumClassesOfCategories(1, &wanted, 0, nullptr, classes.Put())))
        return result;
    CLSID clsid{};
    ULONG fetched = 0;
    while (classes->Next(1, &clsid, &fetched) == S_OK && fetched == 1) {
        PaletteClass entry = DescribeClass(clsid, {}, {});
        if (!entry.progId.empty()) result.push_back(std::move(entry));
    }
    std::ranges::sort(result, {}, &PaletteClass::title);
    return result;
}

}  // namespace screenhost
