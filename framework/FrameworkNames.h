// The names by which the Vexa framework is reached at run time. A framework with other member names needs only this
// table changed.
#pragma once

namespace vexa {

namespace ProgId {
inline constexpr const wchar_t* HiddenControl = L"VexaBaseControls.VexaHidden";
inline constexpr const wchar_t* Collection = L"KivUserServicesObjs.Collection";
inline constexpr const wchar_t* HelpDefinition = L"KivUserServicesObjs.HelpDefinition";
inline constexpr const wchar_t* Registry = L"KivUserServicesObjs.Registry";
inline constexpr const wchar_t* Services = L"KivUserServicesObjs.Services";
}  // namespace ProgId

namespace Member {
// Hidden control, element control, data element object.
inline constexpr const wchar_t* ElementCount = L"ElementCount";
inline constexpr const wchar_t* Element = L"Element";
inline constexpr const wchar_t* DataElement = L"DataElement";
inline constexpr const wchar_t* DataDefinition = L"DataDefinition";
// Data definition object.
inline constexpr const wchar_t* ReadDefinition = L"ReadDefinition";
inline constexpr const wchar_t* WriteDefinition = L"WriteDefinition";
inline constexpr const wchar_t* WriteValue = L"WriteValue";
inline constexpr const wchar_t* SetWriteEnabled = L"SetWriteEnabled";
// Element of a variable object, which has Element as well.
inline constexpr const wchar_t* Value = L"Value";
// Collection.
inline constexpr const wchar_t* Add = L"Add";
// Registry object.
inline constexpr const wchar_t* OpenKey = L"OpenKey";
inline constexpr const wchar_t* CreateKey = L"CreateKey";
inline constexpr const wchar_t* QueryValue = L"QueryValue";
inline constexpr const wchar_t* SetValue = L"SetValue";
inline constexpr const wchar_t* CloseKey = L"CloseKey";
// Services.
inline constexpr const wchar_t* SelectAllText = L"SelectAllText";
inline constexpr const wchar_t* FilterNumericKey = L"FilterNumericKey";
inline constexpr const wchar_t* FormatVersion = L"FormatVersion";
}  // namespace Member

namespace EventId {
// Hidden control.
inline constexpr long ValueReceived = 1;
// Help definition.
inline constexpr long HelpContextIDChange = 1;
inline constexpr long HelpFileChange = 2;
inline constexpr long WhatsThisHelpIDChange = 3;
inline constexpr long WhatsThisHelpIDsChange = 4;
}  // namespace EventId

}  // namespace vexa
