// The eight property pages, edited by window messages and applied to living controls.
#include <olectl.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "PageFixture.h"

namespace component {
namespace {

using kiv::PageId;

class PropertyPages : public PageFixture {
protected:
    HRESULT ApplyWords(std::u16string& words) const {
        SetErrorInfo(0, nullptr);
        const HRESULT hr = page->Apply();
        comkit::ComPtr<IErrorInfo> info;
        comkit::Bstr text;
        if (GetErrorInfo(0, info.Put()) == S_OK) info->GetDescription(text.Put());
        words = text.View();
        return hr;
    }
};

TEST_F(PropertyPages, GeneralOfTheSetControl) {
    set.Put(L"Caption", L"Clock");
    Open(PageId::SetDT_General, {set.object.Get()});
    EXPECT_EQ(L"Clock", TextOf(u"txtCaption"));
    EXPECT_EQ(L"495", TextOf(u"txtNumeric(0)"));
    EXPECT_FALSE(IsDirty());
    Type(u"txtCaption", L"Device clock");
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(std::vector<DWORD>{PROPPAGESTATUS_DIRTY}, site->statuses);
    Type(u"txtNumeric(0)", L"6a0.0");  // letter and point are swallowed
    EXPECT_EQ(L"600", TextOf(u"txtNumeric(0)"));
    Type(u"txtNumeric(1)", L"2010");
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_FALSE(IsDirty());
    EXPECT_EQ(L"Device clock", set.Text(L"Caption"));
    EXPECT_EQ(L"600", set.Text(L"TimeHeight"));
    EXPECT_EQ(L"2010", set.Text(L"TimeWidth"));

    Select({set.object.Get(), otherSet.object.Get()});
    EXPECT_EQ(L"", TextOf(u"txtCaption"));
    EXPECT_FALSE(IsEnabled(u"txtCaption"));
    EXPECT_FALSE(IsEnabled(u"lblCaption"));
    Type(u"txtNumeric(0)", L"660");
    EXPECT_EQ(S_OK, page->Apply());
    for (const DesignedControl* each : {&set, &otherSet}) EXPECT_EQ(L"660", each->Text(L"TimeHeight"));
    EXPECT_EQ(L"Device clock", set.Text(L"Caption"));
    EXPECT_EQ(L"Set Date/Time", otherSet.Text(L"Caption"));
}

TEST_F(PropertyPages, OptionsOfTheSetControl) {
    Open(PageId::SetDT_Options, {set.object.Get(), otherSet.object.Get()});
    EXPECT_TRUE(IsChecked(u"optMode(0)"));
    EXPECT_EQ(L"Set &Time Only", TextOf(u"optMode(2)"));
    Click(u"optMode(1)");
    EXPECT_FALSE(IsChecked(u"optMode(0)"));
    EXPECT_TRUE(IsEnabled(u"cboStartOfWeek"));
    EXPECT_FALSE(IsEnabled(u"chkShowDST"));
    EXPECT_FALSE(IsEnabled(u"fraOptions(3)"));
    Click(u"optMode(2)");
    EXPECT_FALSE(IsEnabled(u"cboStartOfWeek"));
    EXPECT_TRUE(IsEnabled(u"chkShowDST"));
    Click(u"chkShowDST");
    Click(u"chkShowSeconds");
    Click(u"optMode(0)");
    Click(u"chkUsePCDateTime");
    Click(u"chkShowToday");
    Pick(u"cboStartOfWeek", 6);
    Click(u"optMode(2)");
    EXPECT_EQ(S_OK, page->Apply());
    for (const DesignedControl* each : {&set, &otherSet}) {
        EXPECT_EQ(L"2", each->Text(L"Mode"));
        EXPECT_EQ(L"False", each->Text(L"UsePCDateTime"));
        EXPECT_EQ(L"False", each->Text(L"ShowToday"));
        EXPECT_EQ(L"7", each->Text(L"StartOfWeek"));
        EXPECT_EQ(L"False", each->Text(L"ShowDST"));
        EXPECT_EQ(L"True", each->Text(L"ShowSeconds"));
    }
}

TEST_F(PropertyPages, DataElementsOfTheSetControl) {
    set.Put(L"DataElementPath", 3, L"old");
    Open(PageId::SetDT_VexaData, {set.object.Get(), otherSet.object.Get()});
    EXPECT_EQ(14, SendMessageW(Field(u"cboDataObject"), CB_GETCOUNT, 0, 0));
    Pick(u"cboDataObject", 3);
    EXPECT_EQ(L"Get Current Minute", TextOf(u"fraProperties"));
    EXPECT_EQ(L"Data&VariableName ( 3 ) :", TextOf(u"lblHeader(1)"));
    EXPECT_EQ(L"old", TextOf(u"txtDataElementPath"));
    EXPECT_FALSE(IsDirty());
    Type(u"txtDataLMObject", L"-12");
    Type(u"txtDataVariableName", L"nvoMinute");
    Type(u"txtDataElementPath", L"");
    EXPECT_EQ(1, Selected(u"cboDataType"));
    Pick(u"cboDataType", 3);
    Pick(u"cboDataObject", 13);
    EXPECT_EQ(L" Set Current Year", TextOf(u"fraProperties"));
    Type(u"txtDataElementPath", L"year");
    Pick(u"cboDataObject", 3);
    EXPECT_EQ(L"-12", TextOf(u"txtDataLMObject"));
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"-12", set.Text(L"DataLMObject", 3));
    EXPECT_EQ(L"nvoMinute", set.Text(L"DataVariableName", 3));
    EXPECT_EQ(L"", set.Text(L"DataElementPath", 3));
    EXPECT_EQ(L"3", set.Text(L"DataType", 3));
    EXPECT_EQ(L"year", set.Text(L"DataElementPath", 13));
    EXPECT_EQ(L"", otherSet.Text(L"DataVariableName", 3));  // the first control only
}

TEST_F(PropertyPages, ValuesOfBothControls) {
    Open(PageId::DT_VexaValues, {show.object.Get(), otherShow.object.Get()});
    EXPECT_EQ(L"1", TextOf(u"txtValue(2)"));
    Type(u"txtValue(0)", L"10");
    Type(u"txtValue(1)", L"11");
    Type(u"txtValue(2)", L"12");
    Type(u"txtValue(3)", L"13");
    EXPECT_EQ(S_OK, page->Apply());
    for (const DesignedControl* each : {&show, &otherShow}) {
        EXPECT_EQ(L"10", each->Text(L"Data12HrValue"));
        EXPECT_EQ(L"11", each->Text(L"Data24HrValue"));
        EXPECT_EQ(L"12", each->Text(L"DataDMYValue"));
        EXPECT_EQ(L"13", each->Text(L"DataMDYValue"));
    }
    Select({show.object.Get(), set.object.Get()});
    EXPECT_FALSE(IsEnabled(u"txtValue(2)"));
    EXPECT_FALSE(IsEnabled(u"lblValue(3)"));
    Type(u"txtValue(1)", L"21");
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"21", show.Text(L"Data24HrValue"));
    EXPECT_EQ(L"21", set.Text(L"Data24HrValue"));
}

