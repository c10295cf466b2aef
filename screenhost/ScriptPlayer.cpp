#include "screenhost/ScriptPlayer.h"

#include <iterator>

#include "screenhost/Clipboard.h"
#include "screenhost/ErrorText.h"
#include "screenhost/LateBound.h"
#include "screenhost/TextFile.h"
#include "screenhost/WindowPicture.h"
#include "screenhost/WindowSearch.h"

namespace screenhost {

namespace {

constexpr std::int32_t PatienceSeconds = 5;
constexpr double ClockTolerance = 5;  // seconds by which a clock may have run on
constexpr double RoundingTolerance = 1;
constexpr std::chrono::seconds SlackForAction{60};

std::chrono::seconds PatienceOf(const ScriptStep& step) {
    return std::chrono::seconds(step.withinSeconds.value_or(PatienceSeconds));
}

CivilDateTime ParseOle(double days) {
    const auto value = CivilFromOle(days);
    if (!value) throw TextError("the clock shows no date");
    return *value;
}

/// A running clock that was set to `wanted` a moment ago.
bool HasRunOn(const CivilDateTime& wanted, const CivilDateTime& found, double seconds) {
    const double since = SecondsBetween(wanted, found);
    return since >= -RoundingTolerance && since <= seconds;
}

}  // namespace

ScriptPlayer::ScriptPlayer(ScreenContext& context, MainWindow& window, MessagePump& pump, Watchdog& watchdog)
    : m_context(context),
      m_window(window),
      m_pump(pump),
      m_watchdog(watchdog),
      m_user(pump, window.Handle()),
      m_designer(m_user, pump, window) {}

ScriptPlayer::Action ScriptPlayer::ActionOf(Verb verb) {
    // In the order of the verbs.
    static constexpr Action Actions[]{
        Do<&ScriptPlayer::Wait>,
        Do<&ScriptPlayer::ExpectValue>,
        Do<&ScriptPlayer::ExpectShown>,
        Do<&ScriptPlayer::ExpectDeviceShown>,
        Do<&ScriptPlayer::ExpectClock>,
        Do<&ScriptPlayer::ExpectLog>,
        Do<&ScriptPlayer::ExpectNoLog>,
        Do<&ScriptPlayer::MarkLog>,
        Do<&ScriptPlayer::ExpectProperty>,
        Do<&ScriptPlayer::Click>,
        Do<&ScriptPlayer::PickDay>,
        Do<&ScriptPlayer::TypeTime>,
        Do<&ScriptPlayer::Press>,
        Do<&ScriptPlayer::Key>,
        Do<&ScriptPlayer::Set>,
        Do<&ScriptPlayer::Device>,
        Do<&ScriptPlayer::DeviceClock>,
        Do<&ScriptPlayer::DeviceOffline>,
        Do<&ScriptPlayer::Refresh>,
        Do<&ScriptPlayer::Design>,
        Do<&ScriptPlayer::RunMode>,
        Do<&ScriptPlayer::New>,
        Do<&ScriptPlayer::Open>,
        Do<&ScriptPlayer::Save>,
        Do<&ScriptPlayer::Choose>,
        Do<&ScriptPlayer::Draw>,
        Do<&ScriptPlayer::Select>,
        Do<&ScriptPlayer::SelectAlso>,
        Do<&ScriptPlayer::Drag>,
        Do<&ScriptPlayer::DragHandle>,
        Do<&ScriptPlayer::Tab>,
        Do<&ScriptPlayer::TypeField>,
        Do<&ScriptPlayer::ChooseField>,
        Do<&ScriptPlayer::ExpectField>,
        Do<&ScriptPlayer::ExpectFrame>,
        Do<&ScriptPlayer::ExpectSelection>,
        Do<&ScriptPlayer::ExpectTitle>,
        Do<&ScriptPlayer::ChooseVariable>,
        Do<&ScriptPlayer::ExpectPanel>,
        Do<&ScriptPlayer::ExpectStatus>,
        Do<&ScriptPlayer::ExpectCopied>,
        Do<&ScriptPlayer::Screenshot>,
    };
    static_assert(std::size(Actions) == static_cast<std::size_t>(Verb::Screenshot) + 1);
    return Actions[static_cast<std::size_t>(verb)];
}

std::size_t ScriptPlayer::Play(const ScriptFile& script, const std::string& fileName) {
    Transcript& output = m_context.log->Output();
    for (const Problem& problem : script.Problems())
        output.Line("FAILED", fileName + ":" + std::to_string(problem.line) + ": " + problem.message);
    std::size_t failed = script.Problems().size();
    for (const ScriptStep& step : script.Steps()) {
        const std::string place = fileName + ":" + std::to_string(step.line) + ": " + step.text;
        m_watchdog.Expect(place, SlackForAction + PatienceOf(step) +
                                     (step.verb == Verb::Wait ? std::chrono::seconds(step.Number(0) / 1000)
                                                              : std::chrono::seconds(0)));
        // Looking at the status bar must not change it.
        if (step.verb != Verb::ExpectStatus && step.verb != Verb::Screenshot) m_window.ShowStatus(step.text);
        try {
            Run(step);
            output.Line("ok", step.text);
        } catch (const TextError& error) {
            ++failed;
            output.Line("FAILED", place + ": " + error.what());
        }
        if (m_pump.HasQuit()) {
            output.Line("FAILED", "the window was closed before the script's end");
            return failed + 1;
        }
    }
    m_watchdog.Rest();
    m_window.ShowStatus(failed ? "The script has failed." : "The script has been played.");
    return failed;
}

void ScriptPlayer::Run(const ScriptStep& step) {
    ActionOf(step.verb)(*this, step);
    m_window.Poll();
}

HWND ScriptPlayer::WindowOf(const std::string& control) {
    const HWND window = m_window.View().Find(control).Window();
    if (!window) throw TextError(control + " has no window");
    return window;
}

template <class Condition>
void ScriptPlayer::Expect(const ScriptStep& step, Condition&& condition) {
    std::string found;
    const bool met = m_pump.RunUntil(
        [&] {
            m_window.Poll();
            return condition(found);
        },
        PatienceOf(step));
    if (!met) throw TextError(found);
}

void ScriptPlayer::Wait(const ScriptStep& step) {
    m_pump.RunFor(std::chrono::milliseconds(step.Number(0)));
}

void ScriptPlayer::ExpectValue(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const std::string value = m_context.device->Value(step.Text(0));
        found = step.Text(0) + " is " + value;
        return value == step.Text(1);
    });
}

