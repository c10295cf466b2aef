#include "screenhost/LateBound.h"

#include <array>

#include "comkit/Dispatch.h"
#include "screenhost/ErrorText.h"
#include "screenhost/FontObject.h"
#include "screenhost/SectionBag.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

struct Member {
    std::wstring name;
    std::optional<std::int32_t> index;
};

Member ParseMember(const std::string& text) {
    const std::size_t open = text.find('(');
    if (open == std::string::npos) return {Wide(text), std::nullopt};
    if (text.back() != ')') throw TextError("\")\" is missing in " + text);
    return {Wide(text.substr(0, open)), ParseInteger(std::string_view(text).substr(open + 1, text.size() - open - 2))};
}

/// Converted the same way on every machine. Nothing when it cannot be.
std::optional<comkit::Variant> ChangedTo(VARTYPE type, const VARIANT& value) {
    comkit::Variant result;
    // The system's declaration lacks a const.
    if (FAILED(
            VariantChangeTypeEx(result.Put(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, VARIANT_ALPHABOOL, type)))
        return std::nullopt;
    return result;
}

}  // namespace

comkit::Variant GetMember(IDispatch& object, const std::string& member) {
    return Telling(member, [&] {
        const Member parsed = ParseMember(member);
        return parsed.index ? comkit::Call(object, parsed.name.c_str(), *parsed.index)
                            : comkit::Call(object, parsed.name.c_str());
    });
}

void PutMember(IDispatch& object, const std::string& member, const ScreenValue& value) {
    Telling(member, [&] {
        const Member parsed = ParseMember(member);
        const comkit::Variant argument = VariantFromValue(value);
        const DISPID id = comkit::DispIdOf(object, parsed.name.c_str());
        if (parsed.index) {
            const comkit::Variant index(*parsed.index);
            comkit::InvokeWith(object, id, DISPATCH_PROPERTYPUT, std::array{index.Get(), argument.Get()});
        } else {
            comkit::InvokeWith(object, id, DISPATCH_PROPERTYPUT, std::array{argument.Get()});
        }
    });
}

bool SameValue(const comkit::Variant& found, const ScreenValue& wanted) {
    try {
        if (std::holds_alternative<FontSpec>(wanted)) return ValueFromVariant(found.Get()) == wanted;
        const comkit::Variant other = VariantFromValue(wanted);
        const auto converted = ChangedTo(other.Type(), found.Get());
        return converted && ValueFromVariant(converted->Get()) == wanted;
    } catch (const TextError&) {
        return false;
    }
}

std::string DescribeVariant(const VARIANT& value) {
    comkit::Variant direct;
    if (FAILED(VariantCopyInd(direct.Put(), const_cast<VARIANT*>(&value)))) return "?";
    if (direct.Type() == VT_EMPTY) return "Empty";
    if (direct.Type() == VT_DATE) {
        const auto date = CivilFromOle(direct.Get().date);
        return date ? Describe(*date) : "?";
    }
    if (direct.Type() == VT_DISPATCH || direct.Type() == VT_UNKNOWN) {
        const auto font = ReadFontObject(direct.Get().punkVal);
        return font ? FormatValue(*font) : "an object";
    }
    const auto text = ChangedTo(VT_BSTR, direct.Get());
    return text ? Narrow(text->Get().bstrVal) : "?";
}

CivilDateTime ShownDateTime(IDispatch& control) {
    return Telling("GetDateTimeInfo", [&] {
        comkit::Variant date;
        comkit::Variant time;
        VARIANT_BOOL daylightSaving = VARIANT_FALSE;
        std::array<VARIANT, 3> arguments{};
        arguments[0].vt = VT_BYREF | VT_VARIANT;
        arguments[0].pvarVal = date.Put();
        arguments[1].vt = VT_BYREF | VT_VARIANT;
        arguments[1].pvarVal = time.Put();
        arguments[2].vt = VT_BYREF | VT_BOOL;
        arguments[2].pboolVal = &daylightSaving;
        comkit::InvokeWith(control, comkit::DispIdOf(control, L"GetDateTimeInfo"), DISPATCH_METHOD, arguments);
        const auto day = date.Type() == VT_DATE ? CivilFromOle(date.Get().date) : std::nullopt;
        const auto clock = time.Type() == VT_DATE ? CivilFromOle(time.Get().date) : std::nullopt;
        if (!day || !clock) throw TextError("GetDateTimeInfo gives no date and time");
        return CivilDateTime{day->date, clock->time};
    });
}

std::string MemberName(IDispatch& object, DISPID id) {
    comkit::ComPtr<ITypeInfo> type;
    comkit::Bstr name;
    UINT count = 0;
    const bool known = SUCCEEDED(object.GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Put())) && type &&
                       SUCCEEDED(type->GetNames(id, name.Put(), 1, &count)) && count == 1;
    return known ? Narrow(name.Get()) : "property " + std::to_string(id);
}

}  // namespace screenhost
