// Numbers of the strings in the resource table.
#pragma once

#include <cstdint>

namespace kiv {

/// Where several texts stand in a row, only the first is named and the others are counted from it.
enum KivDateTimeResID : std::int16_t {
    // About boxes.
    residProductTitle = 101,
    residOwnershipAn = 102,
    residParentCompany = 103,
    residOwnershipCompany = 104,
    residLegalNotice = 105,
    residVersion = 106,
    residShowPurpose = 108,
    residShowAboutTitle = 109,
    residSetPurpose = 110,
    residSetAboutTitle = 111,
    residOK = 150,

    /// Title of the message boxes of property pages. There is no such string: the attempt to load it fails, and that
    /// failure is what leaves a page's Apply on bad input.
    residPageErrorTitle = 1100,

    // Property errors.
    residPropertyValueError = 1200,
    residShowBadIndex = 1210,
    residBadAMPMFormat = 1211,
    residBadBorderStyle = 1212,
    residBadDateDelimiter = 1213,
    residBadTimeDelimiter = 1214,
    residBadDateFormat = 1215,
    residBadShowMode = 1216,
    residBadDataType = 1217,
    residMissingVariableName = 1218,
    residSetBadIndex = 1220,

    // Property pages.
    residSelectDataElement = 1300,
    residDateTimeOptions = 1301,
    residDateOptions = 1302,
    residTimeOptions = 1303,
    residVexaValuesHelp = 1310,
    residShowVexaDataHelp = 1311,
    residShowSlotLabels = 1312,  ///< 1312 + slot, 0..6
    residValueFieldOnly = 1319,
    residProtoValuesHelp = 1320,
    residProtoMonthFirst = 1321,
    residProtoDayFirst = 1322,
    residProto12Hour = 1323,
    residProto24Hour = 1324,
    residShowDateInformation = 1330,
    residShowTimeInformation = 1331,

    // Set control.
    residUseSystem = 1340,  ///< 1340 + Mode
    residCustom = 1343,     ///< 1343 + Mode
    residUseDaylightSavings = 1346,

    // Property pages of the set control.
    residSetVexaDataHelp = 1350,
    residSetSlotLabels = 1351,   ///< 1351 + slot, 0..13
    residSetModeOptions = 1370,  ///< 1370 + Mode
};

}  // namespace kiv
