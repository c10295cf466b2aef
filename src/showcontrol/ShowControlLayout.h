// Where the two labels of KivShowDateTime stand, side by side and of one height, and how large the control is with
// them.
//
// ComputeShowControlLayout is plain arithmetic over measured sizes; ShowControlLayout measures, computes and moves. All
// lengths are twips.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Geometry.h"
#include "showcontrol/ShowControlContext.h"
#include "showcontrol/ShowDisplay.h"

namespace kiv {

inline constexpr std::int16_t MinLabelHeight = 195;
inline constexpr std::int16_t MinCaptionWidth = 435;
inline constexpr std::int16_t MinValueWidth = 750;
inline constexpr std::int16_t PreferredLabelWidth = 2445;

/// The floors of the labels' sizes, for the texts and the font of this moment.
struct ShowMinimumSizes {
    std::int16_t captionWidth = MinCaptionWidth;
    std::int16_t captionHeight = MinLabelHeight;
    std::int16_t valueWidth = MinValueWidth;
    std::int16_t valueHeight = MinLabelHeight;
};

struct ShowControlMeasures {
    ShowMinimumSizes minimum;
    Size control;
    Size caption;
    Size value;
    bool lockCaption = false;
    bool lockValue = false;
    bool sizeSetExplicitly = false;  ///< the labels' widths stand, and their heights count
};

struct ShowControlPlaces {
    Size control;
    Rect lblCaption;
    Rect lblValue;
};

ShowControlPlaces ComputeShowControlLayout(const ShowControlMeasures& measures);

/// Whole twips as a 16-bit number, halves to even; the nearest bound where they do not fit.
std::int16_t ToShortTwips(Twips length) noexcept;

class ShowControlLayout {
public:
    ShowControlLayout(ShowControlContext& context, ShowDisplay& display) : m_context(context), m_display(display) {}

    ShowMinimumSizes MinimumSizes();

    /// Moves the labels and makes the control as large as they need. Does nothing while properties are loaded (the end
    /// of the load does it once, with everything known), or while it is running already.
    void Resize();

    /// The labels' sizes as they were loaded hold; the control takes its size from them.
    void EndLoad();

    /// A size set by program, at least minimum. Announced under key where the label's size is another one afterwards.
    void SetLabelExtent(Label& label, Twips Rect::*extent, std::int16_t twips, std::int16_t minimum,
                        std::u16string_view key);

private:
    ShowControlMeasures Measure(const ShowMinimumSizes& minimum);
    void Place(const ShowControlPlaces& places);

    ShowControlContext& m_context;
    ShowDisplay& m_display;
};

}  // namespace kiv
