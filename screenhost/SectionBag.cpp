#include "screenhost/SectionBag.h"

#include <olectl.h>

#include <algorithm>

#include "screenhost/ErrorText.h"
#include "screenhost/FontObject.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

struct ToVariant {
    comkit::Variant operator()(bool value) const { return value; }
    comkit::Variant operator()(std::int32_t value) const { return value; }
    comkit::Variant operator()(double value) const { return value; }
    comkit::Variant operator()(const std::u16string& value) const { return value; }
    comkit::Variant operator()(const FontSpec& value) const {
        return static_cast<IDispatch*>(MakeFontObject(value).Get());
    }
};

ScreenValue Converted(VARIANT& value, VARTYPE type) {
    comkit::Variant result;
    if (FAILED(VariantChangeTypeEx(result.Put(), &value, LOCALE_INVARIANT, 0, type)))
        throw TextError("the number does not fit");
    return type == VT_I4 ? ScreenValue(static_cast<std::int32_t>(result.Get().lVal)) : ScreenValue(result.Get().dblVal);
}

bool IsObject(VARTYPE type) noexcept {
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

void Complain(IErrorLog* errors, LPCOLESTR name, const std::string& text, HRESULT hr) {
    if (!errors) return;
    EXCEPINFO info{};
    comkit::Bstr description(Wide(text).c_str());
    info.bstrDescription = description.Get();
    info.scode = hr;
    errors->AddError(name, &info);
}

}  // namespace

comkit::Variant VariantFromValue(const ScreenValue& value) {
    return std::visit(ToVariant{}, value);
}

ScreenValue ValueFromVariant(const VARIANT& value) {
    comkit::Variant direct;
    // The system's declaration lacks a const.
    if (FAILED(VariantCopyInd(direct.Put(), const_cast<VARIANT*>(&value)))) throw TextError("the value cannot be read");
    VARIANT& v = direct.Get();
    switch (v.vt) {
        case VT_BOOL:
            return v.boolVal != VARIANT_FALSE;
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_INT:
            return Converted(v, VT_I4);
        case VT_UI4:
        case VT_UINT:  // colours above all: the bits count
            return static_cast<std::int32_t>(v.ulVal);
        case VT_R4:
        case VT_R8:
        case VT_DATE:
        case VT_CY:
            return Converted(v, VT_R8);
        case VT_BSTR:
            return std::u16string(comkit::ViewOf(v.bstrVal));
        case VT_DISPATCH:
        case VT_UNKNOWN:
            if (const auto font = ReadFontObject(v.punkVal)) return *font;
            throw TextError("a screen file holds no objects but fonts");
        default:
            throw TextError("a screen file holds no values of type " + std::to_string(v.vt));
    }
}

SectionBag::SectionBag(const ScreenSection& section, HostLog& log) : m_section(&section), m_log(&log) {}

SectionBag::SectionBag(const ScreenSection& section, SectionUpdate& update, HostLog& log)
    : m_section(&section), m_update(&update), m_log(&log) {}

void SectionBag::Close() noexcept {
    m_section = nullptr;
    m_update = nullptr;
    m_log = nullptr;
}

void SectionBag::Remember(const std::string& key) {
    const bool known = std::ranges::any_of(m_knownKeys, [&](const auto& k) { return EqualWithoutCase(k, key); });
    if (!known) m_knownKeys.push_back(key);
}

HRESULT SectionBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog* errors) {
    if (!name || !value) return E_POINTER;
    if (!m_section) return E_UNEXPECTED;
    return comkit::Guarded([&] {
        const std::string key = Narrow(std::wstring_view(name));
        Remember(key);
        const ScreenValue* found = m_section->Find(key);
        // Out of the same type as it came in, so that the caller may still clear it.
        return found ? Convert(key, *found, *value, errors) : E_INVALIDARG;
    });
}

HRESULT SectionBag::Convert(const std::string& key, const ScreenValue& value, VARIANT& out, IErrorLog* errors) {
    // The type on entry is the one that is wanted; VT_EMPTY takes any.
    const VARTYPE wanted = out.vt;
    comkit::Variant found = VariantFromValue(value);
    VARIANT result;
    VariantInit(&result);
    HRESULT hr = S_OK;
    if (wanted == VT_EMPTY || wanted == found.Type() || (IsObject(wanted) && IsObject(found.Type())))
        hr = VariantCopy(&result, &found.Get());
    else if (IsObject(wanted) != IsObject(found.Type()))
        hr = DISP_E_TYPEMISMATCH;
    else
        hr = VariantChangeTypeEx(&result, &found.Get(), LOCALE_INVARIANT, 0, wanted);
    if (FAILED(hr)) {
        Complain(errors, Wide(key).c_str(), FormatValue(value) + " is of the wrong kind", hr);
        return hr;
    }
    if (IsObject(wanted)) result.vt = wanted;
    out = result;
    return S_OK;
}

HRESULT SectionBag::Write(LPCOLESTR name, VARIANT* value) {
    if (!name || !value) return E_POINTER;
    if (!m_update) return E_UNEXPECTED;
    return comkit::Guarded([&] {
        const std::string key = Narrow(std::wstring_view(name));
        // No object is the same as no entry.
        if (IsObject(value->vt) && !value->punkVal) return S_OK;
        try {
            m_update->Write(key, ValueFromVariant(*value));
            Remember(key);
            return S_OK;
        } catch (const TextError& error) {
            m_log->Add("error", m_section->Name() + "." + key + " is not saved: " + error.what());
            return E_INVALIDARG;
        }
    });
}

HRESULT SectionBag::AddError(LPCOLESTR name, EXCEPINFO* info) {
    if (!m_log) return E_UNEXPECTED;
    return comkit::Guarded([&] {
        std::string text = info && info->bstrDescription ? Narrow(info->bstrDescription) : std::string();
        if (text.empty()) text = info ? ErrorText(info->scode) : std::string("cannot be read");
        m_log->Add("error",
                   m_section->Name() + "." + (name ? Narrow(std::wstring_view(name)) : std::string()) + ": " + text);
    });
}

}  // namespace screenhost
