// Reads whatever bytes come as a screen file or, where the first byte is odd, as a script file.
//
// Beyond not crashing: an unchanged screen is written back byte for byte, every value that was read is written so that
// the same value is read again, a copy of a control is the control, and the checker names lines that there are.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"
#include "screenhost/DocumentHistory.h"
#include "screenhost/ScreenCheck.h"
#include "screenhost/ScreenFile.h"
#include "screenhost/ScriptFile.h"

namespace {

using namespace screenhost;

std::size_t LinesOf(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
}

/// Every value is put anew under a key of another control, and has to come back as it was.
void CheckValues(ScreenFile& file) {
    ScreenFile other = ScreenFile::Parse({});
    ScreenSection& target = other.AddControl("Target");
    for (const ScreenSection* control : file.Controls()) {
        for (const std::string& key : control->Keys()) {
            const ScreenValue* const value = control->Find(key);
            Require(value != nullptr);
            target.Put(key, *value);
            Require(*target.Find(key) == *value);
        }
    }
    ScreenFile again = ScreenFile::Parse(other.Text());
    Require(again.Problems().empty());
    ScreenSection* const read = again.FindControl("target");
    Require(read != nullptr && read->Keys() == target.Keys());
    for (const std::string& key : target.Keys()) Require(*read->Find(key) == *target.Find(key));
}

void CheckCopies(ScreenFile& file) {
    const auto controls = file.Controls();
    if (controls.empty() || controls.size() >= ScreenFile::MaxControls) return;
    const std::string name = file.FreeName("Copy");
    ScreenSection& copy = file.AddCopy(*controls.front(), name);
    Require(copy.Keys() == controls.front()->Keys());
    ScreenFile again = ScreenFile::Parse(file.Text());
    Require(again.Controls().size() == controls.size() + 1);
    file.RemoveControl(name);
    Require(file.Controls().size() == controls.size());
    Require(file.FindControl(name) == nullptr);
}

void CheckScreenText(std::string_view text) {
    ScreenFile file = ScreenFile::Parse(text);
    Require(file.Text() == text);
    for (const Problem& problem : file.Problems()) Require(problem.line >= 1 && problem.line <= LinesOf(text));
    for (const Finding& finding : CheckScreen(file)) Require(finding.line >= 1 && finding.line <= LinesOf(text));
    Require(file.Text() == text);
    CheckValues(file);
    CheckCopies(file);
    DocumentHistory history;
    history.Reset(std::string(text));
    history.Commit(file.Text(), "edit");
    if (history.CanUndo()) Require(history.Undo() == text);
}

void CheckScriptText(std::string_view text) {
    const ScriptFile script = ScriptFile::Parse(text);
    for (const Problem& problem : script.Problems()) Require(problem.line >= 1 && problem.line <= LinesOf(text));
    for (const ScriptStep& step : script.Steps()) {
        Require(step.line >= 1 && step.line <= LinesOf(text));
        Require(step.verb <= Verb::Screenshot);
        if (step.verb == Verb::Wait) Require(step.Number(0) >= 0);
    }
    // A step by itself reads as it did among the others.
    for (const ScriptStep& step : script.Steps()) {
        const ScriptFile alone = ScriptFile::Parse(step.text);
        Require(alone.Problems().empty() && alone.Steps().size() == 1);
        Require(alone.Steps().front().verb == step.verb && alone.Steps().front().arguments == step.arguments);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] % 2 == 0) {
        CheckScreenText(text);
    } else {
        CheckScriptText(text);
    }
    return 0;
}
