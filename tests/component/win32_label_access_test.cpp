// Drawn labels as an accessibility client finds them: through the window, or through the object where there is none.
#include <windows.h>

#include <gtest/gtest.h>
#include <oleacc.h>

#include <array>
#include <memory>
#include <string>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"
#include "comkit/Dispatch.h"
#include "win32/LabelSurface.h"
#include "win32_TestAnswers.h"

namespace kiv::win32::test {

namespace {

using comkit::ComPtr;

/// Whatever a surface of labels wants of its site: nobody is interested here.
class QuietSite final : public WindowlessSite {
public:
    void OnSizeChanged(const Size&) override {}
    void OnFocus(bool) override {}
    void OnMouseActivate() override {}
    void OnInvalidate(const RECT&) override {}
    bool OnDraw(const RECT&, const Drawing&) override { return false; }
    void OnCapture(bool) override {}
    void OnSettingsChanged() override {}
};

VARIANT Id(long number) {
    VARIANT id{};
    V_VT(&id) = VT_I4;
    V_I4(&id) = number;
    return id;
}

/// The number in an answer: -1 where it is empty.
long NumberIn(const VARIANT& answer) {
    return V_VT(&answer) == VT_I4 ? V_I4(&answer) : -1;
}

// A caption at (10, 5) to (90, 30), a value beside it to (180, 30), a label that is hidden between the two.
constexpr RECT Place{20, 30, 220, 70};

class LabelAccessTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
        TestAnswers::UseDpi(96);
        host = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 40, 40, 400, 200, nullptr,
                               nullptr, nullptr, nullptr);
        surface = std::make_unique<LabelSurface>(site);
        caption = surface->CreateLabel(u"lblCaption");
        hidden = surface->CreateLabel(u"lblHidden");
        value = surface->CreateLabel(u"lblValue");
        caption->SetBounds({150, 75, 1200, 375});
        hidden->SetBounds({150, 75, 2000, 375});
        hidden->SetVisible(false);
        value->SetBounds({1350, 75, 1350, 375});
        caption->SetCaption(u"Device");
        hidden->SetCaption(u"nobody");
        value->SetCaption(u"12:34:56");
        value->SetEnabled(false);
        surface->SetSize({200 * 15, 40 * 15});
    }
    void TearDown() override {
        Destroy();
        DestroyWindow(host);
        OleUninitialize();
    }
    void Destroy() {
        caption.reset();
        hidden.reset();
        value.reset();
        surface.reset();
    }
    static ComPtr<IAccessible> OfWindow(HWND window) {
        using Function = HRESULT(WINAPI*)(HWND, DWORD, REFIID, void**);
        const auto ask = reinterpret_cast<Function>(
            reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"oleacc.dll"), "AccessibleObjectFromWindow")));
        ComPtr<IAccessible> found;
        if (ask) ask(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, found.PutVoid());
        return found;
    }
    static std::u16string Name(IAccessible& object, long id) {
        comkit::Bstr name;
        object.get_accName(Id(id), name.Put());
        return std::u16string(name.View());
    }
    static long Role(IAccessible& object, long id) {
        VARIANT role{};
        return object.get_accRole(Id(id), &role) == S_OK ? NumberIn(role) : -1;
    }
    static long State(IAccessible& object, long id) {
        VARIANT state{};
        return object.get_accState(Id(id), &state) == S_OK ? NumberIn(state) : -1;
    }
    static long Navigate(IAccessible& object, long direction, long from) {
        VARIANT to{};
        return object.accNavigate(direction, Id(from), &to) == S_OK ? NumberIn(to) : -1;
    }

    void ExpectLabels(IAccessible& object, HWND parent) const {
        long count = 0;
        EXPECT_EQ(S_OK, object.get_accChildCount(&count));
        EXPECT_EQ(2, count);
        EXPECT_EQ(u"Device", Name(object, CHILDID_SELF));
        EXPECT_EQ(u"Device", Name(object, 1));
        EXPECT_EQ(u"12:34:56", Name(object, 2));
        EXPECT_EQ(ROLE_SYSTEM_GROUPING, Role(object, CHILDID_SELF));
        EXPECT_EQ(ROLE_SYSTEM_STATICTEXT, Role(object, 1));
        EXPECT_EQ(ROLE_SYSTEM_STATICTEXT, Role(object, 2));
        EXPECT_EQ(0, State(object, CHILDID_SELF));
        EXPECT_EQ(STATE_SYSTEM_READONLY, State(object, 1));
        EXPECT_EQ(STATE_SYSTEM_READONLY | STATE_SYSTEM_UNAVAILABLE, State(object, 2));
        for (const long id : {3L, -1L}) {
            comkit::Bstr name;
            EXPECT_EQ(E_INVALIDARG, object.get_accName(Id(id), name.Put()));
        }
        ExpectPlaces(object);
        ComPtr<IDispatch> parentObject;
        ASSERT_EQ(S_OK, object.get_accParent(parentObject.Put()));
        HWND parentWindow = nullptr;
        const auto oleWindow = ComPtr<IOleWindow>::From(parentObject.Get());
        ASSERT_TRUE(oleWindow);
        oleWindow->GetWindow(&parentWindow);
        EXPECT_EQ(parent, parentWindow);
        // A client that calls by number.
        const comkit::Variant late =
            comkit::InvokeWith(object, DISPID_ACC_NAME, DISPATCH_PROPERTYGET, std::array{Id(2)});
        EXPECT_EQ(u"12:34:56", comkit::ViewOf(late.Get().bstrVal));
    }
    void ExpectPlaces(IAccessible& object) const {
        POINT origin{Place.left, Place.top};
        ClientToScreen(host, &origin);
        long left = 0;
        long top = 0;
        long width = 0;
        long height = 0;
        EXPECT_EQ(S_OK, object.accLocation(&left, &top, &width, &height, Id(2)));
        EXPECT_EQ(origin.x + 90, left);
        EXPECT_EQ(origin.y + 5, top);
        EXPECT_EQ(90, width);
        EXPECT_EQ(25, height);
        EXPECT_EQ(S_OK, object.accLocation(&left, &top, &width, &height, Id(CHILDID_SELF)));
        EXPECT_EQ(origin.x, left);
        EXPECT_EQ(200, width);
        VARIANT hit{};
        EXPECT_EQ(S_OK, object.accHitTest(origin.x + 20, origin.y + 10, &hit));
        EXPECT_EQ(1, NumberIn(hit));
        EXPECT_EQ(S_OK, object.accHitTest(origin.x + 2, origin.y + 2, &hit));
        EXPECT_EQ(CHILDID_SELF, NumberIn(hit));
        EXPECT_EQ(S_FALSE, object.accHitTest(origin.x - 2, origin.y, &hit));
        EXPECT_EQ(1, Navigate(object, NAVDIR_FIRSTCHILD, CHILDID_SELF));
        EXPECT_EQ(2, Navigate(object, NAVDIR_LASTCHILD, CHILDID_SELF));
        EXPECT_EQ(2, Navigate(object, NAVDIR_NEXT, 1));
        EXPECT_EQ(-1, Navigate(object, NAVDIR_NEXT, 2));
        EXPECT_EQ(1, Navigate(object, NAVDIR_PREVIOUS, 2));
    }

    TestAnswers answers;
    QuietSite site;
    HWND host = nullptr;
    std::unique_ptr<LabelSurface> surface;
    std::unique_ptr<Label> caption;
    std::unique_ptr<Label> hidden;
    std::unique_ptr<Label> value;
};

