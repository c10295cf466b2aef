// The show control as a container without accessibility of its own for it finds it: through the control itself, with
// and without a window.
#include <windows.h>

#include <oleacc.h>
#include <servprov.h>

#include <optional>
#include <string_view>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::ComPtr;

VARIANT Id(long number) {
    VARIANT id{};
    V_VT(&id) = VT_I4;
    V_I4(&id) = number;
    return id;
}

class ShowAccess : public ControlFixture {
protected:
    ShowAccess() : ControlFixture(ShowClass) {}
    static std::u16string Name(IAccessible& object, long id) {
        comkit::Bstr name;
        object.get_accName(Id(id), name.Put());
        return std::u16string(name.View());
    }
    static long Role(IAccessible& object, long id) {
        VARIANT role{};
        EXPECT_EQ(S_OK, object.get_accRole(Id(id), &role));
        return V_I4(&role);
    }
};

TEST_F(ShowAccess, TheControlTellsItsLabelsWithAndWithoutAWindow) {
    for (const bool windowless : {true, false}) {
        SCOPED_TRACE(windowless);
        site->offersNoWindow = windowless;
        Place(true);
        Put(L"Caption", u"Device's clock");
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        const auto object = As<IAccessible>();
        ASSERT_TRUE(object);
        EXPECT_EQ(control.Get(), ComPtr<IUnknown>::From(object.Get()).Get());
        EXPECT_EQ(dispatch.Get(), ComPtr<IDispatch>::From(object.Get()).Get());
        EXPECT_EQ(u"Device's clock", Name(*object, CHILDID_SELF));
        EXPECT_EQ(u"Device's clock", Name(*object, 1));
        EXPECT_EQ(ROLE_SYSTEM_GROUPING, Role(*object, CHILDID_SELF));
        EXPECT_EQ(ROLE_SYSTEM_STATICTEXT, Role(*object, 2));
        long count = 0;
        EXPECT_EQ(S_OK, object->get_accChildCount(&count));
        EXPECT_EQ(2, count);
        POINT origin{site->position.left, site->position.top};
        ClientToScreen(site->Window(), &origin);
        long left = 0;
        long top = 0;
        long width = 0;
        long height = 0;
        EXPECT_EQ(S_OK, object->accLocation(&left, &top, &width, &height, Id(CHILDID_SELF)));
        EXPECT_EQ(origin.x, left);
        EXPECT_EQ(origin.y, top);
        EXPECT_GT(width, 0);
        VARIANT hit{};
        EXPECT_EQ(S_OK, object->accHitTest(left + 3, top + height / 2, &hit));
        EXPECT_EQ(1, V_I4(&hit));
        Remove();
        comkit::Bstr name;
        EXPECT_EQ(S_OK, object->get_accName(Id(1), name.Put())) << "it lives as long as somebody holds it";
        EXPECT_EQ(S_FALSE, object->accLocation(&left, &top, &width, &height, Id(1)));
    }
    EXPECT_EQ(S_OK, Server::Get().CanUnload());
}

TEST_F(ShowAccess, ItsParentIsWhatTheContainerSaysAsLongAsItLivesInTheContainersWindow) {
    // Anything accessible will do for what the container has it lie in.
    const auto group = Server::Get().CreateControl(ShowClass.clsid);
    const auto parent = [&] {
        ComPtr<IDispatch> found;
        EXPECT_EQ(S_OK, As<IAccessible>()->get_accParent(found.Put()));
        return ComPtr<IUnknown>::From(found.Get());
    };
    site->accessibleParent = ComPtr<IAccessible>::From(group.Get());
    site->offersNoWindow = true;
    Place(true);
    ComPtr<IDispatch> none;
    EXPECT_EQ(S_FALSE, As<IAccessible>()->get_accParent(none.Put())) << "it lies nowhere yet";
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_EQ(group.Get(), parent().Get());
    for (const HRESULT answer : {E_FAIL, S_OK}) {
        site->onCall = [answer](const char* call) {
            return std::string_view(call) == "GetParentAccessible" ? std::optional<HRESULT>(answer) : std::nullopt;
        };
        HWND window = nullptr;
        const auto standard = ComPtr<IOleWindow>::From(parent().Get());
        ASSERT_TRUE(standard) << "a container that does not tell after all: its window";
        EXPECT_EQ(S_OK, standard->GetWindow(&window));
        EXPECT_EQ(site->Window(), window);
    }
    site->onCall = nullptr;
    Remove();

    site->offersNoWindow = false;
    site->calls.clear();
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_TRUE(ComPtr<IOleWindow>::From(parent().Get()));
    EXPECT_EQ(0, site->Count("GetParentAccessible")) << "a window has a parent of its own";
}

TEST_F(ShowAccess, IsAServiceOfTheControl) {
    Place(true);
    const auto services = As<IServiceProvider>();
    ASSERT_TRUE(services);
    ComPtr<IAccessible> object;
    EXPECT_EQ(S_OK, services->QueryService(IID_IAccessible, IID_IAccessible, object.PutVoid()));
    EXPECT_EQ(As<IAccessible>().Get(), object.Get());
    void* other = &other;
    EXPECT_EQ(E_NOINTERFACE, services->QueryService(IID_IOleObject, IID_IAccessible, &other));
    EXPECT_EQ(nullptr, other);
}

TEST_F(ShowAccess, ASetControlHasWindowsThatAnswerForThemselves) {
    control = Server::Get().CreateControl(SetClass.clsid);
    EXPECT_FALSE(As<IAccessible>());
    control.Reset();
}

}  // namespace
}  // namespace component