TEST_F(PropertyPages, GeneralOfTheShowControl) {
    Open(PageId::ShowDT_General, {show.object.Get()});
    EXPECT_EQ(L"&BorderStyle:  (Value Field Only)", TextOf(u"lblBorderStyle"));
    Type(u"txtCaption", L"It is");
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"It is", show.Text(L"Caption"));
    Select({show.object.Get(), otherShow.object.Get()});
    EXPECT_EQ(L"&BorderStyle:  (Value Field Only)  (Value Field Only)", TextOf(u"lblBorderStyle"));
    Type(u"txtNumeric(0)", L"400");
    Type(u"txtNumeric(1)", L"3000");
    Click(u"chkLockCaptionWidth");
    Pick(u"cboBorderStyle", 1);
    Type(u"txtNumeric(2)", L"420");
    Type(u"txtNumeric(3)", L"3100");
    Click(u"chkLockValueWidth");
    EXPECT_EQ(S_OK, page->Apply());
    for (const DesignedControl* each : {&show, &otherShow}) {
        EXPECT_EQ(L"420", each->Text(L"CaptionHeight"));  // both labels are as high as the one set last
        EXPECT_EQ(L"3000", each->Text(L"CaptionWidth"));
        EXPECT_EQ(L"True", each->Text(L"LockCaptionWidth"));
        EXPECT_EQ(L"1", each->Text(L"BorderStyle"));
        EXPECT_EQ(L"420", each->Text(L"ValueHeight"));
        EXPECT_EQ(L"3100", each->Text(L"ValueWidth"));
        EXPECT_EQ(L"True", each->Text(L"LockValueWidth"));
    }
    EXPECT_EQ(L"It is", show.Text(L"Caption"));
}

