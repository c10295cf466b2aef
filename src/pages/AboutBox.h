// The about boxes, frmAboutSetDT and frmAboutShowDT: their texts, and where these lie.
//
// The two differ in two texts. Every label is as large as its text; the three parts of the ownership line stand one
// behind the other, so that they read as one sentence. The box is as wide as its widest line.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "pages/PageDescription.h"
#include "platform/UserServices.h"

namespace kiv {

struct VersionNumbers {
    std::int32_t major = 0;
    std::int32_t minor = 0;
    std::int32_t revision = 0;
};

enum AboutLabelIndex {
    lblProductName,
    lblDescription,
    lblVersion,
    lblLegal,
    lblCompany0,
    lblCompany1,
    lblCompany2,
    AboutLabelCount,
};

struct AboutTexts {
    std::u16string caption;
    std::array<std::u16string, AboutLabelCount> labels;
    std::u16string ok;
};

/// Set or Show. Throws HostError 326 for a text that is missing.
AboutTexts LoadAboutTexts(ControlKind control, const VersionNumbers& version, UserServices& services);

/// Size of one line of text in the box's font, in pixels.
class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    struct Extent {
        int width = 0;
        int height = 0;
    };
    virtual Extent Measure(std::u16string_view text) = 0;
};

/// Pixels; rectangles are relative to the inside of the box.
struct AboutLayout {
    int width = 0;
    int height = 0;
    DialogRect icon;
    std::array<DialogRect, AboutLabelCount> labels;
    std::array<DialogRect, 2> lines;  ///< LinSep
    DialogRect ok;
};

/// resolution: pixels to the inch.
AboutLayout LayOutAboutBox(const AboutTexts& texts, TextMeasure& measure, int resolution);

}  // namespace kiv
