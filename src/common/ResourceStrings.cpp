#include "common/ResourceStrings.h"

#include <algorithm>
#include <array>

#include "common/NumericText.h"
#include "platform/HostError.h"

namespace kiv {

namespace {

// Ordered by number: the lookup depends on it.
constexpr auto Strings = std::to_array<ResourceString>({
    {101, u"Corvale Plug-in User Control for Vexa Service Tool - KivShowDateTime"},
    {102, u"An"},
    {103, u" Arden "},
    {104, u"Company"},
    {105, u"Copyright (c) 2000 The Corvale Company. All rights reserved."},
    {106, u"Version: "},
    {108, u"Control used to display device's Date or Time."},
    {109, u"About KivShowDateTime"},
    {110, u"Control used to set a device's Date and/or Time."},
    {111, u"About KivSetDateTime"},
    {150, u"OK"},
    {1200, u"Property Value Error!"},
    {1210, u"Invalid Property array index: Must be a value between 0 and 3."},
    {1211, u"Invalid Property Value!  Must have two fields separated by a comma.  (Ex. \"AM,PM\")"},
    {1212, u"Invalid Property Value!  Border Style must be 0 (None) or 1 (Sunken)."},
    {1213, u"Invalid Property Value!  Date delimiter must be a single character.  (Ex. \"/\")"},
    {1214, u"Invalid Property Value!  Time delimiter must be a single character.  (Ex. \":\")"},
    {1215, u"Invalid Property Value!  Date format must be 0 (DD-MMM-YYYY) or 1 (MMM-DD-YYYY)."},
    {1216, u"Invalid Property Value!  Mode must be either 1 (Show Date) or 2 (Show Time)."},
    {1217, u"Invalid Property Value!  Date Type must be value in the range of 0 - 3."},
    {1218,
     u"Invalid Property Value!  Must specify the Data Variable Name on the Vexa device associated with the current "
     u"Data Object."},
    {1220, u"Invalid Property array index: Must be a value between 0 and 13."},
    {1300, u"Select Vexa Data Element Object:"},
    {1301, u"Date / Time Options"},
    {1302, u"Date Options"},
    {1303, u"Time Options"},
    {1310,
     u"The Properties on this page are used to specify the value expected from the Vexa device that is used to "
     u"indicate each of the specified display formats."},
    {1311,
     u"The Properties on this page are used to specify the data element path for each Vexa Data Element used by the "
     u"control.\r\n\r\nThe KivShowDateTime control uses four Vexa Data Elements.\r\n\r\nSelect a Vexa data Object in "
     u"the selection box above to view/set its current properties."},
    {1312, u"DMY vs. MDY / 12-Hr vs. 24-Hr"},
    {1313, u"Hour"},
    {1314, u"Minute"},
    {1315, u"Second"},
    {1316, u"Month"},
    {1317, u"Day"},
    {1318, u"Year"},
    {1319, u"(Value Field Only)"},
    {1320,
     u"The Properties on this page specify the format to display the Date or Time during design time.\r\n\r\nDisplay "
     u"format is obtained from the Vexa device at run-time if a \"Format\" DataVariableName has been "
     u"specified.\r\n\r\nIf not specified, the prototype setting will also be used at run-time."},
    {1321, u"MMM-DD-YYYY"},
    {1322, u"DD-MMM-YYYY"},
    {1323, u"12-Hour Format"},
    {1324, u"24-Hour Format"},
    {1330, u"Show &Date Information"},
    {1331, u"Show &Time Information"},
    {1340, u"&Use PC System Date/Time?"},
    {1341, u"&Use PC System Date ?"},
    {1342, u"&Use PC System Time ?"},
    {1343, u"Custom Date/Time"},
    {1344, u"Custom Date"},
    {1345, u"Custom Time"},
    {1346, u"&Automatically Adjust for Daylight Savings Time?"},
    {1350,
     u"The Properties on this page are used to specify the data element path for each Vexa Data Element used by the "
     u"control.\r\n\r\nThe KivSetDateTime control uses 14 Vexa Data Elements.\r\n\r\nSelect a Vexa data Object in the "
     u"selection box above to view/set its current properties."},
    {1351, u"12-Hour vs. 24-Hour"},
    {1352, u"Enable Daylight Savings"},
    {1353, u"Get Current Hour"},
    {1354, u"Get Current Minute"},
    {1355, u"Get Current Second"},
    {1356, u"Get Current Month"},
    {1357, u"Get Current Day"},
    {1358, u"Get Current Year"},
    {1359, u"Set Current Hour"},
    {1360, u"Set Current Minute"},
    {1361, u"Set Current Second"},
    {1362, u"Set Current Month"},
    {1363, u"Set Current Day"},
    {1364, u"Set Current Year"},
    {1370, u"&Set Date and Time"},
    {1371, u"Set &Date Only"},
    {1372, u"Set &Time Only"},
});

static_assert(std::ranges::is_sorted(Strings, {}, &ResourceString::id));

}  // namespace

std::optional<std::u16string_view> FindResString(std::int32_t id) noexcept {
    const auto found = std::ranges::lower_bound(Strings, id, {}, &ResourceString::id);
    if (found == Strings.end() || found->id != id) return std::nullopt;
    return found->text;
}

std::u16string GetResString(std::int16_t id) {
    if (const auto text = FindResString(id)) return std::u16string(*text);
    return u"Err: Missing ResID (" + ToText(id) + u")";
}

std::u16string LoadResString(std::int16_t id) {
    if (const auto text = FindResString(id)) return std::u16string(*text);
    throw HostError(ErrorNumber::ResourceNotFound, {}, u"Resource with identifier '" + ToText(id) + u"' not found");
}

}  // namespace kiv