void ScriptPlayer::ExpectShown(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const CivilDateTime shown = ShownDateTime(m_window.View().Find(step.Text(0)).Members());
        found = step.Text(0) + " shows " + Describe(shown);
        return shown == CivilDateTime{step.Date(1), step.Time(2)};
    });
}

void ScriptPlayer::ExpectDeviceShown(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const CivilDateTime shown = ShownDateTime(m_window.View().Find(step.Text(0)).Members());
        const CivilDateTime device = ParseOle(m_context.device->Now());
        found = step.Text(0) + " shows " + Describe(shown) + ", the device's clock is " + Describe(device);
        return HasRunOn(shown, device, ClockTolerance);
    });
}

void ScriptPlayer::ExpectClock(const ScriptStep& step) {
    const CivilDateTime wanted{step.Date(0), step.Time(1)};
    Expect(step, [&](std::string& found) {
        const CivilDateTime device = ParseOle(m_context.device->Now());
        found = "the device's clock is " + Describe(device);
        return HasRunOn(wanted, device, step.withinSeconds.value_or(static_cast<std::int32_t>(ClockTolerance)));
    });
}

void ScriptPlayer::ExpectLog(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const std::size_t number = m_context.log->Find(step.Text(0), m_logPlace);
        found = "no such line follows in the log";
        if (number == m_context.log->End()) return false;
        m_logPlace = number + 1;
        return true;
    });
}

void ScriptPlayer::ExpectNoLog(const ScriptStep& step) const {
    const std::size_t number = m_context.log->Find(step.Text(0), m_logPlace);
    if (number != m_context.log->End()) throw TextError("there is: " + m_context.log->At(number).text);
}

void ScriptPlayer::MarkLog(const ScriptStep&) {
    m_window.Poll();
    m_logPlace = m_context.log->End();
}

void ScriptPlayer::ExpectProperty(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const comkit::Variant value = GetMember(m_window.View().Find(step.Text(0)).Members(), step.Text(1));
        found = step.Text(1) + " is " + DescribeVariant(value.Get());
        return SameValue(value, step.Value(2));
    });
}

void ScriptPlayer::Click(const ScriptStep& step) {
    m_user.ClickCaption(WindowOf(step.Text(0)), step.Text(1));
}

void ScriptPlayer::PickDay(const ScriptStep& step) {
    m_user.PickDay(WindowOf(step.Text(0)), step.Date(1));
}

void ScriptPlayer::TypeTime(const ScriptStep& step) {
    m_user.TypeTime(WindowOf(step.Text(0)), step.Time(1));
}

void ScriptPlayer::Press(const ScriptStep& step) {
    if (m_window.Frame())
        m_designer.PressInFrame(step.Text(0));
    else
        m_user.ClickButton(step.Text(0));
}

void ScriptPlayer::Key(const ScriptStep& step) {
    m_user.PressKey(step.Text(0));
}

void ScriptPlayer::Set(const ScriptStep& step) {
    PutMember(m_window.View().Find(step.Text(0)).Members(), step.Text(1), step.Value(2));
    m_window.View().Design().Commit("Set " + step.Text(1));
    m_pump.Settle();
}

