// Members of KivSetDateTime by dispatch ID, and the persistence keys under which they are saved.
#pragma once

#include <oaidl.h>
#include <olectl.h>

#include <string_view>

namespace kiv::server {

namespace SetMember {
inline constexpr DISPID BackColor = 1;
inline constexpr DISPID CalBackColor = 2;
inline constexpr DISPID CalBackColorDisabled = 3;
inline constexpr DISPID CalForeColorDisabled = 4;
inline constexpr DISPID CalTitleBackColor = 5;
inline constexpr DISPID CalTitleBackColorDisabled = 6;
inline constexpr DISPID CalTitleForeColor = 7;
inline constexpr DISPID CalTitleForeColorDisabled = 8;
inline constexpr DISPID CalTrailingForeColor = 9;
inline constexpr DISPID Caption = DISPID_CAPTION;
inline constexpr DISPID Enabled = DISPID_ENABLED;
inline constexpr DISPID Font = 10;
inline constexpr DISPID ForeColor = 11;
inline constexpr DISPID Mode = 12;
inline constexpr DISPID ShowDST = 13;
inline constexpr DISPID ShowSeconds = 14;
inline constexpr DISPID ShowToday = 15;
inline constexpr DISPID StartOfWeek = 16;
inline constexpr DISPID TimeFormat = 17;
inline constexpr DISPID TimeHeight = 18;
inline constexpr DISPID TimeWidth = 19;
inline constexpr DISPID UsePCDateTime = 20;
inline constexpr DISPID Data12HrValue = 21;
inline constexpr DISPID Data24HrValue = 22;
inline constexpr DISPID DataElementPath = 23;
inline constexpr DISPID DataLMObject = 25;
inline constexpr DISPID DataType = 26;
inline constexpr DISPID DataVariableName = 27;
}  // namespace SetMember

namespace SetEvent {
inline constexpr DISPID Click = 2;
inline constexpr DISPID DblClick = 3;
inline constexpr DISPID KeyUp = 4;
inline constexpr DISPID KeyPress = 5;
inline constexpr DISPID KeyDown = 6;
inline constexpr DISPID MouseDown = 7;
inline constexpr DISPID MouseMove = 8;
inline constexpr DISPID MouseUp = 9;
inline constexpr DISPID GetDeviceDateTime = 10;
}  // namespace SetEvent

/// The member behind a persistence key, slot numbers left aside; DISPID_UNKNOWN where there is none.
DISPID SetMemberOfKey(std::u16string_view key) noexcept;

}  // namespace kiv::server
