// The show control's dual interface, its errors, its persistence and what a designer's property list shows of it.
#include <olectl.h>

#include <algorithm>
#include <cstdint>

#include "PersistenceFixture.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

class ShowMembers : public PersistenceFixture {
protected:
    ShowMembers() : PersistenceFixture(ShowClass) {}
    CallResult PutProperty(const wchar_t* name, Variant value) {
        std::vector<Variant> args;
        args.push_back(std::move(value));
        return Invoke(Members(), name, DISPATCH_PROPERTYPUT, args);
    }
};

struct MemberCase {
    const wchar_t* name;
    DISPID id;
    const wchar_t* key;
    const wchar_t* initial;
    Variant value;
    const wchar_t* after;
    bool announced = true;
};

std::vector<MemberCase> Members() {
    std::vector<MemberCase> all;
    const auto add = [&](const wchar_t* name, DISPID id, const wchar_t* key, const wchar_t* initial, Variant value,
                         const wchar_t* after) {
        all.push_back({name, id, key, initial, std::move(value), after});
    };
    add(L"Data12HrValue", 1, L"Data12HourValue", L"0", 5, L"5");
    add(L"Data24HrValue", 2, L"Data24HourValue", L"1", -6, L"-6");
    add(L"DataDMYValue", 3, L"DataDMYValue", L"1", 7, L"7");
    add(L"DataMDYValue", 4, L"DataMDYValue", L"0", 8, L"8");
    add(L"AMPMFormat", 9, L"AMPMFormat", L"AM,PM", u"a.m., p.m.", L"a.m., p.m.");
    add(L"BackColor", DISPID_BACKCOLOR, L"BackColor", L"-2147483633", 255, L"255");
    add(L"BorderStyle", DISPID_BORDERSTYLE, L"BorderStyle", L"0", 1, L"1");
    add(L"Caption", DISPID_CAPTION, L"Caption", L"Date/Time:", u"Uhr \x4e2d", L"Uhr \x4e2d");
    add(L"CaptionHeight", 10, L"CaptionHeight", L"195", 300, L"300");
    add(L"CaptionWidth", 11, L"CaptionWidth", L"2445", 10, L"435");
    add(L"DateDelimiter", 12, L"DateDelimiter", L"-", u"/", L"/");
    add(L"DateFormat", 13, L"ProtoDateFormat", L"0", 7, L"7");
    add(L"Enabled", DISPID_ENABLED, L"Enabled", L"True", false, L"False");
    add(L"ForeColor", DISPID_FORECOLOR, L"ForeColor", L"-2147483630", std::int32_t{0x00102030}, L"1056816");
    add(L"LockCaptionWidth", 14, L"LockCapWidth", L"False", true, L"True");
    add(L"LockValueWidth", 15, L"LockValWidth", L"False", true, L"True");
    add(L"Mode", 16, L"Mode", L"1", 2, L"2");
    all.back().announced = false;
    add(L"ShowCentury", 17, L"ShowCentury", L"True", false, L"False");
    add(L"ShowLeadingZeros", 18, L"ShowLeadZeros", L"True", false, L"False");
    add(L"ShowLongDay", 19, L"ShowLongDay", L"False", true, L"True");
    add(L"ShowSeconds", 20, L"ShowSeconds", L"False", true, L"True");
    add(L"TimeDelimiter", 21, L"TimeDelimiter", L":", u".", L".");
    add(L"TimeFormat", 22, L"ProtoShow24Hour", L"0", 1, L"1");
    add(L"UpperCase", 23, L"UpperCase", L"True", false, L"False");
    add(L"ValueHeight", 25, L"ValueHeight", L"195", u"450", L"450");
    add(L"ValueWidth", 26, L"ValueWidth", L"2445", 32000, L"32000");
    return all;
}

