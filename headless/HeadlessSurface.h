// A control surface in memory. Text is measured by a fixed rule, so that layouts are the same everywhere: in a font of
// 8.25 points a line is 195 twips high and every UTF-16 unit 75 twips wide; other sizes are in proportion.
//
// Destroy children before what contains them: the surface ends the program when that is not so.
#pragma once

#include <functional>
#include <string_view>

#include "headless/HeadlessWidgets.h"
#include "platform/System.h"
#include "platform/Widgets.h"

namespace kiv::headless {

class HeadlessSurface final : public HeadlessRoot, public HeadlessWidget<Surface> {
public:
    /// New calendars and time fields show the clock's time.
    explicit HeadlessSurface(const Clock& clock);

    void SetSize(const Size& size) override;
    Size MeasureText(std::u16string_view text) const override;
    double TwipsPerPixel() const override { return twipsPerPixel; }
    int ScrollBarWidthPixels() const override { return scrollBarWidth; }
    std::unique_ptr<Frame> CreateFrame(Widget& parent, std::u16string_view name) override;
    std::unique_ptr<CheckBox> CreateCheckBox(Widget& parent, std::u16string_view name) override;
    std::unique_ptr<Calendar> CreateCalendar(Widget& parent, std::u16string_view name) override;
    std::unique_ptr<TimeField> CreateTimeField(Widget& parent, std::u16string_view name) override;
    void SetListener(WidgetListener* listener) override { m_listener = listener; }

    const Clock& PcClock() const noexcept { return m_clock; }

    /// The container gives the control another size.
    void Resize(const Size& size);
    /// Runs in SetSize, as a container's answer to it.
    std::function<void()> onSetSize;
    int setSizeCalls = 0;
    /// Of 96 dots per inch.
    double twipsPerPixel = 15;
    int scrollBarWidth = 17;

private:
    const WidgetState* StateOf(Widget& parent) const;

    const Clock& m_clock;
};

/// Twips per twip of the standard font.
double FontScale(const FontPtr& font);

/// One line of text, by the rule above.
Size MeasureTextIn(const FontPtr& font, std::u16string_view text);

}  // namespace kiv::headless
