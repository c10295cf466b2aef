// Containers that were not written here: the ATL host window in the versions that the system has.
#include <map>
#include <string>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::ComPtr;

struct Host {
    const wchar_t* library;
    const wchar_t* windowClass;
};

/// Null where this system has no such library. It stays loaded, since its window class does.
HMODULE LibraryOf(const Host& host) {
    static std::map<const wchar_t*, HMODULE> loaded;
    const auto [found, isNew] = loaded.try_emplace(host.library, nullptr);
    if (isNew) found->second = LoadLibraryW(host.library);
    if (isNew && found->second) {
        const auto init =
            reinterpret_cast<BOOL(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(found->second, "AtlAxWinInit")));
        EXPECT_TRUE(init && init());
    }
    return found->second;
}

class ForeignContainer : public testing::TestWithParam<Host> {
protected:
    ForeignContainer() {
        ForgetRememberedChoice();
        EXPECT_EQ(S_OK, Server::Get().Register());
    }
    ~ForeignContainer() override {
        EXPECT_EQ(S_OK, Server::Get().Unregister());
        ForgetRememberedChoice();
    }
};

INSTANTIATE_TEST_SUITE_P(, ForeignContainer,
                         testing::Values(Host{L"atl.dll", L"AtlAxWin"}, Host{L"atl100.dll", L"AtlAxWin100"},
                                         Host{L"atl110.dll", L"AtlAxWin110"}),
                         [](const auto& tested) {
                             std::string name;
                             for (const wchar_t* p = tested.param.windowClass; *p; ++p) name += static_cast<char>(*p);
                             return name;
                         });

TEST_P(ForeignContainer, CreatesShowsReadsAndDestroysTheControl) {
    const HMODULE library = LibraryOf(GetParam());
    if (!library) GTEST_SKIP() << "this system has no such library";
    const auto find = [&](const char* name) { return reinterpret_cast<void*>(GetProcAddress(library, name)); };
    const auto controlOf = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(find("AtlAxGetControl"));
    ASSERT_TRUE(controlOf);
    const comkit::UniqueWindow frame(CreateWindowExW(0, L"STATIC", L"foreign", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                                     700, 600, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
    for (const wchar_t* name :
         {L"KivDateTime.KivSetDateTime", L"KivDateTime.KivSetDateTime.1", L"{07C49BA0-1917-43EB-AC2A-BB47C300C410}"}) {
        SCOPED_TRACE(testing::Message() << name);
        comkit::UniqueWindow host(CreateWindowExW(0, GetParam().windowClass, name, WS_CHILD | WS_VISIBLE, 10, 10, 500,
                                                  400, frame.Get(), nullptr, GetModuleHandleW(nullptr), nullptr));
        ASSERT_TRUE(host);
        {
            ComPtr<IUnknown> control;
            ASSERT_EQ(S_OK, controlOf(host.Get(), control.Put()));
            const auto members = ComPtr<IDispatch>::From(control.Get());
            ASSERT_TRUE(members);
            EXPECT_EQ(L"Set Date/Time", Text(comkit::Call(*members, L"Caption").Get()));
            EXPECT_EQ(L"495", Text(comkit::Call(*members, L"TimeHeight").Get()));
            comkit::Put(*members, L"Caption", u"hosted");
            EXPECT_EQ(L"hosted", Text(comkit::Call(*members, L"Caption").Get()));
            HWND window = nullptr;
            ComPtr<IOleInPlaceObject>::From(control.Get())->GetWindow(&window);
            ASSERT_TRUE(window) << "activated by its host";
            EXPECT_TRUE(IsChild(host.Get(), window));
            EXPECT_TRUE(IsWindowVisible(window));
        }
        host.Reset();
        EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "the host let go of all";
    }
}

TEST_P(ForeignContainer, HasTheShowControlWithOrWithoutAWindowAsItLikes) {
    const HMODULE library = LibraryOf(GetParam());
    if (!library) GTEST_SKIP() << "this system has no such library";
    const auto find = [&](const char* name) { return reinterpret_cast<void*>(GetProcAddress(library, name)); };
    const auto controlOf = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(find("AtlAxGetControl"));
    ASSERT_TRUE(controlOf);
    comkit::UniqueWindow host(CreateWindowExW(0, GetParam().windowClass, L"KivDateTime.KivShowDateTime",
                                              WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 500, 100, nullptr, nullptr,
                                              GetModuleHandleW(nullptr), nullptr));
    ASSERT_TRUE(host);
    {
        ComPtr<IUnknown> control;
        ASSERT_EQ(S_OK, controlOf(host.Get(), control.Put()));
        const auto members = ComPtr<IDispatch>::From(control.Get());
        ASSERT_TRUE(members);
        EXPECT_EQ(L"Date/Time:", Text(comkit::Call(*members, L"Caption").Get()));
        comkit::Put(*members, L"Caption", u"hosted");
        EXPECT_EQ(L"hosted", Text(comkit::Call(*members, L"Caption").Get()));
    }
    host.Reset();
    EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "the host let go of all";
}

}  // namespace
}  // namespace component
