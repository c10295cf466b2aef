// The dual interface, late-bound: every property, and the errors that reach a caller.
#include <array>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::Variant;

class Properties : public ControlFixture {};

struct PropertyCase {
    const wchar_t* name;
    const wchar_t* initial;
    Variant value;
    const wchar_t* after;
};

std::vector<PropertyCase> DesignTimeCases() {
    std::vector<PropertyCase> cases;
    const auto add = [&](const wchar_t* name, const wchar_t* initial, Variant value, const wchar_t* after) {
        cases.push_back({name, initial, std::move(value), after});
    };
    add(L"BackColor", L"-2147483633", 255, L"255");
    add(L"ForeColor", L"-2147483630", static_cast<std::int32_t>(0x80000005), L"-2147483643");
    add(L"CalBackColor", L"-2147483643", 1, L"1");
    add(L"CalBackColorDisabled", L"-2147483633", 2, L"2");
    add(L"CalForeColorDisabled", L"-2147483632", 3, L"3");
    add(L"CalTitleBackColor", L"-2147483646", 4, L"4");
    add(L"CalTitleForeColor", L"-2147483639", 5, L"5");
    add(L"CalTitleBackColorDisabled", L"-2147483633", 6, L"6");
    add(L"CalTitleForeColorDisabled", L"-2147483632", 7, L"7");
    add(L"CalTrailingForeColor", L"-2147483631", 8, L"8");
    add(L"Caption", L"Set Date/Time", u"Clock & \x00e9", L"Clock & \x00e9");
    add(L"Enabled", L"True", false, L"False");
    add(L"ShowSeconds", L"False", true, L"True");
    add(L"ShowDST", L"True", false, L"False");
    add(L"ShowToday", L"True", false, L"False");
    add(L"StartOfWeek", L"1", 7, L"7");
    add(L"TimeFormat", L"0", 9, L"9");
    add(L"TimeHeight", L"495", 0, L"315");
    add(L"TimeWidth", L"1095", 3000, L"3000");
    add(L"UsePCDateTime", L"True", false, L"False");
    add(L"Data12HrValue", L"0", -1, L"-1");
    add(L"Data24HrValue", L"1", u"12", L"12");
    add(L"Mode", L"0", 1, L"1");
    return cases;
}

TEST_F(Properties, EachStartsWithItsDefaultAndTakesAValueLateBound) {
    for (PropertyCase& c : DesignTimeCases()) {
        SCOPED_TRACE(testing::Message() << c.name);
        Place(false);
        EXPECT_EQ(std::wstring(c.initial), TextOf(c.name));
        std::vector<Variant> args;
        args.push_back(std::move(c.value));
        const CallResult put = Invoke(Members(), c.name, DISPATCH_PROPERTYPUT, args);
        EXPECT_EQ(S_OK, put.hr);
        EXPECT_EQ(std::wstring(c.after), TextOf(c.name));
        Remove();
    }
}

TEST_F(Properties, SlotsAreIndexedProperties) {
    Place(false);
    for (int slot = 0; slot <= 13; ++slot) {
        const int kind = slot < 2 ? 2 : slot < 8 ? 1 : 0;
        EXPECT_EQ(std::to_wstring(kind), Text(comkit::Call(Members(), L"DataType", slot).Get()));
        comkit::Put(Members(), L"DataType", slot, 3);
        comkit::Put(Members(), L"DataLMObject", slot, 100 + slot);
        comkit::Put(Members(), L"DataVariableName", slot, u"name");
        comkit::Put(Members(), L"DataElementPath", slot, u"Clock.Hour");
    }
    for (int slot = 0; slot <= 13; ++slot) {
        EXPECT_EQ(L"3", Text(comkit::Call(Members(), L"DataType", slot).Get()));
        EXPECT_EQ(std::to_wstring(100 + slot), Text(comkit::Call(Members(), L"DataLMObject", slot).Get()));
        EXPECT_EQ(L"name", Text(comkit::Call(Members(), L"DataVariableName", slot).Get()));
        EXPECT_EQ(L"Clock.Hour", Text(comkit::Call(Members(), L"DataElementPath", slot).Get()));
    }
}

HRESULT HostError(long number) {
    return static_cast<HRESULT>(0x800A0000u + static_cast<unsigned long>(number));
}

struct ErrorCase {
    bool userMode;
    const wchar_t* name;
    WORD flags;
    std::vector<int> args;
    long number;
    const char16_t* source;
    const char16_t* description;
};

