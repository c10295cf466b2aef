// The dual interface of KivSetDateTime, mapped member by member to the control.
#pragma once

#include <KivDateTime.h>

#include "server/DispatchPart.h"
#include "server/SetMembers.h"
#include "setcontrol/SetControl.h"

namespace kiv::server {

class SetDispatchPart final : public DispatchPart<_KivSetDateTime, SetControl> {
public:
    using DispatchPart::DispatchPart;

    // Properties
    HRESULT STDMETHODCALLTYPE get_BackColor(OLE_COLOR* out) override { return Get<&SetControl::BackColor>(out); }
    HRESULT STDMETHODCALLTYPE put_BackColor(OLE_COLOR value) override {
        return Put<&SetControl::SetBackColor>(SetMember::BackColor, value);
    }
    HRESULT STDMETHODCALLTYPE get_CalBackColor(OLE_COLOR* out) override { return Get<&SetControl::CalBackColor>(out); }
    HRESULT STDMETHODCALLTYPE put_CalBackColor(OLE_COLOR value) override {
        return Put<&SetControl::SetCalBackColor>(SetMember::CalBackColor, value);
    }
    HRESULT STDMETHODCALLTYPE get_CalBackColorDisabled(OLE_COLOR* out) override {
        return Get<&SetControl::CalBackColorDisabled>(out);
    }
    HRESULT STDMETHODCALLTYPE put_CalBackColorDisabled(OLE_COLOR value) override {
        return Put<&SetControl::SetCalBackColorDisabled>(SetMember::CalBackColorDisabled, value);
    }
    HRESULT STDMETHODCALLTYPE get_CalForeColorDisabled(OLE_COLOR* out) override {
        return Get<&SetControl::CalForeColorDisabled>(out);
    }
    HRESULT STDMETHODCALLTYPE put_CalForeColorDisabled(OLE_COLOR value) override {
        return Put<&SetControl::SetCalForeColorDisabled>(SetMember::CalForeColorDisabled, value);
    }
    HRESULT STDMETHODCALLTYPE get_CalTitleBackColor(OLE_COLOR* out) override {
        return Get<&SetControl::CalTitleBackColor>(out);
    }
    HRESULT STDMETHODCALLTYPE put_CalTitleBackColor(OLE_COLOR value) override {
        return Put<&SetControl::SetCalTitleBackColor>(SetMember::CalTitleBackColor, value);
    }
    HRESULT STDMETHODCALLTYPE get_CalTitleBackColorDisabled(OLE_COLOR* out) override {
        return Get<&SetControl::CalTitleBackColorDisabled>(out);
    }
    HRESULT STDMETHODCALLTYPE put_CalTitleBackColorDisabled(OLE_COLOR value) override {
        return Put<&SetControl::SetCalTitleBackColorDisabled>(SetMember::CalTitleBackColorDisabled, value);
    }
    HRESULT STDMETHODCALLTYPE get_CalTitleForeColor(OLE_COLOR* out) override {
        return Get<&SetControl::CalTitleForeColor>(out);
    }
    HRESULT STDMETHODCALLTYPE put_CalTitleForeColor(OLE_COLOR value) override {
        return Put<&SetControl::SetCalTitleForeColor>(SetMember::CalTitleForeColor, value);
    }
    HRESULT STDMETHODCALLTYPE get_CalTitleForeColorDisabled(OLE_COLOR* out) override {
        return Get<&SetControl::CalTitleForeColorDisabled>(out);
    }
    HRESULT STDMETHODCALLTYPE put_CalTitleForeColorDisabled(OLE_COLOR value) override {
        return Put<&SetControl::SetCalTitleForeColorDisabled>(SetMember::CalTitleForeColorDisabled, value);
    }
    HRESULT STDMETHODCALLTYPE get_CalTrailingForeColor(OLE_COLOR* out) override {
        return Get<&SetControl::CalTrailingForeColor>(out);
    }
    HRESULT STDMETHODCALLTYPE put_CalTrailingForeColor(OLE_COLOR value) override {
        return Put<&SetControl::SetCalTrailingForeColor>(SetMember::CalTrailingForeColor, value);
    }
    HRESULT STDMETHODCALLTYPE get_Caption(BSTR* out) override { return Get<&SetControl::Caption>(out); }
    HRESULT STDMETHODCALLTYPE put_Caption(BSTR value) override {
        return Put<&SetControl::SetCaption>(SetMember::Caption, value);
    }
    HRESULT STDMETHODCALLTYPE get_Enabled(VARIANT_BOOL* out) override { return Get<&SetControl::Enabled>(out); }
    HRESULT STDMETHODCALLTYPE put_Enabled(VARIANT_BOOL value) override {
        return Put<&SetControl::SetEnabled>(SetMember::Enabled, value);
    }
    HRESULT STDMETHODCALLTYPE get_ForeColor(OLE_COLOR* out) override { return Get<&SetControl::ForeColor>(out); }
    HRESULT STDMETHODCALLTYPE put_ForeColor(OLE_COLOR value) override {
        return Put<&SetControl::SetForeColor>(SetMember::ForeColor, value);
    }
    HRESULT STDMETHODCALLTYPE get_Mode(::ModeSetConstants* out) override { return Get<&SetControl::Mode>(out); }
    HRESULT STDMETHODCALLTYPE put_Mode(::ModeSetConstants value) override {
        return Put<&SetControl::SetMode>(SetMember::Mode, value);
    }
    HRESULT STDMETHODCALLTYPE get_ShowDST(VARIANT_BOOL* out) override { return Get<&SetControl::ShowDST>(out); }
    HRESULT STDMETHODCALLTYPE put_ShowDST(VARIANT_BOOL value) override {
        return Put<&SetControl::SetShowDST>(SetMember::ShowDST, value);
    }
    HRESULT STDMETHODCALLTYPE get_ShowSeconds(VARIANT_BOOL* out) override { return Get<&SetControl::ShowSeconds>(out); }
    HRESULT STDMETHODCALLTYPE put_ShowSeconds(VARIANT_BOOL value) override {
        return Put<&SetControl::SetShowSeconds>(SetMember::ShowSeconds, value);
    }
    HRESULT STDMETHODCALLTYPE get_ShowToday(VARIANT_BOOL* out) override { return Get<&SetControl::ShowToday>(out); }
    HRESULT STDMETHODCALLTYPE put_ShowToday(VARIANT_BOOL value) override {
        return Put<&SetControl::SetShowToday>(SetMember::ShowToday, value);
    }
    HRESULT STDMETHODCALLTYPE get_StartOfWeek(::DayOfWeekConstants* out) override {
        return Get<&SetControl::StartOfWeek>(out);
    }
    HRESULT STDMETHODCALLTYPE put_StartOfWeek(::DayOfWeekConstants value) override {
        return Put<&SetControl::SetStartOfWeek>(SetMember::StartOfWeek, value);
    }
    HRESULT STDMETHODCALLTYPE get_TimeFormat(LONG* out) override { return Get<&SetControl::TimeFormat>(out); }
    HRESULT STDMETHODCALLTYPE put_TimeFormat(LONG value) override {
        return Put<&SetControl::SetTimeFormat>(SetMember::TimeFormat, value);
    }
    HRESULT STDMETHODCALLTYPE get_TimeHeight(LONG* out) override { return Get<&SetControl::TimeHeight>(out); }
    HRESULT STDMETHODCALLTYPE put_TimeHeight(LONG value) override {
        return Put<&SetControl::SetTimeHeight>(SetMember::TimeHeight, value);
    }
    HRESULT STDMETHODCALLTYPE get_TimeWidth(LONG* out) override { return Get<&SetControl::TimeWidth>(out); }
    HRESULT STDMETHODCALLTYPE put_TimeWidth(LONG value) override {
        return Put<&SetControl::SetTimeWidth>(SetMember::TimeWidth, value);
    }
    HRESULT STDMETHODCALLTYPE get_UsePCDateTime(VARIANT_BOOL* out) override {
        return Get<&SetControl::UsePCDateTime>(out);
    }
    HRESULT STDMETHODCALLTYPE put_UsePCDateTime(VARIANT_BOOL value) override {
        return Put<&SetControl::SetUsePCDateTime>(SetMember::UsePCDateTime, value);
    }
    HRESULT STDMETHODCALLTYPE get_Data12HrValue(LONG* out) override { return Get<&SetControl::Data12HrValue>(out); }
    HRESULT STDMETHODCALLTYPE put_Data12HrValue(LONG value) override {
        return Put<&SetControl::SetData12HrValue>(SetMember::Data12HrValue, value);
    }
    HRESULT STDMETHODCALLTYPE get_Data24HrValue(LONG* out) override { return Get<&SetControl::Data24HrValue>(out); }
    HRESULT STDMETHODCALLTYPE put_Data24HrValue(LONG value) override {
        return Put<&SetControl::SetData24HrValue>(SetMember::Data24HrValue, value);
    }
    HRESULT STDMETHODCALLTYPE get_Font(IFontDisp** out) override { return Get<&SetControl::GetFont>(out); }
    HRESULT STDMETHODCALLTYPE put_Font(IFontDisp* value) override { return putref_Font(value); }
    HRESULT STDMETHODCALLTYPE putref_Font(IFontDisp* value) override {
        return PutFont<&SetControl::SetFont>(SetMember::Font, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataInUpload(VARIANT_BOOL* out) override {
        return Get<&SetControl::DataInUpload>(out);
    }
    HRESULT STDMETHODCALLTYPE put_DataInUpload(VARIANT_BOOL value) override {
        return PutUnasked<&SetControl::SetDataInUpload>(value);
    }

    // Slots 0 to 13
    HRESULT STDMETHODCALLTYPE get_DataElementPath(LONG index, BSTR* out) override {
        return Get<&SetControl::DataElementPath>(out, index);
    }
    HRESULT STDMETHODCALLTYPE put_DataElementPath(LONG index, BSTR value) override {
        return PutSlot<&SetControl::SetDataElementPath>(index, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataLMObject(LONG index, LONG* out) override {
        return Get<&SetControl::DataLMObject>(out, index);
    }
    HRESULT STDMETHODCALLTYPE put_DataLMObject(LONG index, LONG value) override {
        return PutSlot<&SetControl::SetDataLMObject>(index, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataType(LONG index, ::VexaDataTypeConstants* out) override {
        return Get<&SetControl::DataType>(out, index);
    }
    HRESULT STDMETHODCALLTYPE put_DataType(LONG index, ::VexaDataTypeConstants value) override {
        return PutSlot<&SetControl::SetDataType>(index, value);
    }
    HRESULT STDMETHODCALLTYPE get_DataVariableName(LONG index, BSTR* out) override {
        return Get<&SetControl::DataVariableName>(out, index);
    }
    HRESULT STDMETHODCALLTYPE put_DataVariableName(LONG index, BSTR value) override {
        return PutSlot<&SetControl::SetDataVariableName>(index, value);
    }

    // Methods
    HRESULT STDMETHODCALLTYPE GetDateTimeInfo(VARIANT* vDate, VARIANT* vTime, VARIANT_BOOL* bEnableDST) override;
    HRESULT STDMETHODCALLTYPE ShowAboutBox() override;
};

}  // namespace kiv::server