TEST_F(PropertyPages, OptionsOfTheShowControl) {
    Open(PageId::ShowDT_Options, {show.object.Get(), otherShow.object.Get()});
    Click(u"optMode(1)");
    Click(u"chkShowLeadingZeros");
    Click(u"chkUpperCase");
    Type(u"txtDateDelimiter", L"/");
    Click(u"chkShowCentury");
    Type(u"txtTimeDelimiter", L".");
    Type(u"txtAMPMFormat", L"am,pm");
    Click(u"chkShowSeconds");
    EXPECT_EQ(S_OK, page->Apply());
    for (const DesignedControl* each : {&show, &otherShow}) {
        EXPECT_EQ(L"2", each->Text(L"Mode"));
        EXPECT_EQ(L"False", each->Text(L"ShowLeadingZeros"));
        EXPECT_EQ(L"False", each->Text(L"UpperCase"));
        EXPECT_EQ(L"/", each->Text(L"DateDelimiter"));
        EXPECT_EQ(L"False", each->Text(L"ShowCentury"));
        EXPECT_EQ(L".", each->Text(L"TimeDelimiter"));
        EXPECT_EQ(L"am,pm", each->Text(L"AMPMFormat"));
        EXPECT_EQ(L"True", each->Text(L"ShowSeconds"));
    }

    Type(u"txtAMPMFormat", L"noon");
    Click(u"chkShowSeconds");
    std::u16string words;
    EXPECT_EQ(static_cast<HRESULT>(0x800A0146), ApplyWords(words));
    EXPECT_EQ(u"Resource with identifier '1100' not found", words);
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(L"am,pm", show.Text(L"AMPMFormat"));
    EXPECT_EQ(L"True", show.Text(L"ShowSeconds"));
    Type(u"txtAMPMFormat", L"a,p");
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"a,p", otherShow.Text(L"AMPMFormat"));
    EXPECT_EQ(L"False", otherShow.Text(L"ShowSeconds"));
}

TEST_F(PropertyPages, DataElementsOfTheShowControl) {
    show.Put(L"DataVariableName", 2, L"nvoMinute");
    Open(PageId::ShowDT_VexaData, {show.object.Get(), otherShow.object.Get()});
    EXPECT_EQ(7, SendMessageW(Field(u"cboDataObject"), CB_GETCOUNT, 0, 0));
    Type(u"txtDataLMObject", L"1");
    Type(u"txtDataVariableName", L"nciFormat");
    Pick(u"cboDataType", 2);
    Type(u"txtDataElementPath", L"format");
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"1", show.Text(L"DataLMObject", 0));
    EXPECT_EQ(L"nciFormat", show.Text(L"DataVariableName", 0));
    EXPECT_EQ(L"2", show.Text(L"DataType", 0));
    EXPECT_EQ(L"format", show.Text(L"DataElementPath", 0));
    EXPECT_EQ(L"", otherShow.Text(L"DataElementPath", 0));

    Pick(u"cboDataObject", 2);
    Type(u"txtDataVariableName", L"");
    std::u16string words;
    EXPECT_EQ(static_cast<HRESULT>(0x800A0146), ApplyWords(words));
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(L"nvoMinute", show.Text(L"DataVariableName", 2));
    Pick(u"cboDataObject", 0);
    Type(u"txtDataVariableName", L"");
    Pick(u"cboDataObject", 2);
    Type(u"txtDataVariableName", L"nvoMin");
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"", show.Text(L"DataVariableName", 0));
    EXPECT_EQ(L"nvoMin", show.Text(L"DataVariableName", 2));
}

TEST_F(PropertyPages, PrototypeFormatsOfTheShowControl) {
    show.Put(L"DataDMYValue", 31);
    otherShow.Put(L"DataDMYValue", 41);
    otherShow.Put(L"Data24HrValue", 43);
    Open(PageId::ShowDT_ProtoValues, {show.object.Get(), otherShow.object.Get()});
    EXPECT_TRUE(IsChecked(u"optDateFormat(0)"));
    EXPECT_EQ(L"24-Hour Format", TextOf(u"optTimeFormat(1)"));
    Click(u"optDateFormat(1)");
    Click(u"optTimeFormat(1)");
    EXPECT_TRUE(IsChecked(u"optDateFormat(1)"));
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"31", show.Text(L"DateFormat"));
    EXPECT_EQ(L"1", show.Text(L"TimeFormat"));
    EXPECT_EQ(L"41", otherShow.Text(L"DateFormat"));
    EXPECT_EQ(L"43", otherShow.Text(L"TimeFormat"));
}