TEST_F(Properties, ErrorsArriveWithNumberSourceAndText) {
    constexpr WORD Get = DISPATCH_PROPERTYGET;
    constexpr WORD Put = DISPATCH_PROPERTYPUT;
    const char16_t* own = u"KivSetDateTime (KivSetDateTime1)";
    const char16_t* badIndex = u"Invalid Property array index: Must be a value between 0 and 13.";
    const ErrorCase cases[] = {
        {false, L"DataLMObject", Get, {14}, 381, own, badIndex},
        {true, L"DataElementPath", Get, {-1}, 381, own, badIndex},
        {true, L"DataType", Put, {14, 1}, 381, own, badIndex},
        {false, L"Mode", Put, {3}, 380, u"KivDateTime", u"Invalid property value"},
        {true, L"Mode", Put, {1}, 382, u"KivDateTime", u"Property cannot be set at run time"},
        {true, L"ShowDST", Put, {0}, 382, u"KivDateTime", u"Property cannot be set at run time"},
        {true, L"ShowSeconds", Put, {1}, 382, u"KivDateTime", u"Property cannot be set at run time"},
        {false, L"DataInUpload", Get, {}, 394, u"KivDateTime", u"Property is write-only"},
        {false, L"DataInUpload", Put, {0}, 383, u"KivDateTime", u"Property is read-only"},
    };
    for (const ErrorCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name << " " << c.number);
        Place(c.userMode);
        std::vector<Variant> args;
        for (const int arg : c.args) args.emplace_back(arg);
        const CallResult result = Invoke(Members(), c.name, c.flags, args);
        EXPECT_EQ(DISP_E_EXCEPTION, result.hr);
        EXPECT_EQ(HostError(c.number), result.scode);
        EXPECT_EQ(std::u16string(c.source), result.source);
        EXPECT_EQ(std::u16string(c.description), result.description);
        Remove();
    }
}

TEST_F(Properties, ErrorsArriveThroughTheDualInterfaceToo) {
    Place(false);
    site->extenderName.clear();  // then the ambient display name is the instance's
    const auto dual = As<_KivSetDateTime>();
    LONG value = 77;
    EXPECT_EQ(HostError(381), dual->get_DataLMObject(14, &value));
    EXPECT_EQ(0, value);
    comkit::ComPtr<IErrorInfo> info;
    ASSERT_EQ(S_OK, GetErrorInfo(0, info.Put()));
    comkit::Bstr source;
    info->GetSource(source.Put());
    EXPECT_EQ(u"KivSetDateTime (Display1)", source.View());
    EXPECT_EQ(S_OK, As<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(__uuidof(_KivSetDateTime)));
    EXPECT_EQ(S_FALSE, As<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(IID_IOleObject));
    EXPECT_EQ(E_POINTER, dual->get_Caption(nullptr));
}

TEST_F(Properties, TheFontIsTheObjectThatWasPut) {
    Place(false);
    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    std::wstring face = L"Liberation Serif";
    description.lpstrName = face.data();
    description.cySize.int64 = 160000;
    description.sWeight = 700;
    comkit::ComPtr<IFontDisp> font;
    ASSERT_EQ(S_OK, OleCreateFontIndirect(&description, IID_IFontDisp, font.PutVoid()));
    std::vector<Variant> args;
    args.emplace_back(static_cast<IDispatch*>(font.Get()));
    ASSERT_EQ(S_OK, Invoke(Members(), L"Font", DISPATCH_PROPERTYPUTREF, args).hr);
    const Variant back = Get(L"Font");
    ASSERT_EQ(VT_DISPATCH, back.Type());
    EXPECT_EQ(comkit::ComPtr<IUnknown>::From(font.Get()).Get(),
              comkit::ComPtr<IUnknown>::From(back.Get().pdispVal).Get());

    std::vector<Variant> nothing;
    nothing.emplace_back(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(DISP_E_EXCEPTION, Invoke(Members(), L"Font", DISPATCH_PROPERTYPUT, nothing).hr);
    std::vector<Variant> foreign;
    foreign.emplace_back(static_cast<IDispatch*>(site.Get()));
    EXPECT_TRUE(FAILED(Invoke(Members(), L"Font", DISPATCH_PROPERTYPUT, foreign).hr));
}

TEST_F(Properties, AControlThatNobodyInitialisedShowsItsDefaultsToAScript) {
    control = Server::Get().CreateControl();
    dispatch = As<IDispatch>();
    EXPECT_EQ(L"Set Date/Time", TextOf(L"Caption"));
    EXPECT_EQ(L"True", TextOf(L"UsePCDateTime"));
    // No container to say otherwise: it runs.
    EXPECT_EQ(L"True", TextOf(L"DataInUpload"));
}

// --- what ITypeInfo::Invoke needs help with --------------------------------------------------------------------------

class InvokeHelp : public ControlFixture {
protected:
    /// The device's date and time are 1 January 2000, 18:00.
    void PlaceWithDate() {
        Place(true);
        const auto sink = AdviseEvents();
        sink->onEvent = [](DISPID id, DISPPARAMS& params, EXCEPINFO*) {
            if (id == 10) *params.rgvarg[1].pvarVal = Variant::Date(36526.75).Detach();
            return S_OK;
        };
        Put(L"UsePCDateTime", false);
    }
    CallResult GetInfo(VARIANT& date, VARIANT& time, VARIANT& enable) {
        DISPID id = comkit::DispIdOf(Members(), L"GetDateTimeInfo");
        std::array<VARIANT, 3> args{enable, time, date};
        DISPPARAMS params{args.data(), nullptr, 3, 0};
        CallResult result;
        comkit::ExceptionInfo info;
        result.hr =
            Members().Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, info.Put(), nullptr);
        result.scode = info.Put()->scode;
        result.description = std::u16string(comkit::ViewOf(info.Put()->bstrDescription));
        return result;
    }
    static VARIANT Ref(VARIANT& target) {
        VARIANT v;
        v.vt = VT_BYREF | VT_VARIANT;
        v.pvarVal = &target;
        return v;
    }
};

