// Everything that one control instance is given at its creation. All of it outlives the control.
#pragma once

namespace kiv {

class ApplicationHelp;
class Clock;
class Container;
class Framework;
class SettingsStore;
class Surface;
class TimerFactory;
class TimeZone;

struct ControlPlatform {
    Surface& surface;
    Container& container;
    Clock& clock;
    TimeZone& timeZone;
    TimerFactory& timers;
    SettingsStore& settings;
    Framework& framework;
    ApplicationHelp& help;
};

}  // namespace kiv
