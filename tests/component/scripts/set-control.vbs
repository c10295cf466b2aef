' Creates the set control by ProgID, late-bound, and reads and sets every property. Run with cscript after the server
' has been registered. A failing script may end without a word: only the last line says that all went well.
Option Explicit
Dim control, failures
failures = 0
Set control = CreateObject("KivDateTime.KivSetDateTime")

Sub Expect(what, wanted, got)
    If wanted <> got Then
        WScript.Echo "FAIL " & what & ": expected " & wanted & ", got " & got
        failures = failures + 1
    End If
End Sub

Sub ExpectError(what, number, text, source)
    Expect what & " number", number, Err.Number
    Expect what & " text", text, Err.Description
    Expect what & " source", source, Err.Source
    Err.Clear
End Sub

' Colours: the default, then another.
Expect "BackColor", &H8000000F, control.BackColor
control.BackColor = 255: Expect "BackColor", 255, control.BackColor
Expect "ForeColor", &H80000012, control.ForeColor
control.ForeColor = &H80000005: Expect "ForeColor", &H80000005, control.ForeColor
Expect "CalBackColor", &H80000005, control.CalBackColor
control.CalBackColor = 1: Expect "CalBackColor", 1, control.CalBackColor
Expect "CalBackColorDisabled", &H8000000F, control.CalBackColorDisabled
control.CalBackColorDisabled = 2: Expect "CalBackColorDisabled", 2, control.CalBackColorDisabled
Expect "CalForeColorDisabled", &H80000010, control.CalForeColorDisabled
control.CalForeColorDisabled = 3: Expect "CalForeColorDisabled", 3, control.CalForeColorDisabled
Expect "CalTitleBackColor", &H80000002, control.CalTitleBackColor
control.CalTitleBackColor = 4: Expect "CalTitleBackColor", 4, control.CalTitleBackColor
Expect "CalTitleBackColorDisabled", &H8000000F, control.CalTitleBackColorDisabled
control.CalTitleBackColorDisabled = 5: Expect "CalTitleBackColorDisabled", 5, control.CalTitleBackColorDisabled
Expect "CalTitleForeColor", &H80000009, control.CalTitleForeColor
control.CalTitleForeColor = 6: Expect "CalTitleForeColor", 6, control.CalTitleForeColor
Expect "CalTitleForeColorDisabled", &H80000010, control.CalTitleForeColorDisabled
control.CalTitleForeColorDisabled = 7: Expect "CalTitleForeColorDisabled", 7, control.CalTitleForeColorDisabled
Expect "CalTrailingForeColor", &H80000011, control.CalTrailingForeColor
control.CalTrailingForeColor = 8: Expect "CalTrailingForeColor", 8, control.CalTrailingForeColor

' The rest.
Expect "Caption", "Set Date/Time", control.Caption
control.Caption = "By script": Expect "Caption", "By script", control.Caption
Expect "Enabled", True, control.Enabled
control.Enabled = False: Expect "Enabled", False, control.Enabled
control.Enabled = True
Expect "ShowToday", True, control.ShowToday
control.ShowToday = False: Expect "ShowToday", False, control.ShowToday
Expect "StartOfWeek", 1, control.StartOfWeek
control.StartOfWeek = 7: Expect "StartOfWeek", 7, control.StartOfWeek
Expect "TimeFormat", 0, control.TimeFormat
control.TimeFormat = 1: Expect "TimeFormat", 1, control.TimeFormat
Expect "TimeHeight", 495, control.TimeHeight
control.TimeHeight = 0: Expect "TimeHeight", 315, control.TimeHeight
control.TimeWidth = 3000: Expect "TimeWidth", 3000, control.TimeWidth
Expect "Data12HrValue", 0, control.Data12HrValue
control.Data12HrValue = 1: Expect "Data12HrValue", 1, control.Data12HrValue
Expect "Data24HrValue", 1, control.Data24HrValue
control.Data24HrValue = 5: Expect "Data24HrValue", 5, control.Data24HrValue
Expect "Mode", 0, control.Mode
Expect "ShowDST", True, control.ShowDST
Expect "ShowSeconds", False, control.ShowSeconds
Expect "DataInUpload", True, control.DataInUpload
control.DataInUpload = False: Expect "DataInUpload", False, control.DataInUpload
control.DataInUpload = True
control.UsePCDateTime = False: Expect "UsePCDateTime", False, control.UsePCDateTime
control.UsePCDateTime = True: Expect "UsePCDateTime", True, control.UsePCDateTime

Dim font, other
Set font = control.Font
font.Bold = True
Expect "Font.Bold", True, control.Font.Bold
Set control.Font = font
Set other = CreateObject("KivDateTime.KivSetDateTime")
Set control.Font = other.Font
Expect "Font.Bold of the other", False, control.Font.Bold

Dim slot
For slot = 0 To 13
    control.DataLMObject(slot) = slot * 10: Expect "DataLMObject", slot * 10, control.DataLMObject(slot)
    control.DataType(slot) = 3: Expect "DataType", 3, control.DataType(slot)
    control.DataVariableName(slot) = "v" & slot: Expect "DataVariableName", "v" & slot, control.DataVariableName(slot)
    control.DataElementPath(slot) = "p" & slot: Expect "DataElementPath", "p" & slot, control.DataElementPath(slot)
Next

Dim theDate, theTime, dst
dst = 5
control.GetDateTimeInfo theDate, theTime, dst
Expect "date", vbDate, VarType(theDate)
Expect "time", vbDate, VarType(theTime)
Expect "daylight saving", vbBoolean, VarType(dst)

On Error Resume Next
control.Mode = 1: ExpectError "Mode", 382, "Property cannot be set at run time", "KivDateTime"
control.ShowDST = False: ExpectError "ShowDST", 382, "Property cannot be set at run time", "KivDateTime"
control.ShowSeconds = True: ExpectError "ShowSeconds", 382, "Property cannot be set at run time", "KivDateTime"
slot = control.DataLMObject(14)
ExpectError "DataLMObject(14)", 381, "Invalid Property array index: Must be a value between 0 and 13.", _
    "KivSetDateTime ()"
control.StartOfWeek = 9: ExpectError "StartOfWeek", 380, "Invalid property value", "KivDateTime"
On Error Goto 0

If failures = 0 Then
    WScript.Echo "SCRIPT PASSED"
Else
    WScript.Echo "SCRIPT FAILED: " & failures
End If