TEST_F(InvokeHelp, ScriptVariablesForByReferenceArgumentsGetTheirValues) {
    PlaceWithDate();
    Variant date;
    Variant time(u"some text that is replaced");
    Variant enable(5);
    VARIANT refs[] = {Ref(date.Get()), Ref(time.Get()), Ref(enable.Get())};
    ASSERT_EQ(S_OK, GetInfo(refs[0], refs[1], refs[2]).hr);
    EXPECT_EQ(VT_DATE, date.Type());
    EXPECT_EQ(VT_DATE, time.Type());
    EXPECT_EQ(VT_BOOL, enable.Type());
    EXPECT_EQ(36526.0, date.Get().date);
    EXPECT_EQ(36526.75, time.Get().date);
}

TEST_F(InvokeHelp, TypedVariablesForByReferenceArgumentsGetTheirValues) {
    PlaceWithDate();
    DATE date = 0;
    BSTR text = SysAllocString(L"old");
    VARIANT_BOOL enable = 99;
    VARIANT refs[3];
    refs[0].vt = VT_BYREF | VT_DATE;
    refs[0].pdate = &date;
    refs[1].vt = VT_BYREF | VT_BSTR;
    refs[1].pbstrVal = &text;
    refs[2].vt = VT_BYREF | VT_BOOL;
    refs[2].pboolVal = &enable;
    ASSERT_EQ(S_OK, GetInfo(refs[0], refs[1], refs[2]).hr);
    EXPECT_EQ(36526.0, date);
    EXPECT_STRNE(L"old", text);
    EXPECT_TRUE(enable == VARIANT_TRUE || enable == VARIANT_FALSE);
    SysFreeString(text);
}

TEST_F(InvokeHelp, APropertyCalledAsAMethodIsGot) {
    Place(true);
    EXPECT_EQ(L"Set Date/Time", Text(Invoke(Members(), L"Caption", DISPATCH_METHOD).value.Get()));
    std::vector<Variant> slot;
    slot.emplace_back(13);
    const CallResult kind = Invoke(Members(), L"DataType", DISPATCH_METHOD, slot);
    EXPECT_EQ(S_OK, kind.hr);
    EXPECT_EQ(L"0", Text(kind.value.Get()));
}

TEST_F(InvokeHelp, AFailedGetLeavesNoResultBehind) {
    Place(true);
    std::vector<Variant> slot;
    slot.emplace_back(14);
    const CallResult result = Invoke(Members(), L"DataElementPath", DISPATCH_PROPERTYGET, slot);
    EXPECT_EQ(DISP_E_EXCEPTION, result.hr);
    EXPECT_EQ(VT_EMPTY, result.value.Type());
}

TEST_F(InvokeHelp, AnErrorFromBeforeIsNotReported) {
    Place(true);
    comkit::LeaveErrorInfo(u"somebody else", u"an old error");
    EXPECT_EQ(S_OK, Invoke(Members(), L"Caption", DISPATCH_PROPERTYGET).hr);
    comkit::LeaveErrorInfo(u"somebody else", u"an old error");
    std::vector<Variant> word;
    word.emplace_back(u"no number");
    const CallResult result = Invoke(Members(), L"TimeWidth", DISPATCH_PROPERTYPUT, word);
    EXPECT_EQ(DISP_E_TYPEMISMATCH, result.hr);
    EXPECT_EQ(u"", result.description);
    // A member that fails without a word of its own.
    comkit::LeaveErrorInfo(u"somebody else", u"an old error");
    Variant time;
    Variant enable(true);
    CHAR tooSmall = 0;
    VARIANT refs[] = {{}, Ref(time.Get()), Ref(enable.Get())};
    refs[0].vt = VT_BYREF | VT_I1;
    refs[0].pcVal = &tooSmall;
    const CallResult wordless = GetInfo(refs[0], refs[1], refs[2]);
    EXPECT_EQ(DISP_E_EXCEPTION, wordless.hr);
    EXPECT_TRUE(FAILED(wordless.scode));
    EXPECT_EQ(u"", wordless.description);
}

TEST_F(InvokeHelp, WrongCallsAreRefused) {
    Place(true);
    EXPECT_EQ(DISP_E_UNKNOWNNAME, Invoke(Members(), L"NoSuchMember", DISPATCH_METHOD).hr);
    DISPPARAMS none{};
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND,
              Members().Invoke(4711, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr));
    EXPECT_EQ(DISP_E_UNKNOWNINTERFACE,
              Members().Invoke(1, IID_IUnknown, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr));
    std::vector<Variant> tooMany;
    tooMany.emplace_back(1);
    tooMany.emplace_back(2);
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, Invoke(Members(), L"GetDateTimeInfo", DISPATCH_METHOD, tooMany).hr);
}

}  // namespace
}  // namespace component
