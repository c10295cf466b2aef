#include "win32/FrameworkObjects.h"

#include "comkit/Dispatch.h"
#include "framework/FrameworkNames.h"
#include "platform/FrameworkHelp.h"
#include "platform/HostError.h"
#include "win32/EventConnection.h"
#include "win32/HelpSink.h"
#include "win32/ObjectByProgId.h"
#include "win32/VariantWalk.h"

namespace kiv::win32 {

using comkit::ComPtr;

ComPtr<IDispatch> DispatchOf(const FrameworkObjectPtr& object) noexcept {
    const PlatformObject* const automation = object ? object->OfPlatform() : nullptr;
    return automation ? automation->Object() : nullptr;
}

ComPtr<IDispatch> ObjectOf(const comkit::Variant& result) {
    ComPtr<IDispatch> object;
    if (result.Type() == VT_DISPATCH) object = ComPtr<IDispatch>(result.Get().pdispVal);
    if (result.Type() == VT_UNKNOWN) object = ComPtr<IDispatch>::From(result.Get().punkVal);
    if (!object) throw HostError(ErrorNumber::ObjectNotSet);
    return object;
}

namespace {

class LateBoundCollection final : public AutomationObject<Collection> {
public:
    using AutomationObject::AutomationObject;

    void Add(const DataElementPtr& element) override {
        const PlatformObject* const automation = element->OfPlatform();
        if (!automation) throw HostError(ErrorNumber::TypeMismatch);
        comkit::Call(*Object(), vexa::Member::Add, automation->Object().Get());
    }

    void Walk() override {
        VariantWalk items(*Object());
        while (items.Next()) {
        }
    }
};

class LateBoundHelpDefinition final : public AutomationObject<HelpDefinition> {
public:
    using AutomationObject::AutomationObject;
    LateBoundHelpDefinition(const LateBoundHelpDefinition&) = delete;
    LateBoundHelpDefinition& operator=(const LateBoundHelpDefinition&) = delete;
    ~LateBoundHelpDefinition() override { Detach(); }

    void Attach(HelpListener& listener) override {
        // Made aside: a Detach that comes in between finds nothing yet.
        Connection connection(*Object().Get(), comkit::MakeObject<HelpSink>(listener));
        m_connection.emplace(std::move(connection));
    }
    void Detach() noexcept override { m_connection.reset(); }

private:
    using Connection = EventConnection<HelpSink>;
    std::optional<Connection> m_connection;
};

}  // namespace

CollectionPtr MakeLateBoundCollection() {
    auto object = CreateObject(vexa::ProgId::Collection);
    return object ? std::make_shared<LateBoundCollection>(std::move(object)) : nullptr;
}

HelpDefinitionPtr MakeLateBoundHelpDefinition() {
    auto object = CreateObject(vexa::ProgId::HelpDefinition);
    return object ? std::make_shared<LateBoundHelpDefinition>(std::move(object)) : nullptr;
}

}  // namespace kiv::win32
