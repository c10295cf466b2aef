// Plays a script, one transcript line for each step. A step that fails says why, and the next one still runs.
#pragma once

#include <cstddef>
#include <string>

#include "screenhost/DesignActions.h"
#include "screenhost/MainWindow.h"
#include "screenhost/MessagePump.h"
#include "screenhost/ScriptFile.h"
#include "screenhost/UserActions.h"
#include "screenhost/Watchdog.h"

namespace screenhost {

class ScriptPlayer {
public:
    ScriptPlayer(ScreenContext& context, MainWindow& window, MessagePump& pump, Watchdog& watchdog);

    /// Returns the number of steps that failed; lines that could not be understood count.
    std::size_t Play(const ScriptFile& script, const std::string& fileName);

private:
    using Action = void (*)(ScriptPlayer&, const ScriptStep&);
    template <auto Member>
    static void Do(ScriptPlayer& player, const ScriptStep& step) {
        (player.*Member)(step);
    }
    static Action ActionOf(Verb verb);
    void Run(const ScriptStep& step);
    HWND WindowOf(const std::string& control);

    // Waits until the condition holds, or throws with what it left in the message.
    template <class Condition>
    void Expect(const ScriptStep& step, Condition&& condition);

    void Wait(const ScriptStep& step);
    void ExpectValue(const ScriptStep& step);
    void ExpectShown(const ScriptStep& step);
    void ExpectDeviceShown(const ScriptStep& step);
    void ExpectClock(const ScriptStep& step);
    void ExpectLog(const ScriptStep& step);
    void ExpectNoLog(const ScriptStep& step) const;
    void MarkLog(const ScriptStep& step);
    void ExpectProperty(const ScriptStep& step);
    void Click(const ScriptStep& step);
    void PickDay(const ScriptStep& step);
    void TypeTime(const ScriptStep& step);
    void Press(const ScriptStep& step);
    void Key(const ScriptStep& step);
    void Set(const ScriptStep& step);
    void Device(const ScriptStep& step) const;
    void DeviceClock(const ScriptStep& step) const;
    void DeviceOffline(const ScriptStep& step) const;
    void Refresh(const ScriptStep& step);
    void Design(const ScriptStep& step);
    void RunMode(const ScriptStep& step);
    void New(const ScriptStep& step);
    void Open(const ScriptStep& step);
    void Save(const ScriptStep& step);
    void Choose(const ScriptStep& step);
    void Draw(const ScriptStep& step);
    void Select(const ScriptStep& step);
    void SelectAlso(const ScriptStep& step);
    void Drag(const ScriptStep& step);
    void DragHandle(const ScriptStep& step);
    void Tab(const ScriptStep& step);
    void TypeField(const ScriptStep& step);
    void ChooseField(const ScriptStep& step);
    void ExpectField(const ScriptStep& step);
    void ExpectFrame(const ScriptStep& step);
    void ExpectSelection(const ScriptStep& step);
    void ExpectTitle(const ScriptStep& step);
    void ChooseVariable(const ScriptStep& step);
    void ExpectPanel(const ScriptStep& step);
    void ExpectStatus(const ScriptStep& step);
    void ExpectCopied(const ScriptStep& step) const;
    void Screenshot(const ScriptStep& step);

    ScreenContext& m_context;
    MainWindow& m_window;
    MessagePump& m_pump;
    Watchdog& m_watchdog;
    UserActions m_user;
    DesignActions m_designer;
    std::size_t m_logPlace = 0;  ///< where expect-log goes on looking
};

}  // namespace screenhost
