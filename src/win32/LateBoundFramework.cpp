#include "win32/LateBoundFramework.h"

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <utility>

#include "comkit/Dispatch.h"
#include "comkit/Errors.h"
#include "framework/FrameworkNames.h"
#include "platform/HostError.h"
#include "win32/ObjectByProgId.h"
#include "win32/ValueSink.h"
#include "win32/VariantConversion.h"

namespace kiv::win32 {

using comkit::Bstr;
using comkit::ComPtr;
using comkit::Variant;

namespace {

ComPtr<IDispatch> ObjectOf(const Variant& result) {
    ComPtr<IDispatch> object;
    if (result.Type() == VT_DISPATCH) object = ComPtr<IDispatch>(result.Get().pdispVal);
    if (result.Type() == VT_UNKNOWN) object = ComPtr<IDispatch>::From(result.Get().punkVal);
    if (!object) throw HostError(ErrorNumber::ObjectNotSet);
    return object;
}

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

class LateBoundElement final : public DataElement {
public:
    explicit LateBoundElement(ComPtr<IDispatch> object) noexcept : m_pObject(std::move(object)) {}

    std::shared_ptr<DataDefinition> Definition() override {
        return std::make_shared<LateBoundDefinition>(ObjectOf(comkit::Call(*m_pObject, vexa::Member::DataDefinition)));
    }

private:
    ComPtr<IDispatch> m_pObject;
};

class LateBoundHiddenControl final : public HiddenControl {
public:
    LateBoundHiddenControl(std::int16_t elementCount, DeviceValueListener& listener)
        : m_pObject(CreateObject(vexa::ProgId::HiddenControl)), m_pSink(comkit::MakeObject<ValueSink>(listener)) {
        const auto container = m_pObject.As<IConnectionPointContainer>();
        if (!container) throw comkit::ComError(CONNECT_E_NOCONNECTION);
        comkit::ThrowIfFailed(container->FindConnectionPoint(ValueSink::EventSet(), m_pEvents.Put()));
        comkit::ThrowIfFailed(m_pEvents->Advise(m_pSink.Get(), &m_lCookie));
        try {
            comkit::Put(*m_pObject, vexa::Member::ElementCount, elementCount);
        } catch (...) {
            Disconnect();
            throw;
        }
    }
    LateBoundHiddenControl(const LateBoundHiddenControl&) = delete;
    LateBoundHiddenControl& operator=(const LateBoundHiddenControl&) = delete;
    ~LateBoundHiddenControl() override { Disconnect(); }

    DataElementPtr Element(std::int16_t index) override {
        const ComPtr<IDispatch> control = ObjectOf(comkit::Call(*m_pObject, vexa::Member::Element, index));
        return std::make_shared<LateBoundElement>(ObjectOf(comkit::Call(*control, vexa::Member::DataElement)));
    }

private:
    void Disconnect() noexcept {
        m_pSink->Detach();
        m_pEvents->Unadvise(m_lCookie);
    }

    ComPtr<IDispatch> m_pObject;
    ComPtr<ValueSink> m_pSink;
    ComPtr<IConnectionPoint> m_pEvents;
    DWORD m_lCookie = 0;
};

}  // namespace

std::unique_ptr<HiddenControl> LateBoundFramework::CreateHiddenControl(std::int16_t elementCount,
                                                                       DeviceValueListener& listener) {
    return std::make_unique<LateBoundHiddenControl>(elementCount, listener);
}

}  // namespace kiv::win32
