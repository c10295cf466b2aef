// The simulated device as a host uses it: late-bound and through its dual interface.
#include <gtest/gtest.h>

#include "simulator_support.h"
#include "VexaSimulator.h"

namespace simulator_test {
namespace {

using comkit::Call;
using comkit::ComError;
using comkit::ComPtr;
using comkit::Put;
using comkit::Variant;

class SimulatorDevice : public testing::Test {
protected:
    SimulatorDevice() { Call(*late, L"Reset"); }
    void TearDown() override { Call(*late, L"Reset"); }

    HRESULT ErrorOfPut(const wchar_t* name, const Variant& value) {
        try {
            comkit::InvokeWith(*late, comkit::DispIdOf(*late, name), DISPATCH_PROPERTYPUT,
                               std::array<VARIANT, 1>{value.Get()});
        } catch (const ComError& error) {
            EXPECT_EQ(error.Source(), u"VexaSimulator");
            EXPECT_FALSE(error.Description().empty());
            return error.Result();
        }
        return S_OK;
    }

    SimulatorServer server;
    ComPtr<IDispatch> late = server.Make(L"VexaSimulator.Device");
    ComPtr<IVexaSimulatorDevice> dual = late.As<IVexaSimulatorDevice>();
};

TEST_F(SimulatorDevice, AllInstancesAreTheOneDeviceOfTheProcess) {
    const auto other = server.Make(L"VexaSimulator.Device");
    ASSERT_TRUE(dual);
    ASSERT_EQ(dual->put_Now(36526.5), S_OK);
    EXPECT_EQ(Text(Call(*other, L"Value", u"nvoYear")), "2000");
    EXPECT_EQ(Text(Call(*other, L"Value", u"Clock.Hour")), "12");
    const Variant now = Call(*other, L"Now");
    EXPECT_EQ(now.Type(), VT_DATE);
    EXPECT_NEAR(now.Get().date, 36526.5, 5.0 / 86400);
}

TEST_F(SimulatorDevice, RefusedPutsRaiseAnErrorAndLeaveTheDeviceAlone) {
    constexpr auto InvalidPropertyValue = static_cast<HRESULT>(0x800A017C);
    const std::string year = Text(Call(*late, L"Value", u"nvoYear"));
    EXPECT_EQ(ErrorOfPut(L"Now", Variant::Date(3e6)), InvalidPropertyValue);
    EXPECT_EQ(ErrorOfPut(L"Now", Variant::Date(-7e5)), InvalidPropertyValue);
    EXPECT_EQ(ErrorOfPut(L"PollInterval", Variant(9L)), InvalidPropertyValue);
    EXPECT_EQ(ErrorOfPut(L"FailNext", Variant(-2L)), InvalidPropertyValue);
    EXPECT_THROW(Put(*late, L"Value", u"nvoMonth", u"13"), ComError);
    EXPECT_THROW(Put(*late, L"Value", u"nvoElse", u"1"), ComError);
    EXPECT_THROW(Call(*late, L"Value", u"nvoElse"), ComError);
    EXPECT_EQ(Text(Call(*late, L"Value", u"nvoYear")), year);
    EXPECT_EQ(Text(Call(*late, L"PollInterval")), "200");
}

TEST_F(SimulatorDevice, LinesThatTheLogHasNotAreRefusedWithTextAndNoLine) {
    for (const LONG index : {0L, -1L, 100000L}) {
        wchar_t stale[] = L"stale";
        BSTR line = stale;
        EXPECT_EQ(dual->get_LogLine(index, &line), static_cast<HRESULT>(0x800A0009));
        EXPECT_EQ(line, nullptr);
        ComPtr<IErrorInfo> info;
        EXPECT_EQ(GetErrorInfo(0, info.Put()), S_OK);
    }
}

TEST_F(SimulatorDevice, PropertiesAnswerWhenTheyAreCalledAsMethods) {
    const DISPID id = comkit::DispIdOf(*late, L"Value");
    const Variant name(u"nvoYear");
    EXPECT_EQ(Text(comkit::InvokeWith(*late, id, DISPATCH_METHOD, std::array<VARIANT, 1>{name.Get()})), "2001");
}

TEST_F(SimulatorDevice, OfflineAndRefusalsAreForTheControlsNotForTheHost) {
    Put(*late, L"Offline", true);
    Put(*late, L"RefuseWrites", true);
    Put(*late, L"Value", u"nviSetMinute", u"41");
    Put(*late, L"Value", u"nviSetSecond", u"0");
    EXPECT_EQ(Text(Call(*late, L"Value", u"nvoMinute")), "41");
    const auto hidden = server.Make(L"VexaBaseControls.VexaHidden");
    Put(*hidden, L"ElementCount", 1L);
    const auto data = ObjectIn(Call(*ObjectIn(Call(*hidden, L"Element", 0L)), L"DataElement"));
    const auto definition = ObjectIn(Call(*data, L"DataDefinition"));
    Call(*definition, L"WriteDefinition", 1L, 2L, u"nciClockFormat", u"");
    EXPECT_THROW(Call(*definition, L"WriteValue", u"0", u"", u""), ComError);
    Put(*late, L"Offline", false);
    EXPECT_THROW(Call(*definition, L"WriteValue", u"0", u"", u""), ComError);
    Put(*late, L"RefuseWrites", false);
    Call(*definition, L"WriteValue", u"0", u"NoDisplay", u"UseCurrent");
    EXPECT_EQ(Text(Call(*late, L"LogCount")), "10");
    EXPECT_EQ(Text(Call(*late, L"LogLine", 9L)), "write value 0: nciClockFormat = 0 (NoDisplay, UseCurrent)");
    Call(*late, L"ClearLog");
    EXPECT_EQ(Text(Call(*late, L"LogCount")), "0");
}

TEST_F(SimulatorDevice, WhatIsDoneToTheDeviceStandsInTheLogOnce) {
    for (int twice = 0; twice < 2; ++twice) {
        Put(*late, L"Offline", true);
        Put(*late, L"ClockPaused", true);
        Put(*late, L"ResponseTime", 500L);
    }
    Put(*late, L"Value", u"nvoHour", u"7");
    EXPECT_THROW(Put(*late, L"Value", u"nvoHour", u"24"), ComError);
    EXPECT_EQ(ErrorOfPut(L"ResponseTime", Variant(-1L)), static_cast<HRESULT>(0x800A017C));
    Put(*late, L"Offline", false);
    const std::string expected[] = {"the device goes offline", "the device's clock stands still",
                                    "the device answers one read in 500 ms", "at the device: nvoHour = 7",
                                    "the device is online again"};
    ASSERT_EQ(Text(Call(*late, L"LogCount")), std::to_string(std::size(expected)));
    for (LONG line = 0; line < LONG{std::size(expected)}; ++line)
        EXPECT_EQ(Text(Call(*late, L"LogLine", line)), expected[line]);
    Call(*late, L"Reset");
    EXPECT_EQ(Text(Call(*late, L"ResponseTime")), "0");
}

TEST_F(SimulatorDevice, EveryListedVariableHasAValueAndThereAreNoOthers) {
    const LONG count = Call(*late, L"VariableCount").Get().lVal;
    ASSERT_GT(count, 0);
    for (LONG index = 0; index < count; ++index) {
        const std::string name = Text(Call(*late, L"VariableName", index));
        EXPECT_FALSE(Text(Call(*late, L"Value", std::u16string(name.begin(), name.end()))).empty()) << name;
        const char* const prefixes[] = {"nvi", "nvo", "nci"};
        EXPECT_TRUE(name.starts_with(prefixes[Call(*late, L"VariableType", index).Get().lVal])) << name;
    }
    for (const LONG index : {-1L, count}) {
        EXPECT_THROW(Call(*late, L"VariableName", index), ComError);
        EXPECT_THROW(Call(*late, L"VariableType", index), ComError);
    }
}

TEST_F(SimulatorDevice, DescribesItselfForBrowsersAndScripts) {
    UINT count = 0;
    ASSERT_EQ(late->GetTypeInfoCount(&count), S_OK);
    ASSERT_EQ(count, 1u);
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(late->GetTypeInfo(0, 0, info.Put()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(IsEqualIID(attributes->guid, __uuidof(IVexaSimulatorDevice)));
    info->ReleaseTypeAttr(attributes);
    EXPECT_EQ(late->GetTypeInfo(1, 0, info.Put()), DISP_E_BADINDEX);
    const auto errors = late.As<ISupportErrorInfo>();
    ASSERT_TRUE(errors);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(__uuidof(IVexaSimulatorDevice)), S_OK);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IID_IDispatch), S_FALSE);
}

}  // namespace
}  // namespace simulator_test