TEST_F(PropertyPages, KeepTheirEditsWhileTheyHaveNoWindow) {
    PROPPAGEINFO info{};
    info.cb = sizeof(info);
    Open(PageId::SetDT_General, {set.object.Get()});
    Type(u"txtNumeric(0)", L"720");
    EXPECT_EQ(S_OK, page->Deactivate());
    EXPECT_EQ(E_UNEXPECTED, page->Deactivate());
    EXPECT_EQ(E_UNEXPECTED, page->Show(SW_SHOW));
    EXPECT_TRUE(IsDirty());
    const RECT place{0, 0, 300, 200};
    ASSERT_EQ(S_OK, page->Activate(frame.Get(), &place, FALSE));
    EXPECT_EQ(E_UNEXPECTED, page->Activate(frame.Get(), &place, FALSE));
    ASSERT_EQ(S_OK, page->Show(SW_SHOW));
    EXPECT_EQ(L"720", TextOf(u"txtNumeric(0)"));
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"720", set.Text(L"TimeHeight"));

    const RECT moved{5, 6, 405, 306};
    EXPECT_EQ(S_OK, page->Move(&moved));
    RECT client{};
    GetClientRect(PageWindow(), &client);
    EXPECT_EQ(400, client.right);
    EXPECT_EQ(E_INVALIDARG, page->Show(SW_MAXIMIZE));
    EXPECT_EQ(S_OK, page->Show(SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(PageWindow()));
    EXPECT_EQ(E_NOTIMPL, page->Help(L""));
    EXPECT_EQ(E_POINTER, page->Activate(frame.Get(), nullptr, FALSE));
    EXPECT_EQ(E_POINTER, page->SetObjects(1, nullptr));
    EXPECT_EQ(E_POINTER, page->GetPageInfo(nullptr));
}

TEST_F(PropertyPages, TellTheirTitleAndTheSizeThatTheirWindowNeeds) {
    const wchar_t* const titles[] = {L"General", L"Options", L"Vexa Data", L"Vexa Values",
                                     L"General", L"Options", L"Vexa Data", L"Proto Values"};
    for (int i = 0; i < 8; ++i) {
        Open(static_cast<PageId>(i), {set.object.Get()});
        PROPPAGEINFO info{};
        info.cb = sizeof(info);
        ASSERT_EQ(S_OK, page->GetPageInfo(&info));
        EXPECT_STREQ(titles[i], info.pszTitle);
        CoTaskMemFree(info.pszTitle);
        RECT needed{0, 0, kiv::PageWidth, kiv::PageHeight};
        MapDialogRect(PageWindow(), &needed);
        EXPECT_EQ(needed.right, info.size.cx);
        EXPECT_EQ(needed.bottom, info.size.cy);
    }
}

TEST_F(PropertyPages, LiveWithControlsThatAreGoneStrangersOrNothing) {
    const auto stranger = comkit::MakeObject<PageSite>();
    for (int i = 0; i < 8; ++i) {
        Open(static_cast<PageId>(i), {stranger.Get(), nullptr, set.object.Get(), show.object.Get()});
        EXPECT_FALSE(IsDirty()) << i;
    }
    // A control that its container has closed and let go is the page's alone now.
    auto vanishing = std::make_unique<DesignedControl>(SetClass);
    Open(PageId::SetDT_Options, {vanishing->object.Get(), nullptr, show.object.Get(), set.object.Get()});
    vanishing.reset();
    Pick(u"cboStartOfWeek", 2);
    Click(u"chkShowSeconds");
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"3", set.Text(L"StartOfWeek"));
    EXPECT_EQ(L"True", set.Text(L"ShowSeconds"));
    EXPECT_EQ(L"False", show.Text(L"ShowSeconds"));

    // In run mode the control refuses what its author decides; the rest is written.
    set.site->userMode = true;
    comkit::ComPtr<IOleControl>::From(set.object.Get())->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE);
    Select({set.object.Get()});
    Click(u"optMode(1)");
    Pick(u"cboStartOfWeek", 4);
    EXPECT_EQ(S_OK, page->Apply());
    EXPECT_EQ(L"0", set.Text(L"Mode"));
    EXPECT_EQ(L"5", set.Text(L"StartOfWeek"));
}

TEST_F(PropertyPages, LiveThroughAFrameThatEndsThemFromWithinAnEdit) {
    Open(PageId::ShowDT_Options, {show.object.Get()});
    bool ended = false;
    site->onStatus = [&] {
        if (!std::exchange(ended, true)) Close();
    };
    Click(u"chkUpperCase");
    EXPECT_TRUE(ended);
    EXPECT_EQ(nullptr, PageWindow());
    site->onStatus = nullptr;
    Open(PageId::ShowDT_Options, {show.object.Get()});
    EXPECT_TRUE(IsChecked(u"chkUpperCase"));
}

