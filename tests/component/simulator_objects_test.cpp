// The simulated framework's objects as a late-bound caller meets them.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "simulator_support.h"

namespace simulator_test {
namespace {

using comkit::Call;
using comkit::ComError;
using comkit::ComPtr;
using comkit::Put;
using comkit::Variant;

constexpr HRESULT SubscriptOutOfRange = static_cast<HRESULT>(0x800A0009);
constexpr HRESULT InvalidPropertyValue = static_cast<HRESULT>(0x800A017C);

class SimulatorObjects : public testing::Test {
protected:
    void SetUp() override { Call(*device, L"Reset"); }
    void TearDown() override { Call(*device, L"Reset"); }

    ComPtr<IDispatch> MakeHidden(std::int16_t count) {
        auto hidden = server.Make(L"VexaBaseControls.VexaHidden");
        Put(*hidden, L"ElementCount", count);
        return hidden;
    }
    static ComPtr<IDispatch> Definition(IDispatch& hidden, std::int16_t index) {
        const auto element = ObjectIn(Call(hidden, L"Element", index));
        return ObjectIn(Call(*ObjectIn(Call(*element, L"DataElement")), L"DataDefinition"));
    }
    template <class Body>
    static HRESULT ErrorOf(Body&& body) {
        try {
            body();
        } catch (const ComError& error) {
            return error.Result();
        }
        return S_OK;
    }

