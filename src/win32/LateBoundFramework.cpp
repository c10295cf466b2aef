#include "win32/LateBoundFramework.h"

#include <windows.h>

#include <utility>

#include "comkit/Dispatch.h"
#include "comkit/Errors.h"
#include "framework/FrameworkNames.h"
#include "win32/EventConnection.h"
#include "win32/FrameworkObjects.h"
#include "win32/ObjectByProgId.h"
#include "win32/ValueSink.h"
#include "win32/VariantConversion.h"
#include "win32/VariantWalk.h"

namespace kiv::win32 {

using comkit::Bstr;
using comkit::ComPtr;
using comkit::Variant;

namespace {

VARIANT ByReference(LONG& target) noexcept {
    VARIANT result{};
    result.vt = VT_BYREF | VT_I4;
    result.plVal = &target;
    return result;
}

VARIANT ByReference(BSTR& target) noexcept {
    VARIANT result{};
    result.vt = VT_BYREF | VT_BSTR;
    result.pbstrVal = &target;
    return result;
}

VARIANT ByReference(VARIANT& target) noexcept {
    VARIANT result{};
    result.vt = VT_BYREF | VT_VARIANT;
    result.pvarVal = &target;
    return result;
}

class LateBoundDefinition final : public DataDefinition {
public:
    explicit LateBoundDefinition(ComPtr<IDispatch> object) noexcept : m_pObject(std::move(object)) {}

    DataElementBinding ReadDefinition() override {
        const DISPID id = comkit::DispIdOf(*m_pObject, vexa::Member::ReadDefinition);
        try {
            return ReadTyped(id);
        } catch (const comkit::ComError& error) {
            // A callee whose outputs are declared without types wants variants to put them in.
            if (error.Result() != DISP_E_TYPEMISMATCH) throw;
            return ReadVariants(id);
        }
    }

    void WriteDefinition(const DataElementBinding& binding) override {
        comkit::Call(*m_pObject, vexa::Member::WriteDefinition, binding.lmObject, binding.dataType,
                     binding.variableName, binding.elementPath);
    }

    void WriteValue(std::u16string_view text, std::u16string_view display, std::u16string_view use) override {
        comkit::Call(*m_pObject, vexa::Member::WriteValue, text, display, use);
    }

    void SetWriteEnabled(bool enabled) override { comkit::Call(*m_pObject, vexa::Member::SetWriteEnabled, enabled); }

private:
    DataElementBinding ReadTyped(DISPID id) const {
        LONG lmObject = 0;
        LONG dataType = 0;
        Bstr variableName;
        Bstr elementPath;
        comkit::InvokeWith<4>(*m_pObject, id, DISPATCH_METHOD,
                              {ByReference(lmObject), ByReference(dataType), ByReference(*variableName.Put()),
                               ByReference(*elementPath.Put())});
        return {lmObject, dataType, std::u16string(variableName.View()), std::u16string(elementPath.View())};
    }

    DataElementBinding ReadVariants(DISPID id) const {
        Variant lmObject;
        Variant dataType;
        Variant variableName;
        Variant elementPath;
        comkit::InvokeWith<4>(*m_pObject, id, DISPATCH_METHOD,
                              {ByReference(lmObject.Get()), ByReference(dataType.Get()),
                               ByReference(variableName.Get()), ByReference(elementPath.Get())});
        return {NumberOf(lmObject.Get()), NumberOf(dataType.Get()), TextOf(variableName.Get()),
                TextOf(elementPath.Get())};
    }

    ComPtr<IDispatch> m_pObject;
};

class LateBoundElement final : public AutomationObject<DataElement> {
public:
    using AutomationObject::AutomationObject;

    std::shared_ptr<DataDefinition> Definition() override {
        return std::make_shared<LateBoundDefinition>(ObjectOf(comkit::Call(*Object(), vexa::Member::DataDefinition)));
    }
};

class LateBoundElementControl final : public ElementControl {
public:
    explicit LateBoundElementControl(ComPtr<IDispatch> object) noexcept : m_pObject(std::move(object)) {}

    DataElementPtr Data() override {
        return std::make_shared<LateBoundElement>(ObjectOf(comkit::Call(*m_pObject, vexa::Member::DataElement)));
    }

private:
    ComPtr<IDispatch> m_pObject;
};

class LateBoundWalk final : public ElementWalk {
public:
    explicit LateBoundWalk(IDispatch& hiddenControl) : m_items(hiddenControl) {}

    std::unique_ptr<ElementControl> Next() override {
        const auto item = m_items.Next();
        return item ? std::make_unique<LateBoundElementControl>(ObjectOf(*item)) : nullptr;
    }

private:
    VariantWalk m_items;
};

class LateBoundHiddenControl final : public HiddenControl {
public:
    LateBoundHiddenControl(ComPtr<IDispatch> object, std::int16_t elementCount, DeviceValueListener& listener)
        : m_pObject(std::move(object)), m_events(*m_pObject.Get(), comkit::MakeObject<ValueSink>(listener)) {
        comkit::Put(*m_pObject, vexa::Member::ElementCount, elementCount);
    }

    DataElementPtr Element(std::int16_t index) override {
        return LateBoundElementControl(ObjectOf(comkit::Call(*m_pObject, vexa::Member::Element, index))).Data();
    }
    std::unique_ptr<ElementWalk> Elements() override { return std::make_unique<LateBoundWalk>(*m_pObject); }

private:
    ComPtr<IDispatch> m_pObject;
    EventConnection<ValueSink> m_events;
};

}  // namespace

std::unique_ptr<HiddenControl> LateBoundFramework::CreateHiddenControl(std::int16_t elementCount,
                                                                       DeviceValueListener& listener) {
    auto object = CreateObject(vexa::ProgId::HiddenControl);
    if (!object) return nullptr;
    return std::make_unique<LateBoundHiddenControl>(std::move(object), elementCount, listener);
}

CollectionPtr LateBoundFramework::CreateCollection() {
    return MakeLateBoundCollection();
}

HelpDefinitionPtr LateBoundFramework::CreateHelpDefinition() {
    return MakeLateBoundHelpDefinition();
}

}  // namespace kiv::win32
