// What a designer's property list asks: names of enumerated values, pages of properties.
#include <olectl.h>

#include <string>
#include <vector>

#include "ControlFixture.h"

namespace component {
namespace {

constexpr DISPID Mode = 12;
constexpr DISPID StartOfWeek = 16;
constexpr DISPID DataType = 26;
constexpr DISPID Font = 10;
constexpr DISPID Nothing = 4711;

/// Texts and cookies that belong to the caller.
struct Predefined {
    CALPOLESTR texts{};
    CADWORD cookies{};
    ~Predefined() {
        for (ULONG i = 0; i < texts.cElems; ++i) CoTaskMemFree(texts.pElems[i]);
        CoTaskMemFree(texts.pElems);
        CoTaskMemFree(cookies.pElems);
    }
};

class Browsing : public ControlFixture {
protected:
    std::wstring DisplayString(DISPID id) {
        comkit::Bstr text;
        return As<IPerPropertyBrowsing>()->GetDisplayString(id, text.Put()) == S_OK
                   ? std::wstring(comkit::ToWide(text.View()))
                   : L"(none)";
    }
    CLSID Page(DISPID id, HRESULT expected) {
        CLSID page{1, 2, 3, {}};
        EXPECT_EQ(expected, As<IPerPropertyBrowsing>()->MapPropertyToPage(id, &page)) << id;
        return page;
    }
};

TEST_F(Browsing, EnumeratedValuesAreShownByName) {
    Place(false);
    EXPECT_EQ(L"0 - sdtSetDateTime", DisplayString(Mode));
    EXPECT_EQ(L"1 - mvwSunday", DisplayString(StartOfWeek));
    Put(L"Mode", 2);
    Put(L"StartOfWeek", 7);
    EXPECT_EQ(L"2 - sdtSetTimeOnly", DisplayString(Mode));
    EXPECT_EQ(L"7 - mvwSaturday", DisplayString(StartOfWeek));
    for (const DISPID plain : std::initializer_list<DISPID>{1, DISPID_CAPTION, 18, DataType})
        EXPECT_EQ(L"(none)", DisplayString(plain)) << plain;
    comkit::Bstr text;
    EXPECT_EQ(S_FALSE, As<IPerPropertyBrowsing>()->GetDisplayString(1, text.Put()));
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, As<IPerPropertyBrowsing>()->GetDisplayString(Nothing, text.Put()));
}

TEST_F(Browsing, PredefinedTextsComeWithTheValuesThatTheyStandFor) {
    struct Case {
        DISPID property;
        std::vector<std::wstring> texts;
        LONG first;
    };
    const Case cases[] = {
        {Mode, {L"0 - sdtSetDateTime", L"1 - sdtSetDateOnly", L"2 - sdtSetTimeOnly"}, 0},
        {StartOfWeek,
         {L"1 - mvwSunday", L"2 - mvwMonday", L"3 - mvwTuesday", L"4 - mvwWednesday", L"5 - mvwThursday",
          L"6 - mvwFriday", L"7 - mvwSaturday"},
         1},
        {DataType,
         {L"0 - nvi_NetworkVariableInput", L"1 - nvo_NetworkVariableOutput", L"2 - nci_NVConfigurationProperty",
          L"3 - nci_CPConfigurationProperty"},
         0},
    };
    Place(false);
    const auto browsing = As<IPerPropertyBrowsing>();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.property);
        Predefined list;
        ASSERT_EQ(S_OK, browsing->GetPredefinedStrings(c.property, &list.texts, &list.cookies));
        ASSERT_EQ(c.texts.size(), list.texts.cElems);
        ASSERT_EQ(c.texts.size(), list.cookies.cElems);
        for (ULONG i = 0; i < list.texts.cElems; ++i) {
            EXPECT_EQ(c.texts[i], list.texts.pElems[i]);
            comkit::Variant value;
            EXPECT_EQ(S_OK, browsing->GetPredefinedValue(c.property, list.cookies.pElems[i], value.Put()));
            EXPECT_EQ(VT_I4, value.Type());
            EXPECT_EQ(c.first + static_cast<LONG>(i), value.Get().lVal);
        }
        comkit::Variant value;
        EXPECT_EQ(E_INVALIDARG, browsing->GetPredefinedValue(c.property, 99, value.Put()));
        EXPECT_EQ(VT_EMPTY, value.Type());
    }
    Predefined none;
    EXPECT_EQ(S_FALSE, browsing->GetPredefinedStrings(DISPID_CAPTION, &none.texts, &none.cookies));
    EXPECT_EQ(0u, none.texts.cElems);
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, browsing->GetPredefinedStrings(Nothing, &none.texts, &none.cookies));
}

TEST_F(Browsing, APredefinedValueCanBePut) {
    Place(false);
    comkit::Variant value;
    ASSERT_EQ(S_OK, As<IPerPropertyBrowsing>()->GetPredefinedValue(StartOfWeek, 2, value.Put()));
    std::vector<comkit::Variant> args;
    args.push_back(std::move(value));
    EXPECT_EQ(S_OK, Invoke(Members(), L"StartOfWeek", DISPATCH_PROPERTYPUT, args).hr);
    EXPECT_EQ(L"3", TextOf(L"StartOfWeek"));
}

TEST_F(Browsing, ColoursAndTheFontHaveTheSystemsPages) {
    Place(false);
    EXPECT_TRUE(IsEqualCLSID(CLSID_CFontPropPage, Page(Font, S_OK)));
    for (const DISPID color : {1, 2, 3, 4, 5, 6, 7, 8, 9, 11})
        EXPECT_TRUE(IsEqualCLSID(CLSID_CColorPropPage, Page(color, S_OK))) << color;
    constexpr DISPID TimeFormat = 17;
    for (const DISPID other : std::initializer_list<DISPID>{DISPID_ENABLED, TimeFormat})
        EXPECT_TRUE(IsEqualCLSID(CLSID_NULL, Page(other, PERPROP_E_NOPAGEAVAILABLE)));
    EXPECT_TRUE(IsEqualCLSID(CLSID_NULL, Page(Nothing, DISP_E_MEMBERNOTFOUND)));
}

TEST_F(Browsing, ThePagesOfTheControlHoldEveryPageOfAProperty) {
    Place(false);
    CAUUID pages{};
    ASSERT_EQ(S_OK, As<ISpecifyPropertyPages>()->GetPages(&pages));
    const std::vector<GUID> list(pages.pElems, pages.pElems + pages.cElems);
    CoTaskMemFree(pages.pElems);
    for (const CLSID& wanted : {CLSID_CFontPropPage, CLSID_CColorPropPage}) {
        int count = 0;
        for (const GUID& page : list) count += IsEqualGUID(wanted, page) ? 1 : 0;
        EXPECT_EQ(1, count);
    }
    EXPECT_EQ(E_POINTER, As<ISpecifyPropertyPages>()->GetPages(nullptr));
}

}  // namespace
}  // namespace component