TEST_F(PropertyPages, TakeTheirOwnKeysAndLeaveTheFramesToIt) {
    Open(PageId::SetDT_General, {set.object.Get()});
    SetFocus(Field(u"txtCaption"));
    EXPECT_TRUE(Key(VK_TAB));
    EXPECT_EQ(Field(u"txtNumeric(0)"), GetFocus());
    EXPECT_TRUE(Key(VK_TAB));
    EXPECT_EQ(Field(u"txtNumeric(1)"), GetFocus());
    EXPECT_FALSE(Key(VK_TAB));  // past the last field
    EXPECT_EQ(Field(u"txtNumeric(1)"), GetFocus());
    EXPECT_FALSE(Key(VK_RETURN));
    EXPECT_FALSE(Key(VK_ESCAPE));
    EXPECT_EQ((std::vector<UINT>{VK_TAB, VK_RETURN, VK_ESCAPE}), site->keys);
    EXPECT_TRUE(Key(L'c', WM_SYSCHAR));
    EXPECT_EQ(Field(u"txtCaption"), GetFocus());
    EXPECT_FALSE(Key(L'q', WM_SYSCHAR));
}

TEST_F(PropertyPages, PutTheFocusOnTheFieldOfAProperty) {
    Open(PageId::ShowDT_General, {show.object.Get()});
    const auto idOf = [&](const wchar_t* name) { return comkit::DispIdOf(*show.members, name); };
    EXPECT_EQ(S_OK, page->EditProperty(idOf(L"ValueWidth")));
    EXPECT_EQ(Field(u"txtNumeric(3)"), GetFocus());
    EXPECT_EQ(E_INVALIDARG, page->EditProperty(idOf(L"DateFormat")));
    EXPECT_EQ(E_INVALIDARG, page->EditProperty(4711));
    page->Deactivate();
    EXPECT_EQ(S_OK, page->EditProperty(idOf(L"BorderStyle")));
    const RECT place{0, 0, 300, 200};
    page->Activate(frame.Get(), &place, FALSE);
    page->Show(SW_SHOW);
    EXPECT_EQ(Field(u"cboBorderStyle"), GetFocus());
}

TEST_F(PropertyPages, AreThoseThatTheirControlsName) {
    const struct {
        const DesignedControl& control;
        std::vector<PageId> own;
    } cases[] = {
        {set, {PageId::SetDT_General, PageId::SetDT_Options, PageId::SetDT_VexaData, PageId::DT_VexaValues}},
        {show,
         {PageId::ShowDT_General, PageId::ShowDT_Options, PageId::ShowDT_VexaData, PageId::DT_VexaValues,
          PageId::ShowDT_ProtoValues}},
    };
    for (const auto& c : cases) {
        CAUUID pages{};
        ASSERT_EQ(S_OK, comkit::ComPtr<ISpecifyPropertyPages>::From(c.control.object.Get())->GetPages(&pages));
        const std::vector<GUID> list(pages.pElems, pages.pElems + pages.cElems);
        CoTaskMemFree(pages.pElems);
        ASSERT_EQ(c.own.size() + 2, list.size());
        for (std::size_t i = 0; i < c.own.size(); ++i) {
            EXPECT_TRUE(IsEqualGUID(ClassOfPage(c.own[i]), list[i]));
            EXPECT_TRUE(MakePage(list[i]));
        }
        for (const CLSID& stock : {CLSID_CFontPropPage, CLSID_CColorPropPage})
            EXPECT_EQ(1, std::ranges::count_if(list, [&](const GUID& each) { return IsEqualGUID(each, stock); }));
    }
    const auto pageOf = [](const DesignedControl& control, const wchar_t* property) {
        CLSID found{};
        comkit::ComPtr<IPerPropertyBrowsing>::From(control.object.Get())
            ->MapPropertyToPage(comkit::DispIdOf(*control.members, property), &found);
        return found;
    };
    EXPECT_TRUE(IsEqualCLSID(ClassOfPage(PageId::SetDT_Options), pageOf(set, L"Mode")));
    EXPECT_TRUE(IsEqualCLSID(ClassOfPage(PageId::SetDT_VexaData), pageOf(set, L"DataElementPath")));
    EXPECT_TRUE(IsEqualCLSID(ClassOfPage(PageId::ShowDT_ProtoValues), pageOf(show, L"DateFormat")));
    EXPECT_TRUE(IsEqualCLSID(CLSID_CColorPropPage, pageOf(show, L"BackColor")));
    EXPECT_TRUE(IsEqualCLSID(CLSID_NULL, pageOf(show, L"ShowLongDay")));
}

}  // namespace
}  // namespace component
