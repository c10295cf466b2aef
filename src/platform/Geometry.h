// Lengths and places as the controls know them.
//
// All lengths are twips (1/1440 inch), kept unrounded; only a platform that draws turns them into pixels. A child's
// rectangle is relative to the child that contains it, or to the control surface.
#pragma once

namespace kiv {

using Twips = double;

struct Point {
    Twips x = 0;
    Twips y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    Twips width = 0;
    Twips height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    Twips left = 0;
    Twips top = 0;
    Twips width = 0;
    Twips height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace kiv
