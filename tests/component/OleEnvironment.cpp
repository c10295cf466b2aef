// OLE for the whole test program, and a registry in which nothing of the project's is installed, whatever a run that
// was ended in the middle has left there.
#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

#include "InstalledSimulator.h"

namespace component {
namespace {

class OleEnvironment final : public testing::Environment {
public:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
        const InstalledSimulator takenAwayAtOnce;
        EXPECT_EQ(S_OK, Server::Get().Unregister());
        EXPECT_EQ(S_OK, Server::Get().Install(false, L"user"));
    }
    void TearDown() override { OleUninitialize(); }
};

[[maybe_unused]] const testing::Environment* const registered =
    testing::AddGlobalTestEnvironment(new OleEnvironment);  // GoogleTest owns it

}  // namespace
}  // namespace component
