// The dual interface of KivShowDateTime, mapped member by member to the control.
#pragma once

#include <KivDateTime.h>

#include "server/DispatchPart.h"
#include "server/ShowMembers.h"
#include "showcontrol/ShowControl.h"

namespace kiv::server {

class ShowDispatchPart final : public DispatchPart<_KivShowDateTime, ShowControl> {
public:
    using DispatchPart::DispatchPart;

    // Properties
    HRESULT STDMETHODCALLTYPE get_Data12HrValue(LONG* out) override { return Get<&ShowControl::Data12HrValue>(out); }
    HRESULT STDMETHODCALLTYPE put_Data12HrValue(LONG value) override {
        return Put<&ShowControl::SetData12HrValue>(ShowMember::Data12HrValue, value);
    }
    HRESULT STDMETHODCALLTYPE get_Data24HrValue(LONG* out) override { return Get<&ShowControl::Data24HrValue>(out); }
    HRESULT STDMETHODCALLTYPE put_Data24HrValue(LONG value) override {
        return Put<&ShowControl::SetData24HrValue>(ShowMember::Data24HrValue, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataDMYValue(LONG* out) override { return Get<&ShowControl::DataDMYValue>(out); }
    HRESULT STDMETHODCALLTYPE put_DataDMYValue(LONG value) override {
        return Put<&ShowControl::SetDataDMYValue>(ShowMember::DataDMYValue, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataMDYValue(LONG* out) override { return Get<&ShowControl::DataMDYValue>(out); }
    HRESULT STDMETHODCALLTYPE put_DataMDYValue(LONG value) override {
        return Put<&ShowControl::SetDataMDYValue>(ShowMember::DataMDYValue, value);
    }
    HRESULT STDMETHODCALLTYPE get_AMPMFormat(BSTR* out) override { return Get<&ShowControl::AMPMFormat>(out); }
    HRESULT STDMETHODCALLTYPE put_AMPMFormat(BSTR value) override {
        return Put<&ShowControl::SetAMPMFormat>(ShowMember::AMPMFormat, value);
    }
    HRESULT STDMETHODCALLTYPE get_BackColor(OLE_COLOR* out) override { return Get<&ShowControl::BackColor>(out); }
    HRESULT STDMETHODCALLTYPE put_BackColor(OLE_COLOR value) override {
        return Put<&ShowControl::SetBackColor>(ShowMember::BackColor, value);
    }
    HRESULT STDMETHODCALLTYPE get_BorderStyle(::BorderStyleConstants* out) override {
        return Get<&ShowControl::BorderStyle>(out);
    }
    HRESULT STDMETHODCALLTYPE put_BorderStyle(::BorderStyleConstants value) override {
        return Put<&ShowControl::SetBorderStyle>(ShowMember::BorderStyle, value);
    }
    HRESULT STDMETHODCALLTYPE get_Caption(BSTR* out) override { return Get<&ShowControl::Caption>(out); }
    HRESULT STDMETHODCALLTYPE put_Caption(BSTR value) override {
        return Put<&ShowControl::SetCaption>(ShowMember::Caption, value);
    }
    HRESULT STDMETHODCALLTYPE get_CaptionHeight(SHORT* out) override { return Get<&ShowControl::CaptionHeight>(out); }
    HRESULT STDMETHODCALLTYPE put_CaptionHeight(SHORT value) override {
        return PutShort<&ShowControl::SetCaptionHeight>(ShowMember::CaptionHeight, value);
    }
    HRESULT STDMETHODCALLTYPE get_CaptionWidth(SHORT* out) override { return Get<&ShowControl::CaptionWidth>(out); }
    HRESULT STDMETHODCALLTYPE put_CaptionWidth(SHORT value) override {
        return PutShort<&ShowControl::SetCaptionWidth>(ShowMember::CaptionWidth, value);
    }
    HRESULT STDMETHODCALLTYPE get_DateDelimiter(BSTR* out) override { return Get<&ShowControl::DateDelimiter>(out); }
    HRESULT STDMETHODCALLTYPE put_DateDelimiter(BSTR value) override {
        return Put<&ShowControl::SetDateDelimiter>(ShowMember::DateDelimiter, value);
    }
    HRESULT STDMETHODCALLTYPE get_DateFormat(LONG* out) override { return Get<&ShowControl::DateFormat>(out); }
    HRESULT STDMETHODCALLTYPE put_DateFormat(LONG value) override {
        return Put<&ShowControl::SetDateFormat>(ShowMember::DateFormat, value);
    }
    HRESULT STDMETHODCALLTYPE get_Enabled(VARIANT_BOOL* out) override { return Get<&ShowControl::Enabled>(out); }
    HRESULT STDMETHODCALLTYPE put_Enabled(VARIANT_BOOL value) override {
        return Put<&ShowControl::SetEnabled>(ShowMember::Enabled, value);
    }
    HRESULT STDMETHODCALLTYPE get_Font(IFontDisp** out) override { return Get<&ShowControl::GetFont>(out); }
    HRESULT STDMETHODCALLTYPE put_Font(IFontDisp* value) override { return putref_Font(value); }
    HRESULT STDMETHODCALLTYPE putref_Font(IFontDisp* value) override {
        return PutFont<&ShowControl::SetFont>(ShowMember::Font, value);
    }
    HRESULT STDMETHODCALLTYPE get_ForeColor(OLE_COLOR* out) override { return Get<&ShowControl::ForeColor>(out); }
    HRESULT STDMETHODCALLTYPE put_ForeColor(OLE_COLOR value) override {
        return Put<&ShowControl::SetForeColor>(ShowMember::ForeColor, value);
    }
    HRESULT STDMETHODCALLTYPE get_LockCaptionWidth(VARIANT_BOOL* out) override {
        return Get<&ShowControl::LockCaptionWidth>(out);
    }
    HRESULT STDMETHODCALLTYPE put_LockCaptionWidth(VARIANT_BOOL value) override {
        return Put<&ShowControl::SetLockCaptionWidth>(ShowMember::LockCaptionWidth, value);
    }
    HRESULT STDMETHODCALLTYPE get_LockValueWidth(VARIANT_BOOL* out) override {
        return Get<&ShowControl::LockValueWidth>(out);
    }
    HRESULT STDMETHODCALLTYPE put_LockValueWidth(VARIANT_BOOL value) override {
        return Put<&ShowControl::SetLockValueWidth>(ShowMember::LockValueWidth, value);
    }
    HRESULT STDMETHODCALLTYPE get_Mode(::ModeShowConstants* out) override { return Get<&ShowControl::Mode>(out); }
    HRESULT STDMETHODCALLTYPE put_Mode(::ModeShowConstants value) override {
        return Put<&ShowControl::SetMode>(ShowMember::Mode, value);
    }
    HRESULT STDMETHODCALLTYPE get_ShowCentury(VARIANT_BOOL* out) override {
        return Get<&ShowControl::ShowCentury>(out);
    }
    HRESULT STDMETHODCALLTYPE put_ShowCentury(VARIANT_BOOL value) override {
        return Put<&ShowControl::SetShowCentury>(ShowMember::ShowCentury, value);
    }
    HRESULT STDMETHODCALLTYPE get_ShowLeadingZeros(VARIANT_BOOL* out) override {
        return Get<&ShowControl::ShowLeadingZeros>(out);
    }
    HRESULT STDMETHODCALLTYPE put_ShowLeadingZeros(VARIANT_BOOL value) override {
        return Put<&ShowControl::SetShowLeadingZeros>(ShowMember::ShowLeadingZeros, value);
    }
    HRESULT STDMETHODCALLTYPE get_ShowLongDay(VARIANT_BOOL* out) override {
        return Get<&ShowControl::ShowLongDay>(out);
    }
    HRESULT STDMETHODCALLTYPE put_ShowLongDay(VARIANT_BOOL value) override {
        return Put<&ShowControl::SetShowLongDay>(ShowMember::ShowLongDay, value);
    }
    HRESULT STDMETHODCALLTYPE get_ShowSeconds(VARIANT_BOOL* out) override {
        return Get<&ShowControl::ShowSeconds>(out);
    }
    HRESULT STDMETHODCALLTYPE put_ShowSeconds(VARIANT_BOOL value) override {
        return Put<&ShowControl::SetShowSeconds>(ShowMember::ShowSeconds, value);
    }
    HRESULT STDMETHODCALLTYPE get_TimeDelimiter(BSTR* out) override { return Get<&ShowControl::TimeDelimiter>(out); }
    HRESULT STDMETHODCALLTYPE put_TimeDelimiter(BSTR value) override {
        return Put<&ShowControl::SetTimeDelimiter>(ShowMember::TimeDelimiter, value);
    }
    HRESULT STDMETHODCALLTYPE get_TimeFormat(LONG* out) override { return Get<&ShowControl::TimeFormat>(out); }
    HRESULT STDMETHODCALLTYPE put_TimeFormat(LONG value) override {
        return Put<&ShowControl::SetTimeFormat>(ShowMember::TimeFormat, value);
    }
    HRESULT STDMETHODCALLTYPE get_UpperCase(VARIANT_BOOL* out) override { return Get<&ShowControl::UpperCase>(out); }
    HRESULT STDMETHODCALLTYPE put_UpperCase(VARIANT_BOOL value) override {
        return Put<&ShowControl::SetUpperCase>(ShowMember::UpperCase, value);
    }
    HRESULT STDMETHODCALLTYPE get_Value(BSTR* out) override { return Get<&ShowControl::Value>(out); }
    HRESULT STDMETHODCALLTYPE get_ValueHeight(SHORT* out) override { return Get<&ShowControl::ValueHeight>(out); }
    HRESULT STDMETHODCALLTYPE put_ValueHeight(SHORT value) override {
        return PutShort<&ShowControl::SetValueHeight>(ShowMember::ValueHeight, value);
    }
    HRESULT STDMETHODCALLTYPE get_ValueWidth(SHORT* out) override { return Get<&ShowControl::ValueWidth>(out); }
    HRESULT STDMETHODCALLTYPE put_ValueWidth(SHORT value) override {
        return PutShort<&ShowControl::SetValueWidth>(ShowMember::ValueWidth, value);
    }

    // Slots 0 to 6
    HRESULT STDMETHODCALLTYPE get_DataElementPath(LONG index, BSTR* out) override {
        return Get<&ShowControl::DataElementPath>(out, index);
    }
    HRESULT STDMETHODCALLTYPE put_DataElementPath(LONG index, BSTR value) override {
        return PutSlot<&ShowControl::SetDataElementPath>(index, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataLMObject(LONG index, LONG* out) override {
        return Get<&ShowControl::DataLMObject>(out, index);
    }
    HRESULT STDMETHODCALLTYPE put_DataLMObject(LONG index, LONG value) override {
        return PutSlot<&ShowControl::SetDataLMObject>(index, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataType(LONG index, ::VexaDataTypeConstants* out) override {
        return Get<&ShowControl::DataType>(out, index);
    }
    HRESULT STDMETHODCALLTYPE put_DataType(LONG index, ::VexaDataTypeConstants value) override {
        return PutSlot<&ShowControl::SetDataType>(index, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataVariableName(LONG index, BSTR* out) override {
        return Get<&ShowControl::DataVariableName>(out, index);
    }
    HRESULT STDMETHODCALLTYPE put_DataVariableName(LONG index, BSTR value) override {
        return PutSlot<&ShowControl::SetDataVariableName>(index, value);
    }

    // Methods
    /// oVar holds the variable, or refers to one that does. A failure is not reported.
    HRESULT STDMETHODCALLTYPE RefreshDisplay(VARIANT* oVar) override;
    HRESULT STDMETHODCALLTYPE ShowAboutBox() override;
};

}  // namespace kiv::server
