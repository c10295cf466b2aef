#include "server/EditedDispatch.h"

#include <KivDateTime.h>

#include <array>
#include <cstddef>
#include <string>

#include "comkit/Dispatch.h"
#include "platform/HostError.h"
#include "server/ValueConversion.h"

namespace kiv::server {

namespace {

bool Offers(IUnknown& object, REFIID iid) noexcept {
    comkit::ComPtr<IUnknown> found;
    return SUCCEEDED(object.QueryInterface(iid, found.PutVoid()));
}

ControlKind KindOf(IUnknown& object) noexcept {
    if (Offers(object, IID__KivSetDateTime)) return ControlKind::Set;
    if (Offers(object, IID__KivShowDateTime)) return ControlKind::Show;
    return ControlKind::Other;
}

std::wstring NameOf(std::u16string_view property) {
    return std::wstring(comkit::ToWide(property));
}

template <std::size_t N>
void PutWith(IDispatch& object, std::u16string_view property, const std::array<VARIANT, N>& arguments) {
    const DISPID id = comkit::DispIdOf(object, NameOf(property).c_str());
    comkit::InvokeWith(object, id, DISPATCH_PROPERTYPUT, arguments);
}

}  // namespace

EditedDispatch::EditedDispatch(IUnknown* object) : m_pObject(comkit::ComPtr<IDispatch>::From(object)) {
    if (object) m_kind = KindOf(*object);
}

template <class Body>
auto EditedDispatch::Calling(Body&& body) {
    if (!m_pObject) throw HostError(ErrorNumber::ObjectNotSet);
    try {
        return body(*m_pObject);
    } catch (const comkit::ComError& error) {
        if (HRESULT_FACILITY(error.Result()) != FACILITY_CONTROL) throw;
        throw HostError(HRESULT_CODE(error.Result()), error.Source(), error.Description());
    }
}

Value EditedDispatch::Get(std::u16string_view property) {
    return Calling([&](IDispatch& object) { return ValueOf(comkit::Call(object, NameOf(property).c_str()).Get()); });
}

void EditedDispatch::Put(std::u16string_view property, const Value& value) {
    Calling([&](IDispatch& object) {
        const comkit::Variant given = VariantOf(value);
        PutWith(object, property, std::array<VARIANT, 1>{given.Get()});
    });
}

Value EditedDispatch::GetAt(std::u16string_view property, std::int32_t index) {
    return Calling(
        [&](IDispatch& object) { return ValueOf(comkit::Call(object, NameOf(property).c_str(), index).Get()); });
}

void EditedDispatch::PutAt(std::u16string_view property, std::int32_t index, const Value& value) {
    Calling([&](IDispatch& object) {
        const comkit::Variant place(index);
        const comkit::Variant given = VariantOf(value);
        PutWith(object, property, std::array<VARIANT, 2>{place.Get(), given.Get()});
    });
}

}  // namespace kiv::server
