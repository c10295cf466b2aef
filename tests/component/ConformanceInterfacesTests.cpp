// QueryInterface and out-pointers: what every client takes for granted.
#include <algorithm>
#include <functional>

#include "ControlFixture.h"
#include "server/TypeDescriptions.h"

namespace component {
namespace {

using comkit::ComPtr;

struct NamedInterface {
    const char* name;
    const IID& iid;
};

const NamedInterface OfferedByBoth[] = {{"IUnknown", IID_IUnknown},
                                        {"IDispatch", IID_IDispatch},
                                        {"IOleObject", IID_IOleObject},
                                        {"IOleWindow", IID_IOleWindow},
                                        {"IOleInPlaceObject", IID_IOleInPlaceObject},
                                        {"IOleInPlaceActiveObject", IID_IOleInPlaceActiveObject},
                                        {"IOleControl", IID_IOleControl},
                                        {"IViewObject", IID_IViewObject},
                                        {"IViewObject2", IID_IViewObject2},
                                        {"IViewObjectEx", IID_IViewObjectEx},
                                        {"IDataObject", IID_IDataObject},
                                        {"IPersist", IID_IPersist},
                                        {"IPersistStream", IID_IPersistStream},
                                        {"IPersistStreamInit", IID_IPersistStreamInit},
                                        {"IPersistPropertyBag", IID_IPersistPropertyBag},
                                        {"IPersistStorage", IID_IPersistStorage},
                                        {"IConnectionPointContainer", IID_IConnectionPointContainer},
                                        {"IProvideClassInfo", IID_IProvideClassInfo},
                                        {"IProvideClassInfo2", IID_IProvideClassInfo2},
                                        {"ISupportErrorInfo", IID_ISupportErrorInfo},
                                        {"IPerPropertyBrowsing", IID_IPerPropertyBrowsing},
                                        {"ISpecifyPropertyPages", IID_ISpecifyPropertyPages},
                                        {"IQuickActivate", IID_IQuickActivate}};

class Interfaces : public BothControls {
protected:
    std::vector<NamedInterface> Offered() const {
        std::vector<NamedInterface> all(std::begin(OfferedByBoth), std::end(OfferedByBoth));
        all.push_back({"the control's own", tested.members});
        if (NeedsNoWindow()) all.push_back({"IOleInPlaceObjectWindowless", IID_IOleInPlaceObjectWindowless});
        return all;
    }
    bool NeedsNoWindow() const { return &tested == &ShowClass; }
};

TEST_P(Interfaces, EachIsReachedFromEachOther) {
    Place(false);
    for (const NamedInterface& from : Offered()) {
        ComPtr<IUnknown> first;
        ASSERT_EQ(S_OK, control->QueryInterface(from.iid, first.PutVoid())) << from.name;
        for (const NamedInterface& to : Offered()) {
            SCOPED_TRACE(testing::Message() << from.name << " -> " << to.name);
            ComPtr<IUnknown> second;
            ASSERT_EQ(S_OK, first->QueryInterface(to.iid, second.PutVoid()));
            // Asked twice, the same answer; and back to the one identity.
            ComPtr<IUnknown> again;
            EXPECT_EQ(S_OK, first->QueryInterface(to.iid, again.PutVoid()));
            EXPECT_EQ(second.Get(), again.Get());
            ComPtr<IUnknown> identity;
            EXPECT_EQ(S_OK, second->QueryInterface(IID_IUnknown, identity.PutVoid()));
            EXPECT_EQ(control.Get(), identity.Get());
        }
    }
}

TEST_P(Interfaces, WhatIsNotOfferedIsRefusedFromAllOfThemWithTheOutPointerNulled) {
    Place(false);
    std::vector<NamedInterface> refused = {
        {"IStream", IID_IStream},
        {"IClassFactory", IID_IClassFactory},
        {"the other control's", NeedsNoWindow() ? SetClass.members : ShowClass.members},
        {"IPropertyPage", IID_IPropertyPage},
        // It writes a device's clock and the machine's registry.
        {"IObjectSafety", {0xCB5BDC81, 0x93C1, 0x11CF, {0x8F, 0x20, 0x00, 0x80, 0x5F, 0x2C, 0xD0, 0x64}}},
        {"IUnknown spelled wrong", {0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x47}}}};
    if (!NeedsNoWindow()) refused.push_back({"IOleInPlaceObjectWindowless", IID_IOleInPlaceObjectWindowless});
    for (const NamedInterface& from : Offered()) {
        ComPtr<IUnknown> first;
        ASSERT_EQ(S_OK, control->QueryInterface(from.iid, first.PutVoid()));
        for (const NamedInterface& wrong : refused) {
            SCOPED_TRACE(testing::Message() << from.name << " -> " << wrong.name);
            void* out = &out;
            EXPECT_EQ(E_NOINTERFACE, first->QueryInterface(wrong.iid, &out));
            EXPECT_EQ(nullptr, out);
        }
        EXPECT_EQ(E_POINTER, first->QueryInterface(from.iid, nullptr)) << from.name;
    }
}

TEST_P(Interfaces, ReferencesTakenThroughAnyOfThemAreTheObjectsOwn) {
    Place(false);
    control->AddRef();
    const ULONG before = control->Release();
    for (const NamedInterface& one : Offered()) {
        ComPtr<IUnknown> found;
        ASSERT_EQ(S_OK, control->QueryInterface(one.iid, found.PutVoid()));
        EXPECT_EQ(before + 2, found->AddRef()) << one.name;
        EXPECT_EQ(before + 1, found->Release()) << one.name;
    }
    control->AddRef();
    EXPECT_EQ(before, control->Release());
}

/// Each call hands out a pointer and cannot succeed in the state that it meets: unsited, inactive.
TEST_P(Interfaces, OutPointersAreNulledWhereACallFails) {
    control = Server::Get().CreateControl(tested.clsid);
    dispatch = As<IDispatch>();
    void* const poison = this;
    struct Case {
        const char* name;
        std::function<HRESULT(void**)> call;
    };
    const Case cases[] = {
        {"IOleObject::GetMoniker",
         [&](void** out) {
             return As<IOleObject>()->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL,
                                                 reinterpret_cast<IMoniker**>(out));
         }},
        {"IOleObject::GetClipboardData",
         [&](void** out) { return As<IOleObject>()->GetClipboardData(0, reinterpret_cast<IDataObject**>(out)); }},
        {"IOleObject::EnumAdvise",
         [&](void** out) { return As<IOleObject>()->EnumAdvise(reinterpret_cast<IEnumSTATDATA**>(out)); }},
        {"IOleWindow::GetWindow",
         [&](void** out) { return As<IOleInPlaceObject>()->GetWindow(reinterpret_cast<HWND*>(out)); }},
        {"IConnectionPointContainer::FindConnectionPoint",
         [&](void** out) {
             return As<IConnectionPointContainer>()->FindConnectionPoint(IID_IAdviseSink,
                                                                         reinterpret_cast<IConnectionPoint**>(out));
         }},
        {"IDispatch::GetTypeInfo",
         [&](void** out) { return dispatch->GetTypeInfo(1, 0, reinterpret_cast<ITypeInfo**>(out)); }},
        {"IDataObject::EnumFormatEtc",
         [&](void** out) {
             return As<IDataObject>()->EnumFormatEtc(DATADIR_SET, reinterpret_cast<IEnumFORMATETC**>(out));
         }},
        {"IDataObject::EnumDAdvise",
         [&](void** out) { return As<IDataObject>()->EnumDAdvise(reinterpret_cast<IEnumSTATDATA**>(out)); }},
        {"IPerPropertyBrowsing::GetDisplayString",
         [&](void** out) { return As<IPerPropertyBrowsing>()->GetDisplayString(4711, reinterpret_cast<BSTR*>(out)); }},
    };
    for (const Case& c : cases) {
        void* out = poison;
        EXPECT_TRUE(FAILED(c.call(&out))) << c.name;
        EXPECT_EQ(nullptr, out) << c.name;
        EXPECT_TRUE(FAILED(c.call(nullptr))) << c.name << " without anywhere to put the answer";
    }
}

