#include "simulator/ServicesObject.h"

#include "comkit/Dispatch.h"
#include "simulator/DecimalText.h"
#include "simulator/Simulation.h"

namespace vexa {

using comkit::ComError;
using comkit::Variant;

ServicesObject::ServicesObject() {
    Simulation::CheckInjectedFailure();
}

std::span<const LateMember<ServicesObject>> ServicesObject::Members() {
    static constexpr LateMember<ServicesObject> members[] = {
        {L"SelectAllText", 1, CallOrGet, 1, 1, &ServicesObject::SelectAllText},
        {L"FilterNumericKey", 2, CallOrGet, 3, 3, &ServicesObject::FilterNumericKey},
        {L"FormatVersion", 3, CallOrGet, 3, 3, &ServicesObject::FormatVersion},
    };
    return members;
}

Variant ServicesObject::SelectAllText(const LateArguments& arguments) {
    Simulation::CheckInjectedFailure();
    const auto box = arguments.Object(0);
    if (!box) throw ComError(DISP_E_TYPEMISMATCH);
    Variant text = comkit::Call(*box, L"Text");
    comkit::ThrowIfFailed(VariantChangeType(&text.Get(), &text.Get(), 0, VT_BSTR));
    comkit::Put(*box, L"SelStart", std::int32_t{0});
    comkit::Put(*box, L"SelLength", static_cast<std::int32_t>(comkit::ViewOf(text.Get().bstrVal).size()));
    return {};
}

Variant ServicesObject::FilterNumericKey(const LateArguments& arguments) {
    Simulation::CheckInjectedFailure();
    const std::int16_t key = arguments.Short(0);
    const std::u16string extra = arguments.IsMissing(1) ? std::u16string() : arguments.Text(1);
    const bool point = arguments.Boolean(2);
    const auto character = static_cast<char16_t>(key);
    const bool passes = character < u' ' || (character >= u'0' && character <= u'9') || character == u'-' ||
                        (point && character == u'.') || extra.find(character) != std::u16string::npos;
    if (!passes) arguments.Return(0, Variant(std::int16_t{0}));
    return {};
}

Variant ServicesObject::FormatVersion(const LateArguments& arguments) {
    Simulation::CheckInjectedFailure();
    return Variant(ToDecimal(arguments.Long(0)) + u'.' + ToDecimal(arguments.Long(1)) + u'.' +
                   ToDecimal(arguments.Long(2)));
}

}  // namespace vexa
