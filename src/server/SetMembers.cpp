#include "server/SetMembers.h"

#include "server/KeyedMembers.h"

namespace kiv::server {

namespace {

constexpr KeyedMember Slots[] = {
    {u"DataLMObject", SetMember::DataLMObject},
    {u"DataType", SetMember::DataType},
    {u"DataVarName", SetMember::DataVariableName},
    {u"DataElemPath", SetMember::DataElementPath},
};

constexpr KeyedMember Properties[] = {
    {u"Data12HourValue", SetMember::Data12HrValue},
    {u"Data24HourValue", SetMember::Data24HrValue},
    {u"BackColor", SetMember::BackColor},
    {u"ForeColor", SetMember::ForeColor},
    {u"CalBackColor", SetMember::CalBackColor},
    {u"CalDisabledBackColor", SetMember::CalBackColorDisabled},
    {u"CalDisabledForeColor", SetMember::CalForeColorDisabled},
    {u"CalEnabledTitleBack", SetMember::CalTitleBackColor},
    {u"CalEnabledTitleFore", SetMember::CalTitleForeColor},
    {u"CalDisabledTitleBack", SetMember::CalTitleBackColorDisabled},
    {u"CalDisabledTitleFore", SetMember::CalTitleForeColorDisabled},
    {u"CalTrailerColor", SetMember::CalTrailingForeColor},
    {u"Mode", SetMember::Mode},
    {u"Caption", SetMember::Caption},
    {u"Enabled", SetMember::Enabled},
    {u"Font", SetMember::Font},
    {u"TimeHeight", SetMember::TimeHeight},
    {u"TimeWidth", SetMember::TimeWidth},
    {u"ProtoShow24Hour", SetMember::TimeFormat},
    {u"ShowDST", SetMember::ShowDST},
    {u"ShowSeconds", SetMember::ShowSeconds},
    {u"ShowToday", SetMember::ShowToday},
    {u"StartOfWeek", SetMember::StartOfWeek},
    {u"UsePCDateTime", SetMember::UsePCDateTime},
};

}  // namespace

DISPID SetMemberOfKey(std::u16string_view key) noexcept {
    return MemberOfKey(Properties, Slots, key);
}

}  // namespace kiv::server
