// A control in a container that misbehaves, and a container's and user's whole dealings with it.
#pragma once

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ControlFixture.h"

namespace component {

class ContainerFaults : public ControlFixture {
protected:
    void Create() {
        site = comkit::MakeObject<RecordingSite>();
        control = Server::Get().CreateControl();
        dispatch = As<IDispatch>();
        site->Attach(control.Get());
    }
    /// All that a container and its user do in the life of a control. No call may crash; what each answers is the
    /// business of the others.
    void LiveThrough() {
        const comkit::ComPtr<IUnknown> alive = control;
        const auto object = As<IOleObject>();
        object->SetClientSite(site.Get());
        As<IPersistStreamInit>()->InitNew();
        Set(L"Caption", u"kept");
        Set(L"TimeWidth", 4000);
        Set(L"UsePCDateTime", false);
        DoVerb(OLEIVERB_INPLACEACTIVATE);
        DoVerb(OLEIVERB_UIACTIVATE);
        Set(L"TimeWidth", 4200);
        ClickThrough();
        CONTROLINFO info{};
        info.cb = sizeof(info);
        As<IOleControl>()->GetControlInfo(&info);
        As<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN);
        Set(L"DataVariableName(0)", 1);
        comkit::ComPtr<IMoniker> moniker;
        object->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL, moniker.Put());
        DoVerb(OLEIVERB_PROPERTIES);
        Invoke(Members(), L"DataLMObject", DISPATCH_PROPERTYGET, IndexOutOfRange());
        DoVerb(OLEIVERB_HIDE);
        DoVerb(OLEIVERB_SHOW);
        As<IOleInPlaceObject>()->UIDeactivate();
        object->Close(OLECLOSE_SAVEIFDIRTY);
        object->SetClientSite(nullptr);
    }
    /// Keys and mouse buttons that raise events with positions and ask for the container's own keys.
    void ClickThrough() {
        const HWND window = Window();
        if (!window) return;
        for (const UINT message : std::initializer_list<UINT>{WM_RBUTTONDOWN, WM_RBUTTONUP, WM_MOUSEMOVE})
            if (IsWindow(window)) SendMessageW(window, message, 0, MAKELPARAM(3, 3));
        for (int i = 0; i < 6; ++i) {
            MSG tab{GetFocus(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
            As<IOleInPlaceActiveObject>()->TranslateAccelerator(&tab);
        }
        SetFocus(site->Window());
    }
    /// A put whose failure is not this test's business.
    template <class T>
    void Set(const wchar_t* name, const T& value) {
        std::vector<comkit::Variant> args;
        args.emplace_back(value);
        Invoke(Members(), name, DISPATCH_PROPERTYPUT, args);
    }
    static std::vector<comkit::Variant> IndexOutOfRange() {
        std::vector<comkit::Variant> args;
        args.emplace_back(99);
        return args;
    }
    std::vector<std::wstring> Saved() {
        const auto bag = comkit::MakeObject<TestBag>();
        EXPECT_EQ(S_OK, As<IPersistPropertyBag>()->Save(bag.Get(), FALSE, TRUE));
        std::vector<std::wstring> lines;
        for (const auto& [key, value] : bag->entries) {
            const bool isObject = value.Type() == VT_DISPATCH || value.Type() == VT_UNKNOWN;
            lines.push_back(key + L"=" + (isObject ? std::wstring(L"(object)") : Text(value.Get())));
        }
        return lines;
    }
    void ExpectToWorkAgain() {
        const auto healthy = comkit::MakeObject<RecordingSite>();
        site->Attach(nullptr);
        site = healthy;
        site->Attach(control.Get());
        EXPECT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
        EXPECT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        EXPECT_TRUE(Child(L"SysMonthCal32"));
        EXPECT_TRUE(site->IsUiActive());
        EXPECT_EQ(S_OK, As<IOleObject>()->Close(OLECLOSE_NOSAVE));
        EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
        EXPECT_FALSE(site->IsUiActive());
        EXPECT_EQ(site->Count("OnInPlaceActivate"), site->Count("OnInPlaceDeactivate"));
        EXPECT_EQ(site->Count("OnUIActivate"), site->Count("OnUIDeactivate"));
    }
    void End() {
        Remove();
        EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "something of the control still lives";
    }
    /// Answers one callback in its own way from now on.
    void Misbehave(const char* callback, const std::function<std::optional<HRESULT>()>& answer) {
        const auto handler = [callback, answer](const char* call) -> std::optional<HRESULT> {
            return std::string_view(call) == callback ? answer() : std::nullopt;
        };
        site->onCall = handler;
        site->Frame().onCall = handler;
    }
};

}  // namespace component