TEST_F(ShowMembers, EachHasItsNumberItsDefaultItsKeyAndTellsOfARealChangeOnce) {
    for (MemberCase& c : component::Members()) {
        SCOPED_TRACE(testing::Message() << c.name);
        Place(false);
        const auto notifications = AdviseNotifications();
        EXPECT_EQ(c.id, comkit::DispIdOf(*dispatch, c.name));
        EXPECT_EQ(std::wstring(c.initial), TextOf(c.name));
        EXPECT_EQ(S_OK, PutProperty(c.name, Get(c.name)).hr);
        EXPECT_TRUE(notifications->changed.empty()) << "no change";
        EXPECT_FALSE(IsDirty());

        EXPECT_EQ(S_OK, PutProperty(c.name, std::move(c.value)).hr);
        EXPECT_EQ(std::wstring(c.after), TextOf(c.name));
        EXPECT_TRUE(IsDirty());
        EXPECT_EQ(c.announced ? 1 : 0, std::ranges::count(notifications->changed, c.id));
        const auto keys = SaveBag(false)->Keys();
        EXPECT_EQ(1, std::ranges::count(keys, c.key));

        // A container that watches the property may forbid the change.
        notifications->refuses = c.id;
        const CallResult refused = PutProperty(c.name, Get(c.name));
        EXPECT_EQ(static_cast<HRESULT>(0x800A017F), refused.scode);
        Remove();
    }
}

TEST_F(ShowMembers, NamesAreSpelledAsDocumented) {
    Place(false);
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(S_OK, dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Put()));
    for (const auto& [id, name] : {std::pair<DISPID, const char16_t*>{24, u"Value"},
                                   {27, u"RefreshDisplay"},
                                   {DISPID_CAPTION, u"Caption"},
                                   {DISPID_FONT, u"Font"},
                                   {16, u"Mode"}}) {
        comkit::Bstr text;
        ASSERT_EQ(S_OK, type->GetDocumentation(id, text.Put(), nullptr, nullptr, nullptr));
        EXPECT_EQ(std::u16string_view(name), text.View());
    }
    EXPECT_TRUE(FAILED(PutProperty(L"Value", Variant(L"12:00")).hr)) << "read only";
}

struct ErrorCase {
    bool userMode;
    const wchar_t* name;
    std::vector<Variant> args;
    WORD flags;
    long number;
    const char16_t* source;
    const char16_t* description;
};

template <class... Values>
std::vector<Variant> Args(Values... values) {
    std::vector<Variant> args;
    (args.emplace_back(values), ...);
    return args;
}

std::vector<ErrorCase> Errors() {
    constexpr WORD Get = DISPATCH_PROPERTYGET;
    constexpr WORD Put = DISPATCH_PROPERTYPUT;
    const char16_t* const own = u"KivShowDateTime (KivShowDateTime1)";
    const char16_t* const badIndex = u"Invalid Property array index: Must be a value between 0 and 3.";
    const char16_t* const badText =
        u"Invalid Property Value!  Must have two fields separated by a comma.  (Ex. \"AM,PM\")";
    std::vector<ErrorCase> all;
    const auto add = [&](bool userMode, const wchar_t* name, std::vector<Variant> args, WORD flags, long number,
                         const char16_t* source, const char16_t* description) {
        all.push_back({userMode, name, std::move(args), flags, number, source, description});
    };
    for (const int index : {-1, 7}) {
        add(true, L"DataElementPath", Args(index), Get, 381, own, badIndex);
        add(false, L"DataVariableName", Args(index, L"x"), Put, 381, own, badIndex);
        add(false, L"DataType", Args(index), Get, 381, own, badIndex);
        add(true, L"DataLMObject", Args(index), Get, 381, own, badIndex);
        add(true, L"DataLMObject", Args(index, 1), Put, 9, u"KivDateTime", u"Subscript out of range");
    }
    add(true, L"AMPMFormat", Args(L"AM"), Put, 380, own, badText);
    add(false, L"AMPMFormat", Args(L"a,b,c"), Put, 380, own, badText);
    add(false, L"BorderStyle", Args(2), Put, 380, own,
        u"Invalid Property Value!  Border Style must be 0 (None) or 1 (Sunken).");
    add(false, L"DateDelimiter", Args(L"--"), Put, 380, own,
        u"Invalid Property Value!  Date delimiter must be a single character.  (Ex. \"/\")");
    add(true, L"TimeDelimiter", Args(L""), Put, 380, own,
        u"Invalid Property Value!  Time delimiter must be a single character.  (Ex. \":\")");
    add(false, L"Mode", Args(3), Put, 380, own,
        u"Invalid Property Value!  Mode must be either 1 (Show Date) or 2 (Show Time).");
    add(false, L"DataType", Args(6, 4), Put, 380, own,
        u"Invalid Property Value!  Date Type must be value in the range of 0 - 3.");
    add(true, L"Mode", Args(1), Put, 382, u"KivDateTime", u"Property cannot be set at run time");
    return all;
}

