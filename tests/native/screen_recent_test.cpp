// What the host remembers between sessions: the screens used last, the window's place.
#include <gtest/gtest.h>

#include "screenhost/RecentFiles.h"

namespace screenhost {
namespace {

using Names = std::vector<std::string>;

TEST(RecentFiles, TheNewestIsInFrontOnceAndTheOldestGoes) {
    RecentFiles files({"C:\\a.screen", "", "c:\\A.screen", "b"});
    EXPECT_EQ(files.Names(), (Names{"C:\\a.screen", "b"}));
    files.Add("B");
    files.Add("");
    EXPECT_EQ(files.Names(), (Names{"B", "C:\\a.screen"}));
    for (int i = 0; i < 10; ++i) files.Add(std::to_string(i));
    EXPECT_EQ(files.Names(), (Names{"9", "8", "7", "6", "5", "4", "3", "2"}));
    files.Remove("9");
    files.Remove("no such");
    EXPECT_EQ(files.Names().front(), "8");
    EXPECT_EQ(files.Names().size(), 7u);
}

TEST(RecentFiles, LabelsAreShortKeepTheFileAndNoAmpersandIsAnAccessKey) {
    EXPECT_EQ(RecentLabel(0, "C:\\R&D\\a.screen"), "&1 C:\\R&&D\\a.screen");
    const std::string file(70, 'x');
    EXPECT_EQ(RecentLabel(1, "C:\\" + file), "&2 C:\\" + file);
    EXPECT_EQ(RecentLabel(2, "C:\\plants\\" + std::string(30, 'n') + "\\" + std::string(30, 'm') + "\\clock.screen"),
              "&3 C:\\plants\\" + std::string(30, 'n') + "\\...\\clock.screen");
    EXPECT_EQ(RecentLabel(7, "C:\\plants\\north\\" + file), "&8 C:\\plants\\...\\" + file);
    EXPECT_EQ(RecentLabel(7, "plants/north/" + file), "&8 plants/.../" + file);
}

TEST(WindowMemory, ComesBackAsItWasAndNothingComesOfAnythingElse) {
    const WindowMemory memory{-8, 20, 1024, 768, 210, true, false};
    EXPECT_EQ(ParseWindowMemory(FormatWindowMemory(memory)), memory);
    for (const char* text :
         {"", "1 2 3", "0 0 0 100 100 0 0", "0 0 100 -5 100 0 0", "0 0 100 100 0 0 0", "0 0 100 100 100 0 0 0",
          "0 0 99999999999 100 100 0 0", "0 0 32768 100 100 0 0", "a b c d e f g", "0 0 100 100 100 0 0x"})
        EXPECT_EQ(ParseWindowMemory(text), std::nullopt) << text;
}

}  // namespace
}  // namespace screenhost
