#include "win32/LateBoundServices.h"

#include <windows.h>

#include <array>
#include <utility>

#include "comkit/Dispatch.h"
#include "framework/FrameworkNames.h"
#include "win32/ObjectByProgId.h"
#include "win32/TextBoxObject.h"
#include "win32/VariantConversion.h"

namespace kiv::win32 {

namespace {

class LateBoundServices final : public UserServices {
public:
    explicit LateBoundServices(comkit::ComPtr<IDispatch> object) noexcept : m_pObject(std::move(object)) {}

    void SelectAllText(TextSelection& box) override {
        const auto object = comkit::MakeObject<TextBoxObject>(box);
        const struct Detaching {
            TextBoxObject& object;
            ~Detaching() { object.Detach(); }
        } detaching{*object};
        comkit::Call(*m_pObject, vexa::Member::SelectAllText, static_cast<IDispatch*>(object.Get()));
    }

    void FilterNumericKey(std::int16_t& keyCode) override {
        SHORT key = keyCode;
        VARIANT reference{};
        reference.vt = VT_BYREF | VT_I2;
        reference.piVal = &key;
        const comkit::Variant extra = comkit::Variant::Missing();
        const comkit::Variant flag(false);
        const DISPID id = comkit::DispIdOf(*m_pObject, vexa::Member::FilterNumericKey);
        comkit::InvokeWith(*m_pObject, id, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                           std::array<VARIANT, 3>{reference, extra.Get(), flag.Get()});
        keyCode = key;
    }

    std::u16string FormatVersion(std::int32_t major, std::int32_t minor, std::int32_t revision) override {
        return TextOf(comkit::Call(*m_pObject, vexa::Member::FormatVersion, major, minor, revision).Get());
    }

private:
    comkit::ComPtr<IDispatch> m_pObject;
};

}  // namespace

std::unique_ptr<UserServices> FindLateBoundServices() {
    auto object = TryCreateObject(vexa::ProgId::Services);
    if (!object) return nullptr;
    return std::make_unique<LateBoundServices>(std::move(object));
}

}  // namespace kiv::win32