TEST_F(ShowMembers, ErrorsArriveWithNumberSourceAndTextAndChangeNothing) {
    for (const ErrorCase& c : Errors()) {
        SCOPED_TRACE(testing::Message() << c.name << " " << c.number);
        Place(c.userMode);
        const std::wstring before = State();
        const CallResult result = Invoke(*dispatch, c.name, c.flags, c.args);
        EXPECT_EQ(DISP_E_EXCEPTION, result.hr);
        EXPECT_EQ(static_cast<HRESULT>(0x800A0000UL + static_cast<unsigned long>(c.number)), result.scode);
        EXPECT_EQ(std::u16string(c.source), result.source);
        EXPECT_EQ(std::u16string(c.description), result.description);
        EXPECT_EQ(before, State());
        EXPECT_FALSE(IsDirty());
        Remove();
    }
}

class ShowPersistence : public ShowMembers {
protected:
    void ChangeEverything() {
        for (int slot = 0; slot <= 6; ++slot) {
            comkit::Put(*dispatch, L"DataLMObject", slot, 70000 + slot);
            comkit::Put(*dispatch, L"DataType", slot, 3);
            comkit::Put(*dispatch, L"DataVariableName", slot, u"nvo\x00dc\x4e2d");
            comkit::Put(*dispatch, L"DataElementPath", slot, u"Clock.Part");
        }
        for (MemberCase& c : component::Members()) ASSERT_EQ(S_OK, PutProperty(c.name, std::move(c.value)).hr);
        const Variant font = Get(L"Font");
        comkit::Put(*font.Get().pdispVal, L"Italic", true);
    }
};

TEST_F(ShowPersistence, ANewControlSavesItsFontAloneAndAllKeysInTheirOrderWhereAllAreWanted) {
    std::vector<std::wstring> expected;
    for (int slot = 0; slot <= 6; ++slot)
        for (const wchar_t* key : {L"DataLMObject", L"DataType", L"DataVarName", L"DataElemPath"})
            expected.push_back(key + std::to_wstring(slot));
    for (
        const wchar_t* key :
        {L"Data12HourValue", L"Data24HourValue", L"DataDMYValue", L"DataMDYValue",    L"Mode",         L"Caption",
         L"BackColor",       L"ForeColor",       L"BorderStyle",  L"Enabled",         L"Font",         L"CaptionHeight",
         L"CaptionWidth",    L"ValueHeight",     L"ValueWidth",   L"LockCapWidth",    L"LockValWidth", L"DateDelimiter",
         L"ProtoDateFormat", L"ShowCentury",     L"AMPMFormat",   L"ProtoShow24Hour", L"ShowSeconds",  L"TimeDelimiter",
         L"ShowLongDay",     L"ShowLeadZeros",   L"UpperCase"})
        expected.emplace_back(key);
    for (const bool userMode : {false, true}) {
        Place(userMode);
        EXPECT_EQ(std::vector<std::wstring>{L"Font"}, SaveBag(false)->Keys());
        EXPECT_EQ(expected, SaveBag(true)->Keys());
        EXPECT_FALSE(IsDirty());
        Remove();
    }
}

TEST_F(ShowPersistence, BagStreamAndStorageBringBackTheSameState) {
    Place(false);
    ChangeEverything();
    const std::wstring changed = State();
    const auto bag = SaveBag(false);
    const auto stream = SaveStream();
    ComPtr<IStorage> storage;
    ASSERT_EQ(S_OK,
              StgCreateDocfile(nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               storage.Put()));
    ASSERT_EQ(S_OK, As<IPersistStorage>()->Save(storage.Get(), FALSE));
    ASSERT_EQ(S_OK, As<IPersistStorage>()->SaveCompleted(nullptr));
    Remove();
    const std::function<HRESULT()> loads[] = {[&] { return LoadBag(*bag); }, [&] { return LoadStream(stream); },
                                              [&] { return As<IPersistStorage>()->Load(storage.Get()); }};
    for (const auto& load : loads) {
        Place(false);
        EXPECT_NE(changed, State());
        EXPECT_EQ(S_OK, load());
        EXPECT_EQ(changed, State());
        EXPECT_EQ(stream, SaveStream());
        EXPECT_FALSE(IsDirty());
        Remove();
    }
}

