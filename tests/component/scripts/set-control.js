// Creates the set control by ProgID, late-bound, and reads and sets every property. Run with cscript after the server
// has been registered. A failing script may end without a word: only the last line says that all went well.
var control = new ActiveXObject("KivDateTime.KivSetDateTime");
var failures = 0;

function Expect(what, wanted, got) {
    if (wanted === got) return;
    WScript.Echo("FAIL " + what + ": expected " + wanted + ", got " + got);
    ++failures;
}

function ExpectError(number, text, call) {
    var met = null;
    try {
        call();
    } catch (error) {
        met = error;
    }
    Expect("error", true, met !== null);
    if (met === null) return;
    Expect("number of the error", number, met.number & 0xFFFF);
    Expect("facility of the error", 10, (met.number >> 16) & 0x1FFF);
    Expect("text of the error", text, met.description);
}

// Name, default, another value, what that reads as.
var plain = [
    ["BackColor", 0x8000000F | 0, 255],
    ["ForeColor", 0x80000012 | 0, 0x80000005 | 0],
    ["CalBackColor", 0x80000005 | 0, 1],
    ["CalBackColorDisabled", 0x8000000F | 0, 2],
    ["CalForeColorDisabled", 0x80000010 | 0, 3],
    ["CalTitleBackColor", 0x80000002 | 0, 4],
    ["CalTitleBackColorDisabled", 0x8000000F | 0, 5],
    ["CalTitleForeColor", 0x80000009 | 0, 6],
    ["CalTitleForeColorDisabled", 0x80000010 | 0, 7],
    ["CalTrailingForeColor", 0x80000011 | 0, 8],
    ["Caption", "Set Date/Time", "By script"],
    ["Enabled", true, false],
    ["Enabled", false, true],
    ["ShowToday", true, false],
    ["StartOfWeek", 1, 7],
    ["TimeFormat", 0, 1],
    ["TimeHeight", 495, 0, 315],
    ["TimeWidth", undefined, 3000],
    ["Data12HrValue", 0, 1],
    ["Data24HrValue", 1, 5],
    ["DataInUpload", true, false],
    ["DataInUpload", false, true],
    ["UsePCDateTime", undefined, false],
    ["UsePCDateTime", false, true],
    // Numbers that come as text or as fractions are converted.
    ["TimeHeight", 315, "600", 600],
    ["StartOfWeek", 7, 2.4, 2],
    ["Caption", "By script", 12, "12"]
];
for (var i = 0; i < plain.length; ++i) {
    var name = plain[i][0];
    if (plain[i][1] !== undefined) Expect(name + " at first", plain[i][1], control[name]);
    control[name] = plain[i][2];
    Expect(name, plain[i].length > 3 ? plain[i][3] : plain[i][2], control[name]);
}
Expect("Mode", 0, control.Mode);
Expect("ShowDST", true, control.ShowDST);
Expect("ShowSeconds", false, control.ShowSeconds);

var font = control.Font;
font.Bold = true;
Expect("Font.Bold", true, control.Font.Bold);
var other = new ActiveXObject("KivDateTime.KivSetDateTime");
Expect("Font.Bold of another control", false, other.Font.Bold);
control.Font = other.Font;
Expect("Font.Bold after the change", false, control.Font.Bold);

for (var slot = 0; slot < 14; ++slot) {
    control.DataLMObject(slot) = slot * 10;
    Expect("DataLMObject", slot * 10, control.DataLMObject(slot));
    control.DataType(slot) = 3;
    Expect("DataType", 3, control.DataType(slot));
    control.DataVariableName(slot) = "v" + slot;
    Expect("DataVariableName", "v" + slot, control.DataVariableName(slot));
    control.DataElementPath(slot) = "p" + slot;
    Expect("DataElementPath", "p" + slot, control.DataElementPath(slot));
}

ExpectError(382, "Property cannot be set at run time", function () { control.Mode = 1; });
ExpectError(382, "Property cannot be set at run time", function () { control.ShowDST = false; });
ExpectError(382, "Property cannot be set at run time", function () { control.ShowSeconds = true; });
ExpectError(381, "Invalid Property array index: Must be a value between 0 and 13.",
            function () { return control.DataLMObject(14); });
ExpectError(381, "Invalid Property array index: Must be a value between 0 and 13.",
            function () { control.DataElementPath(-1) = "x"; });
ExpectError(380, "Invalid property value", function () { control.StartOfWeek = 9; });
Expect("StartOfWeek after a refused value", 2, control.StartOfWeek);

WScript.Echo(failures === 0 ? "SCRIPT PASSED" : "SCRIPT FAILED: " + failures);
