// Members of KivShowDateTime by dispatch ID, and the persistence keys under which they are saved.
#pragma once

#include <oaidl.h>
#include <olectl.h>

#include <string_view>

namespace kiv::server {

namespace ShowMember {
inline constexpr DISPID Data12HrValue = 1;
inline constexpr DISPID Data24HrValue = 2;
inline constexpr DISPID DataDMYValue = 3;
inline constexpr DISPID DataMDYValue = 4;
inline constexpr DISPID DataElementPath = 5;
inline constexpr DISPID DataLMObject = 6;
inline constexpr DISPID DataType = 7;
inline constexpr DISPID DataVariableName = 8;
inline constexpr DISPID AMPMFormat = 9;
inline constexpr DISPID BackColor = DISPID_BACKCOLOR;
inline constexpr DISPID BorderStyle = DISPID_BORDERSTYLE;
inline constexpr DISPID Caption = DISPID_CAPTION;
inline constexpr DISPID CaptionHeight = 10;
inline constexpr DISPID CaptionWidth = 11;
inline constexpr DISPID DateDelimiter = 12;
inline constexpr DISPID DateFormat = 13;
inline constexpr DISPID Enabled = DISPID_ENABLED;
inline constexpr DISPID Font = DISPID_FONT;
inline constexpr DISPID ForeColor = DISPID_FORECOLOR;
inline constexpr DISPID LockCaptionWidth = 14;
inline constexpr DISPID LockValueWidth = 15;
inline constexpr DISPID Mode = 16;
inline constexpr DISPID ShowCentury = 17;
inline constexpr DISPID ShowLeadingZeros = 18;
inline constexpr DISPID ShowLongDay = 19;
inline constexpr DISPID ShowSeconds = 20;
inline constexpr DISPID TimeDelimiter = 21;
inline constexpr DISPID TimeFormat = 22;
inline constexpr DISPID UpperCase = 23;
inline constexpr DISPID ValueHeight = 25;
inline constexpr DISPID ValueWidth = 26;
}  // namespace ShowMember

namespace ShowEvent {
inline constexpr DISPID ValueChange = 1;
}  // namespace ShowEvent

/// The member behind a persistence key, slot numbers left aside; DISPID_UNKNOWN where there is none.
DISPID ShowMemberOfKey(std::u16string_view key) noexcept;

}  // namespace kiv::server
