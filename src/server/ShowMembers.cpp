#include "server/ShowMembers.h"

#include "server/KeyedMembers.h"

namespace kiv::server {

namespace {

constexpr KeyedMember Slots[] = {
    {u"DataLMObject", ShowMember::DataLMObject},
    {u"DataType", ShowMember::DataType},
    {u"DataVarName", ShowMember::DataVariableName},
    {u"DataElemPath", ShowMember::DataElementPath},
};

constexpr KeyedMember Properties[] = {
    {u"Data12HourValue", ShowMember::Data12HrValue},
    {u"Data24HourValue", ShowMember::Data24HrValue},
    {u"DataDMYValue", ShowMember::DataDMYValue},
    {u"DataMDYValue", ShowMember::DataMDYValue},
    {u"AMPMFormat", ShowMember::AMPMFormat},
    {u"BackColor", ShowMember::BackColor},
    {u"BorderStyle", ShowMember::BorderStyle},
    {u"Caption", ShowMember::Caption},
    {u"CaptionHeight", ShowMember::CaptionHeight},
    {u"CaptionWidth", ShowMember::CaptionWidth},
    {u"DateDelimiter", ShowMember::DateDelimiter},
    {u"ProtoDateFormat", ShowMember::DateFormat},
    {u"Enabled", ShowMember::Enabled},
    {u"Font", ShowMember::Font},
    {u"ForeColor", ShowMember::ForeColor},
    {u"LockCapWidth", ShowMember::LockCaptionWidth},
    {u"LockValWidth", ShowMember::LockValueWidth},
    {u"Mode", ShowMember::Mode},
    {u"ShowCentury", ShowMember::ShowCentury},
    {u"ShowLeadZeros", ShowMember::ShowLeadingZeros},
    {u"ShowLongDay", ShowMember::ShowLongDay},
    {u"ShowSeconds", ShowMember::ShowSeconds},
    {u"TimeDelimiter", ShowMember::TimeDelimiter},
    {u"ProtoShow24Hour", ShowMember::TimeFormat},
    {u"UpperCase", ShowMember::UpperCase},
    {u"ValueHeight", ShowMember::ValueHeight},
    {u"ValueWidth", ShowMember::ValueWidth},
};

}  // namespace

DISPID ShowMemberOfKey(std::u16string_view key) noexcept {
    return MemberOfKey(Properties, Slots, key);
}

}  // namespace kiv::server
