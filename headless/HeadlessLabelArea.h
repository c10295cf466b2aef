// The area of a control made of labels, in memory. Text is measured as on a HeadlessSurface.
//
// Every change of what shows counts as a repaint of that label; to set what is there already is none.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "headless/HeadlessWidgets.h"
#include "platform/Labels.h"

namespace kiv::headless {

class HeadlessLabel final : public HeadlessChild<Label> {
public:
    using HeadlessChild::HeadlessChild;

    std::u16string Caption() const override { return m_caption; }
    bool SetCaption(std::u16string_view caption) override;
    bool HasSunkenBorder() const override { return m_sunken; }
    void SetSunkenBorder(bool sunken) override { m_state.Change(m_sunken, sunken); }

    int Repaints() const noexcept { return m_state.repaints; }

private:
    std::u16string m_caption;
    bool m_sunken = false;
};

class HeadlessLabelArea final : public HeadlessRoot, public HeadlessWidget<LabelArea> {
public:
    HeadlessLabelArea() : HeadlessWidget(*this, nullptr, u"") {}

    void SetSize(const Size& size) override;
    Size MeasureText(std::u16string_view text) const override;
    double TwipsPerPixel() const override { return 15; }
    void SetListener(WidgetListener* listener) override { m_listener = listener; }
    std::unique_ptr<Label> CreateLabel(std::u16string_view name) override;

    /// The container gives the control another size.
    void Resize(const Size& size);
    /// Runs in SetSize, as a container's answer to it.
    std::function<void()> onSetSize;
    int setSizeCalls = 0;
};

}  // namespace kiv::headless
