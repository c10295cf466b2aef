// A technician's visit as a text file: one step to a line, a verb and its arguments, comments behind a semicolon.
//
// Arguments with blanks stand in quotes. A line that cannot be understood is listed among the problems with its number;
// the other steps still load.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "screenhost/ScreenFile.h"
#include "screenhost/ScreenValue.h"

namespace screenhost {

enum class Verb {
    Wait,               // MS
    ExpectValue,        // VARIABLE TEXT
    ExpectShown,        // NAME DATE TIME           what the control shows
    ExpectDeviceShown,  // NAME                     the control shows the device's clock
    ExpectClock,        // DATE TIME                the device's clock
    ExpectLog,          // TEXT                     behind the place where the last one was found
    ExpectNoLog,        // TEXT                     behind that place
    MarkLog,            //                          the log's end becomes that place
    ExpectProperty,     // NAME PROPERTY VALUE
    Click,              // NAME TEXT
    PickDay,            // NAME DATE
    TypeTime,           // NAME TIME
    Press,              // TEXT                     a button of the host's own
    Key,                // KEY                      to the window that has the focus
    Set,                // NAME PROPERTY VALUE
    Device,             // VARIABLE TEXT
    DeviceClock,        // DATE TIME
    DeviceOffline,      // TRUE OR FALSE
    Refresh,            //                          the device sends all values again
    Design,
    RunMode,
    New,
    Open,             // FILE
    Save,             // FILE
    Choose,           // CLASS                    a row of the palette
    Draw,             // LEFT TOP WIDTH HEIGHT    with the mouse, in twips; a click where there is no size
    Select,           // NAME                     a click on the control
    SelectAlso,       // NAME                     with the Ctrl key
    Drag,             // NAME DX DY
    DragHandle,       // NAME HANDLE DX DY        the handle is named like a point of the compass
    Tab,              // TEXT                     a page of the property frame
    TypeField,        // LABEL TEXT               into a field of the page
    ChooseField,      // LABEL TEXT               an entry of a list on the page
    ExpectField,      // LABEL TEXT
    ExpectFrame,      // TRUE OR FALSE            whether a property frame is open
    ExpectSelection,  // NAMES                    with blanks between them, the leading one last
    ExpectTitle,      // TEXT                     the beginning of the main window's title
    ChooseVariable,   // VARIABLE                 a row of the device panel
    ExpectPanel,      // VARIABLE TEXT            what the device panel shows
    ExpectStatus,     // TEXT                     the beginning of the status bar's text
    ExpectCopied,     // LINES TEXT               the clipboard has so many lines, the text in each of them
    Screenshot,       // FILE
};

struct CivilDate {
    int year = 0;
    int month = 0;
    int day = 0;
    friend bool operator==(const CivilDate&, const CivilDate&) = default;
};

struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
    friend bool operator==(const TimeOfDay&, const TimeOfDay&) = default;
};

using ScriptArgument = std::variant<std::string, std::int32_t, CivilDate, TimeOfDay, ScreenValue>;

struct ScriptStep {
    std::size_t line = 0;  ///< from 1
    std::string text;      ///< as written, without comment
    Verb verb = Verb::Wait;
    std::vector<ScriptArgument> arguments;
    std::optional<std::int32_t> withinSeconds;

    const std::string& Text(std::size_t index) const { return std::get<std::string>(arguments.at(index)); }
    std::int32_t Number(std::size_t index) const { return std::get<std::int32_t>(arguments.at(index)); }
    const CivilDate& Date(std::size_t index) const { return std::get<CivilDate>(arguments.at(index)); }
    const TimeOfDay& Time(std::size_t index) const { return std::get<TimeOfDay>(arguments.at(index)); }
    const ScreenValue& Value(std::size_t index) const { return std::get<ScreenValue>(arguments.at(index)); }
};

class ScriptFile {
public:
    static constexpr std::size_t MaxBytes = std::size_t{1} * 1024 * 1024;

    /// Throws TextError for more than MaxBytes.
    static ScriptFile Parse(std::string_view text);

    const std::vector<ScriptStep>& Steps() const noexcept { return m_steps; }
    const std::vector<Problem>& Problems() const noexcept { return m_problems; }

private:
    std::vector<ScriptStep> m_steps;
    std::vector<Problem> m_problems;
};

/// One line for each verb: what it is called and what it takes.
std::string ScriptHelp();

}  // namespace screenhost
