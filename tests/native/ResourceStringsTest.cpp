#include "common/ResourceStrings.h"

#include <gtest/gtest.h>

#include "common/Errors.h"
#include "headless/HeadlessContainer.h"
#include "platform/HostError.h"

namespace kiv {
namespace {

TEST(ResourceString, ThatIsMissingShowsItsNumber) {
    EXPECT_EQ(GetResString(1346), u"&Automatically Adjust for Daylight Savings Time?");
    EXPECT_EQ(GetResString(1347), u"Err: Missing ResID (1347)");
    EXPECT_EQ(GetResString(-5), u"Err: Missing ResID (-5)");
    for (const std::int32_t gap : {0, 100, 107, 1100, 1219, 1347, 1373, 65536 + 101, -32768}) {
        EXPECT_FALSE(FindResString(gap).has_value()) << gap;
    }
}

TEST(ResourceString, RowsThatAreCountedFromTheirFirstNumberAreWhole) {
    EXPECT_EQ(GetResString(residSetSlotLabels + 13), u"Set Current Year");
    EXPECT_EQ(GetResString(residShowSlotLabels + 6), u"Year");
    EXPECT_EQ(GetResString(residUseSystem + 2), u"&Use PC System Time ?");
    EXPECT_EQ(GetResString(residCustom + 2), u"Custom Time");
    EXPECT_EQ(GetResString(residSetModeOptions + 2), u"Set &Time Only");
    EXPECT_TRUE(FindResString(residShowVexaDataHelp)->find(u"control.\r\n\r\nThe KivShow") != std::u16string::npos);
}

TEST(PropertyError, NamesTheControlAndItsInstanceAndIsRaisedEvenWithoutAText) {
    headless::HeadlessContainer container;
    container.instanceName = u"dtClock";
    const struct {
        std::int32_t resId;
        const char16_t* text;
    } cases[] = {{residSetBadIndex, u"Invalid Property array index: Must be a value between 0 and 13."}, {9999, u""}};
    for (const auto& c : cases) {
        try {
            RaisePropertyError(u"KivSetDateTime", container, 381, c.resId);
        } catch (const HostError& error) {
            EXPECT_EQ(error.Number(), 381);
            EXPECT_EQ(error.Source(), u"KivSetDateTime (dtClock)");
            EXPECT_EQ(error.Description(), c.text);
        }
    }
}

TEST(IndexCheck, RefusesBothSidesOfTheRange) {
    const headless::HeadlessContainer container;
    for (const std::int32_t good : {0, 13}) EXPECT_NO_THROW(ValidateIndex(u"X", container, good, 14, residSetBadIndex));
    for (const std::int32_t bad : {-1, 14, -2147483647 - 1, 2147483647}) {
        EXPECT_THROW(ValidateIndex(u"X", container, bad, 14, residSetBadIndex), HostError);
    }
}

}  // namespace
}  // namespace kiv