    SimulatorServer server;
    ComPtr<IDispatch> device = server.Make(L"VexaSimulator.Device");
};

TEST_F(SimulatorObjects, DefinitionGoesInByValueAndComesBackThroughEveryKindOfReference) {
    const auto hidden = MakeHidden(8);
    const auto definition = Definition(*hidden, 7);
    Call(*definition, L"WriteDefinition", L"1", std::int16_t{3}, u"nviSetYear", u"SetClock.Year");

    std::int32_t lmObject = -1;
    std::int16_t dataType = -1;
    Variant name(u"former text");
    comkit::Bstr path(u"former path");
    BSTR pathText = path.Detach();
    Variant nested;
    std::array<VARIANT, 4> arguments{};
    arguments[0].vt = VT_BYREF | VT_I4;
    arguments[0].plVal = reinterpret_cast<LONG*>(&lmObject);
    nested.Get().vt = VT_BYREF | VT_I2;
    nested.Get().piVal = &dataType;
    arguments[1].vt = VT_BYREF | VT_VARIANT;
    arguments[1].pvarVal = &nested.Get();
    arguments[2].vt = VT_BYREF | VT_VARIANT;
    arguments[2].pvarVal = &name.Get();
    arguments[3].vt = VT_BYREF | VT_BSTR;
    arguments[3].pbstrVal = &pathText;
    const DISPID id = comkit::DispIdOf(*definition, L"ReadDefinition");
    comkit::InvokeWith(*definition, id, DISPATCH_METHOD, arguments);
    *path.Put() = pathText;
    EXPECT_EQ(lmObject, 1);
    EXPECT_EQ(dataType, 3);
    EXPECT_EQ(Text(name), "nviSetYear");
    EXPECT_EQ(path.View(), u"SetClock.Year");

    EXPECT_EQ(ErrorOf([&] { Call(*definition, L"ReadDefinition", 1L, 1L, u"", u""); }), DISP_E_TYPEMISMATCH);
    arguments[3].vt = VT_BYREF | VT_DISPATCH;
    EXPECT_EQ(ErrorOf([&] { comkit::InvokeWith(*definition, id, DISPATCH_METHOD, arguments); }), DISP_E_TYPEMISMATCH);
}

TEST_F(SimulatorObjects, RaisedErrorsCarryNumberSourceAndText) {
    const auto hidden = MakeHidden(2);
    const auto definition = Definition(*hidden, 1);
    Call(*definition, L"WriteDefinition", 1L, 2L, u"nciDaylightSaving", u"");
    const struct {
        std::function<void()> call;
        HRESULT result;
    } cases[] = {
        {[&] { Call(*hidden, L"Element", 2L); }, SubscriptOutOfRange},
        {[&] { Call(*hidden, L"Element", -1L); }, SubscriptOutOfRange},
        {[&] { Put(*hidden, L"ElementCount", -1L); }, InvalidPropertyValue},
        {[&] { Call(*definition, L"WriteValue", u"2", u"NoDisplay", u"UseCurrent"); }, InvalidPropertyValue},
        {[&] { Call(*server.Make(L"KivUserServicesObjs.Collection"), L"Item", 1L); }, SubscriptOutOfRange},
    };
    for (const auto& [call, result] : cases) {
        SCOPED_TRACE(&call - &cases[0].call);
        try {
            call();
            ADD_FAILURE() << "no error";
        } catch (const ComError& error) {
            EXPECT_EQ(error.Result(), result);
            EXPECT_EQ(error.Source(), u"VexaSimulator");
            EXPECT_FALSE(error.Description().empty());
        }
    }
}

TEST_F(SimulatorObjects, CallsOfTheWrongShapeAreToldApartFromRaisedErrors) {
    const auto hidden = MakeHidden(1);
    EXPECT_EQ(ErrorOf([&] { Call(*hidden, L"Nothing"); }), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ErrorOf([&] { Call(*hidden, L"Element"); }), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(ErrorOf([&] { Call(*hidden, L"Element", 0L, 0L); }), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(ErrorOf([&] { Call(*hidden, L"Element", u"first"); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(ErrorOf([&] { Call(*hidden, L"Element", 70000L); }), DISP_E_OVERFLOW);
    EXPECT_EQ(ErrorOf([&] { Put(*hidden, L"Element", 0L, 1L); }), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Text(Call(*hidden, L"ELEMENTCOUNT")), "1") << "names are found in any case";
    try {
        Call(*hidden, L"Element", u"first");
    } catch (const ComError& error) {
        EXPECT_EQ(error.Source(), u"") << "a mismatch is the caller's, no error of the object";
    }
    VARIANT named = Variant(1L).Detach();
    DISPID name = 0;
    DISPPARAMS params{&named, &name, 1, 1};
    EXPECT_EQ(hidden->Invoke(comkit::DispIdOf(*hidden, L"Element"), IID_NULL, 0, DISPATCH_METHOD, &params, nullptr,
                             nullptr, nullptr),
              DISP_E_NONAMEDARGS);
}

TEST_F(SimulatorObjects, EnumerationWalksTheElementsInOrderAndOutlivesTheHiddenControl) {
    auto hidden = MakeHidden(3);
    const Variant result = comkit::InvokeWith(*hidden, DISPID_NEWENUM, DISPATCH_PROPERTYGET, std::array<VARIANT, 0>{});
    const auto elements = ComPtr<IEnumVARIANT>::From(result.Get().punkVal);
    ASSERT_TRUE(elements);
    for (std::int16_t index = 0; index < 3; ++index)
        Call(*Definition(*hidden, index), L"WriteDefinition", static_cast<long>(index), 0L, u"", u"");
    hidden.Reset();
    std::array<VARIANT, 5> fetched{};
    ULONG count = 0;
    EXPECT_EQ(elements->Next(5, fetched.data(), &count), S_FALSE);
    ASSERT_EQ(count, 3u);
    for (std::int32_t index = 0; index < 3; ++index) {
        Variant element;
        element.Get() = fetched[static_cast<std::size_t>(index)];
        const auto definition = ObjectIn(Call(*ObjectIn(Call(*ObjectIn(element), L"DataElement")), L"DataDefinition"));
        Variant lmObject;
        Variant dataType;
        Variant name;
        Variant path;
        std::array<VARIANT, 4> arguments{};
        Variant* const targets[] = {&lmObject, &dataType, &name, &path};
        for (std::size_t i = 0; i < 4; ++i) {
            arguments[i].vt = VT_BYREF | VT_VARIANT;
            arguments[i].pvarVal = &targets[i]->Get();
        }
        comkit::InvokeWith(*definition, comkit::DispIdOf(*definition, L"ReadDefinition"), DISPATCH_METHOD, arguments);
        EXPECT_EQ(Text(lmObject), std::to_string(index));
    }
}

TEST_F(SimulatorObjects, CollectionCountsFromOneAndKeepsWhatWasAdded) {
    const auto collection = server.Make(L"KivUserServicesObjs.Collection");
    auto first = MakeHidden(4);
    Call(*collection, L"Add", first.Get());
    Call(*collection, L"Add", device.Get());
    IDispatch* const added = first.Get();
    first.Reset();
    EXPECT_EQ(Text(Call(*collection, L"Count")), "2");
    EXPECT_EQ(ObjectIn(Call(*collection, L"Item", 1L)).Get(), added);
    EXPECT_EQ(ErrorOf([&] { Call(*collection, L"Item", 0L); }), SubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([&] { Call(*collection, L"Item", 3L); }), SubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([&] { Call(*collection, L"Add", u"no object"); }), DISP_E_TYPEMISMATCH);
    ComPtr<IUnknown> nameless;
    ASSERT_EQ(server.GetClassObject(L"VexaSimulator.Device", IID_IUnknown, nameless.PutVoid()), S_OK);
    EXPECT_EQ(ErrorOf([&] { Call(*collection, L"Add", nameless.Get()); }), DISP_E_TYPEMISMATCH);
}

TEST_F(SimulatorObjects, RegistryKeepsNumbersAndTextsAndRaisesWhatFails) {
    const ScratchUserRegistry scratch;
    const auto registry = server.Make(L"KivUserServicesObjs.Registry");
    constexpr auto CurrentUser = static_cast<std::int32_t>(0x80000001);
    constexpr std::int32_t FullAccess = KEY_ALL_ACCESS;
    const auto missing = HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(ErrorOf([&] { Call(*registry, L"OpenKey", CurrentUser, u"Soft\\Kiv", FullAccess); }), missing);
    EXPECT_EQ(ErrorOf([&] { Call(*registry, L"CloseKey"); }), HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE));
    Call(*registry, L"CreateKey", CurrentUser, u"Soft\\Kiv", FullAccess);
    Call(*registry, L"SetValue", u"UsePCDateTime", 4L, true);
    Call(*registry, L"SetValue", u"Text", 1L, u"ab c");
    Call(*registry, L"SetValue", u"", 1L, u"");
    EXPECT_EQ(ErrorOf([&] { Call(*registry, L"SetValue", u"Binary", 3L, u"x"); }), E_INVALIDARG);
    EXPECT_EQ(ErrorOf([&] { Call(*registry, L"SetValue", u"Number", 4L, u"x"); }), DISP_E_TYPEMISMATCH);
    Call(*registry, L"CloseKey");
    EXPECT_EQ(ErrorOf([&] { Call(*registry, L"QueryValue", u"Text"); }), HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE));

    Call(*registry, L"OpenKey", CurrentUser, u"Soft\\Kiv", FullAccess);
    const Variant number = Call(*registry, L"QueryValue", u"UsePCDateTime");
    EXPECT_EQ(number.Type(), VT_I4);
    EXPECT_EQ(number.Get().lVal, -1);
    EXPECT_EQ(Text(Call(*registry, L"QueryValue", u"Text")), "ab c");
    EXPECT_EQ(Text(Call(*registry, L"QueryValue", u"")), "");
    EXPECT_EQ(ErrorOf([&] { Call(*registry, L"QueryValue", u"Other"); }), missing);

    const BYTE bytes[] = {1, 2, 3};
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Soft\\Kiv", L"Binary", REG_BINARY, bytes, sizeof bytes);
    EXPECT_EQ(ErrorOf([&] { Call(*registry, L"QueryValue", u"Binary"); }), DISP_E_TYPEMISMATCH);

    // A text that was stored without its end, and one with two.
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Soft\\Kiv", L"Open", REG_SZ, L"xyz", 6);
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Soft\\Kiv", L"Twice", REG_SZ, L"xy\0", 8);
    EXPECT_EQ(Text(Call(*registry, L"QueryValue", u"Open")), "xyz");
    EXPECT_EQ(Text(Call(*registry, L"QueryValue", u"Twice")), "xy");
}

TEST_F(SimulatorObjects, KeyFilterSwallowsWhatIsNoNumber) {
    const auto services = server.Make(L"KivUserServicesObjs.Services");
    const struct {
        std::int16_t key;
        Variant extra;
        bool flag;
        std::int16_t result;
    } cases[] = {
        {L'0', Variant::Missing(), false, L'0'}, {L'9', Variant::Missing(), false, L'9'},
        {8, Variant::Missing(), false, 8},       {L'-', Variant::Missing(), false, L'-'},
        {L'a', Variant::Missing(), false, 0},    {L'/', Variant::Missing(), false, 0},
        {L':', Variant::Missing(), false, 0},    {L'.', Variant::Missing(), false, 0},
        {L'.', Variant::Missing(), true, L'.'},  {L':', Variant(u":/"), false, L':'},
    };
    const DISPID id = comkit::DispIdOf(*services, L"FilterNumericKey");
    for (const auto& [key, extra, flag, result] : cases) {
        SCOPED_TRACE(key);
        std::int16_t code = key;
        std::array<VARIANT, 3> arguments{};
        arguments[0].vt = VT_BYREF | VT_I2;
        arguments[0].piVal = &code;
        arguments[1] = extra.Get();
        arguments[2] = Variant(flag).Get();
        comkit::InvokeWith(*services, id, DISPATCH_METHOD, arguments);
        EXPECT_EQ(code, result);
    }
    EXPECT_EQ(Text(Call(*services, L"FormatVersion", 1L, 20L, 3L)), "1.20.3");
}

TEST_F(SimulatorObjects, VariablesAreFoundByPathAndReadLive) {
    const auto variables = server.Make(L"VexaSimulator.Variables");
    const auto hour = ObjectIn(Call(*variables, L"Element", u"Clock.Hour"));
    EXPECT_EQ(Text(Call(*hour, L"Value")), "14");
    Put(*device, L"Value", u"nvoHour", u"3");
    EXPECT_EQ(Text(Call(*hour, L"Value")), "3");
    EXPECT_TRUE(FAILED(ErrorOf([&] { Call(*variables, L"Element", u"Clock.Age"); })));
    Put(*device, L"Offline", true);
    EXPECT_TRUE(FAILED(ErrorOf([&] { Call(*hour, L"Value"); })));
}

TEST_F(SimulatorObjects, EveryFrameworkCallFailsWhileThatIsAskedFor) {
    const auto hidden = MakeHidden(2);
    const auto element = ObjectIn(Call(*hidden, L"Element", 0L));
    const auto data = ObjectIn(Call(*element, L"DataElement"));
    const auto definition = ObjectIn(Call(*data, L"DataDefinition"));
    const auto collection = server.Make(L"KivUserServicesObjs.Collection");
    const auto registry = server.Make(L"KivUserServicesObjs.Registry");
    const auto services = server.Make(L"KivUserServicesObjs.Services");
    Put(*device, L"FailNext", -1L);
    const std::function<void()> calls[] = {
        [&] { Put(*hidden, L"ElementCount", 3L); },
        [&] { Call(*hidden, L"Element", 0L); },
        [&] { Call(*hidden, L"_NewEnum"); },
        [&] { Call(*element, L"DataElement"); },
        [&] { Call(*data, L"DataDefinition"); },
        [&] { Call(*definition, L"WriteDefinition", 1L, 1L, u"nvoHour", u""); },
        [&] { Call(*definition, L"WriteValue", u"1", u"", u""); },
        [&] { Call(*definition, L"SetWriteEnabled", true); },
        [&] { Call(*collection, L"Add", device.Get()); },
        [&] { Call(*collection, L"Count"); },
        [&] { Call(*registry, L"OpenKey", static_cast<std::int32_t>(0x80000001), u"Software", KEY_READ); },
        [&] { Call(*services, L"FormatVersion", 1L, 0L, 0L); },
        [&] { server.Make(L"VexaBaseControls.VexaHidden"); },
        [&] { server.Make(L"KivUserServicesObjs.Collection"); },
        [&] { server.Make(L"KivUserServicesObjs.HelpDefinition"); },
        [&] { server.Make(L"KivUserServicesObjs.Registry"); },
    };
    for (const auto& call : calls) {
        SCOPED_TRACE(&call - calls);
        EXPECT_TRUE(FAILED(ErrorOf(call)));
    }
    Put(*device, L"FailNext", 1L);
    EXPECT_TRUE(FAILED(ErrorOf([&] { Call(*hidden, L"Element", 0L); })));
    EXPECT_EQ(ErrorOf([&] { Call(*hidden, L"Element", 0L); }), S_OK) << "one failure was asked for";
}

}  // namespace
}  // namespace simulator_test
