// What the tests of both controls share: a host that writes down the events that users cause, and errors by number.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/HostError.h"

namespace kiv {

/// Writes down each event; onEvent may do what a host's handler may.
template <typename Events>
class RecordingInput : public Events {
public:
    void Click() override { Note("Click"); }
    void DblClick() override { Note("DblClick"); }
    void KeyUp(std::int16_t& keyCode, std::int16_t& /*shift*/) override { Key("KeyUp", keyCode); }
    void KeyPress(std::int16_t& keyAscii) override { Key("KeyPress", keyAscii); }
    void KeyDown(std::int16_t& keyCode, std::int16_t& /*shift*/) override { Key("KeyDown", keyCode); }
    void MouseDown(std::int16_t& button, std::int16_t& shift, float& x, float& y) override {
        Mouse("MouseDown", button, shift, x, y);
    }
    void MouseMove(std::int16_t& button, std::int16_t& shift, float& x, float& y) override {
        Mouse("MouseMove", button, shift, x, y);
    }
    void MouseUp(std::int16_t& button, std::int16_t& shift, float& x, float& y) override {
        Mouse("MouseUp", button, shift, x, y);
    }
    std::vector<std::string> Take() { return std::exchange(events, {}); }

    std::vector<std::string> events;
    std::function<void(const std::string&)> onEvent;
    std::int16_t keyAnswer = -1;  ///< what the key handlers leave; -1 leaves the key alone
    float mouseX = 0;
    float mouseY = 0;

protected:
    void Note(const std::string& event) {
        events.push_back(event);
        // A copy: the handler may destroy this object's owner.
        if (const auto handler = onEvent) handler(event);
    }

private:
    void Key(const std::string& name, std::int16_t& key) {
        const std::string event = name + " " + std::to_string(key);
        if (keyAnswer >= 0) key = keyAnswer;
        Note(event);
    }
    void Mouse(const std::string& name, std::int16_t button, std::int16_t shift, float x, float y) {
        mouseX = x;
        mouseY = y;
        Note(name + " " + std::to_string(button) + " " + std::to_string(shift));
    }
};

/// The number of the HostError that call throws; 0 where it throws none.
template <typename Call>
std::int32_t ErrorOf(Call&& call) {
    try {
        call();
        return 0;
    } catch (const HostError& error) {
        return error.Number();
    }
}

}  // namespace kiv
