// Everything that one show control instance is given at its creation. All of it outlives the control.
#pragma once

namespace kiv {

class ApplicationHelp;
class Clock;
class Container;
class Framework;
class LabelArea;
class RegionalNames;

struct ShowPlatform {
    LabelArea& area;
    Container& container;
    Clock& clock;
    RegionalNames& names;
    Framework& framework;
    ApplicationHelp& help;
};

}  // namespace kiv