TEST_F(LabelAccessTest, AWindowAnswersForItsLabels) {
    surface->Activate(host, Place);
    const auto object = OfWindow(surface->Window());
    ASSERT_TRUE(object);
    ExpectLabels(*object, surface->Window());
    value->SetCaption(u"12:34:57");
    EXPECT_EQ(u"12:34:57", Name(*object, 2));
    caption->SetVisible(false);
    EXPECT_EQ(u"12:34:57", Name(*object, 1)) << "the first one that shows";
    surface->SetEnabled(false);
    EXPECT_EQ(STATE_SYSTEM_UNAVAILABLE, State(*object, CHILDID_SELF));
}

TEST_F(LabelAccessTest, WithoutAWindowTheObjectAnswersInTheContainersWindow) {
    surface->ActivateWindowless(host, Place);
    const auto object = surface->Access();
    ASSERT_TRUE(object);
    ExpectLabels(*object, host);
}

TEST_F(LabelAccessTest, AnObjectThatOutlivesItsLabelsSaysThatThereIsNothing) {
    surface->Activate(host, Place);
    const auto object = OfWindow(surface->Window());
    const auto direct = surface->Access();
    surface->Deactivate();
    long left = 0;
    EXPECT_EQ(S_FALSE, direct->accLocation(&left, &left, &left, &left, Id(1))) << "nowhere";
    EXPECT_EQ(u"Device", Name(*direct, 1));
    Destroy();
    comkit::Bstr name;
    EXPECT_EQ(CO_E_OBJNOTCONNECTED, direct->get_accName(Id(1), name.Put()));
    EXPECT_TRUE(FAILED(object->get_accName(Id(1), name.Put())));
}

}  // namespace

}  // namespace kiv::win32::test
