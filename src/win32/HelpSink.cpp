#include "win32/HelpSink.h"

#include <string>
#include <vector>

#include "comkit/Errors.h"
#include "framework/FrameworkNames.h"
#include "win32/VariantConversion.h"

namespace kiv::win32 {

namespace {

constexpr IID HelpEvents = {0xFE9BE7ED, 0x29D7, 0x4317, {0xAF, 0x7E, 0x15, 0x26, 0x11, 0x34, 0x6E, 0xB5}};

/// The array in an argument, however it is wrapped; null where there is none.
SAFEARRAY* ArrayOf(const VARIANT& argument) noexcept {
    if (!comkit::IsWhole(argument)) return nullptr;
    const VARIANT* value = &argument;
    if (value->vt == (VT_BYREF | VT_VARIANT)) value = value->pvarVal;
    if ((value->vt & VT_ARRAY) == 0) return nullptr;
    return value->vt & VT_BYREF ? *value->pparray : value->parray;
}

/// Numbers with a point, whatever the user's regional settings are; nothing for what has no text.
HelpIDText TextOfValue(const VARIANT& value) {
    comkit::Variant text;
    if (!comkit::IsWhole(value)) return std::nullopt;
    if (FAILED(VariantChangeTypeEx(text.Put(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, VARIANT_ALPHABOOL,
                                   VT_BSTR)))
        return std::nullopt;
    return std::u16string(comkit::ViewOf(text.Get().bstrVal));
}

HelpIDText ElementOf(SAFEARRAY& array, VARTYPE type, LONG index) {
    comkit::Variant element;
    if (type == VT_VARIANT) {
        if (FAILED(SafeArrayGetElement(&array, &index, element.Put()))) return std::nullopt;
    } else {
        // A variant has no room for more.
        if (SafeArrayGetElemsize(&array) > sizeof(element.Get().llVal)) return std::nullopt;
        if (FAILED(SafeArrayGetElement(&array, &index, &element.Get().llVal))) return std::nullopt;
        element.Get().vt = type;
    }
    return TextOfValue(element.Get());
}

std::vector<HelpIDText> TextsOf(SAFEARRAY& array) {
    constexpr ULONG MostTopics = 64;  // no control has as many parts
    VARTYPE type = VT_EMPTY;
    if (SafeArrayGetDim(&array) != 1 || array.rgsabound[0].cElements > MostTopics) return {};
    comkit::ThrowIfFailed(SafeArrayGetVartype(&array, &type));
    std::vector<HelpIDText> texts;
    // Counted, not compared with the upper bound: that may be the largest number that there is.
    for (ULONG i = 0; i < array.rgsabound[0].cElements; ++i)
        texts.push_back(ElementOf(array, type, static_cast<LONG>(static_cast<ULONG>(array.rgsabound[0].lLbound) + i)));
    return texts;
}

}  // namespace

const IID& HelpSink::EventSet() noexcept {
    return HelpEvents;
}

UINT HelpSink::ArgumentCount(DISPID member) noexcept {
    return member >= vexa::EventId::HelpContextIDChange && member <= vexa::EventId::WhatsThisHelpIDsChange ? 1 : 0;
}

void HelpSink::Receive(DISPID member, const VARIANT* arguments) {
    if (!m_pListener) return;
    switch (member) {
        case vexa::EventId::HelpContextIDChange:
            return m_pListener->OnHelpContextIDChange(NumberOf(*arguments));
        case vexa::EventId::HelpFileChange:
            return m_pListener->OnHelpFileChange(TextOf(*arguments));
        case vexa::EventId::WhatsThisHelpIDChange:
            return m_pListener->OnWhatsThisHelpIDChange(NumberOf(*arguments));
        default:
            break;
    }
    SAFEARRAY* const array = ArrayOf(*arguments);
    if (!array) throw comkit::ComError(DISP_E_TYPEMISMATCH);
    m_pListener->OnWhatsThisHelpIDsChange(TextsOf(*array));
}

}  // namespace kiv::win32