TEST_F(ShowPersistence, BadValuesLoadAsDefaultsAndAreReported) {
    Place(false);
    const std::wstring defaults = State();
    const auto bag = comkit::MakeObject<TestBag>();
    bag->Put(L"Mode", 5);
    bag->Put(L"BorderStyle", 2);
    bag->Put(L"DateDelimiter", u"--");
    bag->Put(L"TimeDelimiter", u"");
    bag->Put(L"AMPMFormat", u"a,b,c");
    bag->Put(L"CaptionWidth", u"wide");
    bag->Put(L"DataType6", 9);
    bag->Put(L"Enabled", u"perhaps");
    bag->Put(L"Font", static_cast<IDispatch*>(site.Get()));
    const auto log = comkit::MakeObject<TestErrorLog>();
    const auto notifications = AdviseNotifications();
    EXPECT_EQ(S_OK, LoadBag(*bag, log.Get()));
    EXPECT_EQ(defaults, State());
    EXPECT_TRUE(notifications->changed.empty());
    EXPECT_FALSE(IsDirty());
    for (const wchar_t* key :
         {L"Mode", L"BorderStyle", L"DateDelimiter", L"TimeDelimiter", L"AMPMFormat", L"CaptionWidth", L"Enabled"})
        EXPECT_EQ(1, std::ranges::count(log->keys, key)) << key;
    EXPECT_EQ(0, std::ranges::count(log->keys, L"Caption"));
}

TEST_F(ShowMembers, ADesignersPropertyListShowsTheNamesOfModesAndBorders) {
    Place(false);
    const auto browsing = As<IPerPropertyBrowsing>();
    struct Case {
        DISPID id;
        const wchar_t* name;
        int value;
        const wchar_t* text;
    };
    for (const Case& c : {Case{16, L"Mode", 1, L"1 - sdtShowDateOnly"}, Case{16, L"Mode", 2, L"2 - sdtShowTimeOnly"},
                          Case{DISPID_BORDERSTYLE, L"BorderStyle", 0, L"0 - sdtNone"},
                          Case{DISPID_BORDERSTYLE, L"BorderStyle", 1, L"1 - sdtSunken"}}) {
        Put(c.name, c.value);
        comkit::Bstr text;
        EXPECT_EQ(S_OK, browsing->GetDisplayString(c.id, text.Put()));
        EXPECT_EQ(std::wstring(c.text), comkit::ToWide(text.View()));
        CALPOLESTR texts{};
        CADWORD cookies{};
        EXPECT_EQ(S_OK, browsing->GetPredefinedStrings(c.id, &texts, &cookies));
        EXPECT_EQ(2u, texts.cElems);
        for (ULONG i = 0; i < texts.cElems; ++i) CoTaskMemFree(texts.pElems[i]);
        CoTaskMemFree(texts.pElems);
        CoTaskMemFree(cookies.pElems);
    }
    CLSID page{};
    EXPECT_EQ(S_OK, browsing->MapPropertyToPage(DISPID_FONT, &page));
    EXPECT_TRUE(IsEqualCLSID(CLSID_CFontPropPage, page));
    EXPECT_EQ(S_OK, browsing->MapPropertyToPage(DISPID_BACKCOLOR, &page));
    EXPECT_TRUE(IsEqualCLSID(CLSID_CColorPropPage, page));
}

TEST_F(ShowMembers, TheDesignerSeesThePcsClock) {
    Place(false);
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    std::wstring shown;
    do {
        GetLocalTime(&before);
        Put(L"ShowCentury", true);
        shown = TextOf(L"Value");
        GetLocalTime(&after);
    } while (before.wDay != after.wDay);
    wchar_t expected[40] = L"";
    GetDateFormatW(LOCALE_USER_DEFAULT, 0, &before, L"MMM'-'dd'-'yyyy", expected, 40);
    CharUpperW(expected);
    EXPECT_EQ(std::wstring(expected), shown);
}

TEST_F(ShowMembers, AControlThatNobodyInitialisedShowsItsDefaults) {
    control = Server::Get().CreateControl(tested.clsid);
    dispatch = As<IDispatch>();
    EXPECT_EQ(L"JAN-01-2000", TextOf(L"Value"));
    EXPECT_EQ(L"2445", TextOf(L"CaptionWidth"));
    SIZEL extent{};
    EXPECT_EQ(S_OK, As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent));
    EXPECT_NEAR(4890 * 2540 / 1440.0, extent.cx, 1);
    EXPECT_NEAR(195 * 2540 / 1440.0, extent.cy, 1);
}

}  // namespace
}  // namespace component
