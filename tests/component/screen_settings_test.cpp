// What the screen host remembers in the registry.
#include <windows.h>

#include <gtest/gtest.h>

#include "screenhost/HostSettings.h"

namespace screenhost {
namespace {

/// A key of the test's own, gone afterwards.
class ScreenHostSettings : public testing::Test {
protected:
    static constexpr const wchar_t* Key = L"Software\\Corvale\\ScreenHostTest";
    ScreenHostSettings() { RegDeleteTreeW(HKEY_CURRENT_USER, Key); }
    ~ScreenHostSettings() override { RegDeleteTreeW(HKEY_CURRENT_USER, Key); }

    static bool KeyExists() {
        return RegGetValueW(HKEY_CURRENT_USER, Key, L"Recent1", RRF_RT_ANY, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    }
    static void Put(const wchar_t* name, DWORD type, const void* data, DWORD bytes) {
        RegSetKeyValueW(HKEY_CURRENT_USER, Key, name, type, data, bytes);
    }

    HostSettings settings{Key};
};

TEST_F(ScreenHostSettings, AskingLeavesNothingBehindAndAnotherSessionFindsWhatWasKept) {
    EXPECT_TRUE(settings.Recent().Names().empty());
    EXPECT_EQ(settings.Window(), std::nullopt);
    EXPECT_FALSE(KeyExists());
    const std::vector<std::string> names{"C:\\\xC3\xA4\\a.screen", "b.screen", "c.screen"};
    settings.SetRecent(RecentFiles(names));
    const WindowMemory memory{10, -20, 800, 600, 210, false, true};
    settings.SetWindow(memory);
    EXPECT_EQ(HostSettings(Key).Recent().Names(), names);
    EXPECT_EQ(HostSettings(Key).Window(), memory);
    settings.SetRecent(RecentFiles({"c.screen"}));
    EXPECT_EQ(HostSettings(Key).Recent().Names(), std::vector<std::string>{"c.screen"});
}

TEST_F(ScreenHostSettings, ValuesThatSomebodyElseLeftAreNotRemembered) {
    const DWORD number = 7;
    Put(L"Recent1", REG_DWORD, &number, sizeof(number));
    Put(L"Recent2", REG_SZ, L"b\0c", 4 * sizeof(wchar_t));
    Put(L"Recent3", REG_SZ, L"unended", 7 * sizeof(wchar_t));
    Put(L"Window", REG_SZ, L"1 2 3", 6 * sizeof(wchar_t));
    EXPECT_EQ(settings.Recent().Names(), (std::vector<std::string>{"b", "unended"}));
    EXPECT_EQ(settings.Window(), std::nullopt);
}

}  // namespace
}  // namespace screenhost