TEST_P(Interfaces, ErrorInformationIsPromisedForTheDualInterfaceOnly) {
    Place(false);
    const auto support = As<ISupportErrorInfo>();
    EXPECT_EQ(S_OK, support->InterfaceSupportsErrorInfo(tested.members));
    EXPECT_EQ(S_FALSE, support->InterfaceSupportsErrorInfo(IID_IOleObject));
    GUID id{};
    EXPECT_EQ(E_INVALIDARG, As<IProvideClassInfo2>()->GetGUID(99, &id));
    EXPECT_TRUE(IsEqualGUID(GUID_NULL, id));
    EXPECT_EQ(S_OK, As<IProvideClassInfo2>()->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id));
    EXPECT_TRUE(IsEqualGUID(tested.events, id));
}

TEST_P(Interfaces, NamesAreFoundInAnyCaseWithTheirParametersAsTheTypeInformationHasThem) {
    Place(false);
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(S_OK, dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Put()));
    const kiv::server::TypeAttributes attributes(*type);
    int members = 0;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        const kiv::server::FunctionDescription function(*type, i);
        comkit::Bstr names[4];
        BSTR given[4] = {};
        UINT count = 0;
        ASSERT_EQ(S_OK, type->GetNames(function->memid, given, 4, &count));
        for (UINT k = 0; k < count; ++k) *names[k].Put() = given[k];
        if (function->memid >= 0x60000000) continue;  // of IDispatch itself
        ++members;
        SCOPED_TRACE(testing::PrintToString(std::wstring(names[0].Get())));
        std::wstring name = names[0].Get();
        const auto find = [&] {
            LPOLESTR text = name.data();
            DISPID id = 4711;
            EXPECT_EQ(S_OK, dispatch->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id));
            return id;
        };
        EXPECT_EQ(function->memid, find());
        CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
        EXPECT_EQ(function->memid, find());
        CharLowerBuffW(name.data(), static_cast<DWORD>(name.size()));
        EXPECT_EQ(function->memid, find());
        DISPID ids[4] = {4711, 4711, 4711, 4711};
        ASSERT_EQ(S_OK, dispatch->GetIDsOfNames(IID_NULL, given, count, LOCALE_USER_DEFAULT, ids));
        EXPECT_EQ(function->memid, ids[0]);
        for (UINT k = 1; k < count; ++k) EXPECT_EQ(static_cast<DISPID>(k - 1), ids[k]);
    }
    EXPECT_GT(members, 50);
}

INSTANTIATE_TEST_SUITE_P(OfEitherControl, Interfaces, EitherControl(), NameOfControl);

}  // namespace
}  // namespace component