void ScriptPlayer::Device(const ScriptStep& step) const {
    m_context.device->SetValue(step.Text(0), step.Text(1));
}

void ScriptPlayer::DeviceClock(const ScriptStep& step) const {
    m_context.device->SetNow(OleFromCivil({step.Date(0), step.Time(1)}));
}

void ScriptPlayer::DeviceOffline(const ScriptStep& step) const {
    m_context.device->SetSwitch(DeviceSwitch::Offline, std::get<bool>(step.Value(0)));
}

void ScriptPlayer::Refresh(const ScriptStep&) {
    m_context.device->Refresh();
    m_pump.Settle();
}

void ScriptPlayer::Design(const ScriptStep&) {
    m_window.SwitchMode(false);
    m_pump.Settle();
}

void ScriptPlayer::RunMode(const ScriptStep&) {
    m_window.SwitchMode(true);
    m_pump.Settle();
}

void ScriptPlayer::New(const ScriptStep&) {
    m_window.NewFile();
    m_pump.Settle();
}

void ScriptPlayer::Open(const ScriptStep& step) {
    m_window.OpenFile(step.Text(0));
    m_pump.Settle();
}

void ScriptPlayer::Save(const ScriptStep& step) {
    m_window.Save(step.Text(0));
}

void ScriptPlayer::Choose(const ScriptStep& step) {
    m_designer.Choose(step.Text(0));
}

void ScriptPlayer::Draw(const ScriptStep& step) {
    m_designer.Draw({step.Number(0), step.Number(1), step.Number(2), step.Number(3)});
}

void ScriptPlayer::Select(const ScriptStep& step) {
    m_designer.Select(step.Text(0), false);
}

void ScriptPlayer::SelectAlso(const ScriptStep& step) {
    m_designer.Select(step.Text(0), true);
}

void ScriptPlayer::Drag(const ScriptStep& step) {
    m_designer.Drag(step.Text(0), step.Number(1), step.Number(2));
}

void ScriptPlayer::DragHandle(const ScriptStep& step) {
    m_designer.DragHandle(step.Text(0), step.Text(1), step.Number(2), step.Number(3));
}

void ScriptPlayer::Tab(const ScriptStep& step) {
    m_designer.TurnToPage(step.Text(0));
}

void ScriptPlayer::TypeField(const ScriptStep& step) {
    m_designer.TypeField(step.Text(0), step.Text(1));
}

void ScriptPlayer::ChooseField(const ScriptStep& step) {
    m_designer.ChooseField(step.Text(0), step.Text(1));
}

void ScriptPlayer::ExpectField(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const std::string text = m_designer.FieldText(step.Text(0));
        found = step.Text(0) + " shows \"" + text + "\"";
        return text == step.Text(1);
    });
}

void ScriptPlayer::ExpectFrame(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        found = m_window.Frame() ? "a property frame is open" : "no property frame is open";
        return std::get<bool>(step.Value(0)) == (m_window.Frame() != nullptr);
    });
}

void ScriptPlayer::ExpectSelection(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        std::string names;
        for (const std::string& name : m_window.View().Design().Model().Selected())
            names += (names.empty() ? "" : " ") + name;
        found = names.empty() ? "nothing is selected" : "selected: " + names;
        return names == step.Text(0);
    });
}

void ScriptPlayer::ExpectTitle(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const std::string title = CaptionOf(m_window.Handle());
        found = "the title is \"" + title + "\"";
        return title.starts_with(step.Text(0));
    });
}

void ScriptPlayer::ChooseVariable(const ScriptStep& step) {
    m_designer.ChooseVariable(step.Text(0));
}

void ScriptPlayer::ExpectPanel(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const std::string value = m_window.Device().ShownValue(step.Text(0));
        found = "the panel shows \"" + value + "\"";
        return value == step.Text(1);
    });
}

void ScriptPlayer::ExpectStatus(const ScriptStep& step) {
    Expect(step, [&](std::string& found) {
        const std::string text = m_window.StatusText();
        found = "the status bar shows \"" + text + "\"";
        return text.starts_with(step.Text(0));
    });
}

void ScriptPlayer::ExpectCopied(const ScriptStep& step) const {
    std::int32_t lines = 0;
    const std::string copied = GetClipboardText(m_window.Handle());
    ForEachLine(copied, [&](std::string_view line, std::string_view) {
        ++lines;
        if (line.find(step.Text(1)) == std::string_view::npos) throw TextError("there is: " + std::string(line));
    });
    if (lines != step.Number(0)) throw TextError(std::to_string(lines) + " lines were copied");
}

void ScriptPlayer::Screenshot(const ScriptStep& step) {
    m_pump.Settle();
    const PropertyFrame* const frame = m_window.Frame();
    SaveWindowPicture(frame ? frame->Handle() : m_window.Handle(), step.Text(0));
}

}  // namespace screenhost
