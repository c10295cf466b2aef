// OLE for the whole test program.
#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

namespace component {
namespace {

class OleEnvironment final : public testing::Environment {
public:
    void SetUp() override { ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr))); }
    void TearDown() override { OleUninitialize(); }
};

[[maybe_unused]] const testing::Environment* const registered =
    testing::AddGlobalTestEnvironment(new OleEnvironment);  // GoogleTest owns it

}  // namespace
}  // namespace component
