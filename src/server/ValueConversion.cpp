#include "server/ValueConversion.h"

#include <optional>
#include <type_traits>

#include "comkit/VariantReferences.h"
#include "win32/OleFont.h"

namespace kiv::server {

namespace {

Value FontValue(IUnknown* object) {
    FontPtr font = win32::WrapFont(object);
    if (!font) return Unsupported{};
    return font;
}

Value AsDouble(const VARIANT& variant) {
    comkit::Variant converted;
    if (FAILED(converted.ConvertFrom(variant, VT_R8))) return Unsupported{};
    return converted.Get().dblVal;
}

std::optional<std::int32_t> WholeNumber(const Value& value) {
    if (const auto* narrow = std::get_if<std::int16_t>(&value)) return *narrow;
    if (const auto* wide = std::get_if<std::int32_t>(&value)) return *wide;
    return std::nullopt;
}

}  // namespace

Value ValueOf(const VARIANT& original) {
    comkit::Variant direct;
    const VARIANT* v = &original;
    if (v->vt & VT_BYREF) {
        if (!comkit::IsWhole(*v) || FAILED(direct.CopyFrom(*v))) return Unsupported{};
        v = &direct.Get();
    }
    switch (v->vt) {
        case VT_EMPTY:
            return std::monostate{};
        case VT_BOOL:
            return v->boolVal != VARIANT_FALSE;
        case VT_I1:
            return static_cast<std::int16_t>(static_cast<signed char>(v->cVal));
        case VT_UI1:
            return static_cast<std::int16_t>(v->bVal);
        case VT_I2:
            return static_cast<std::int16_t>(v->iVal);
        case VT_UI2:
            return static_cast<std::int32_t>(v->uiVal);
        case VT_I4:
        case VT_INT:
            return static_cast<std::int32_t>(v->lVal);
        case VT_UI4:
        case VT_UINT:
            return static_cast<std::int32_t>(v->ulVal);
        case VT_R8:
            return v->dblVal;
        case VT_R4:
        case VT_I8:
        case VT_UI8:
        case VT_CY:
        case VT_DECIMAL:
            return AsDouble(*v);
        case VT_DATE:
            return OleDate{v->date};
        case VT_BSTR:
            return std::u16string(comkit::ViewOf(v->bstrVal));
        case VT_DISPATCH:
            return FontValue(v->pdispVal);
        case VT_UNKNOWN:
            return FontValue(v->punkVal);
        default:
            return Unsupported{};
    }
}

comkit::Variant VariantOf(const Value& value) {
    return std::visit(
        [](const auto& v) -> comkit::Variant {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::monostate> || std::is_same_v<T, Unsupported>) {
                return {};
            } else if constexpr (std::is_same_v<T, OleDate>) {
                return comkit::Variant::Date(v.days);
            } else if constexpr (std::is_same_v<T, FontPtr>) {
                return comkit::Variant(static_cast<IDispatch*>(win32::FontDispOf(v).Get()));
            } else {
                return comkit::Variant(v);
            }
        },
        value);
}

bool SameValue(const Value& left, const Value& right) {
    const auto l = WholeNumber(left);
    const auto r = WholeNumber(right);
    return l && r ? *l == *r : left == right;
}

}  // namespace kiv::server
