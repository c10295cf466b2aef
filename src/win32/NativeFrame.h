// Frame: a native group box, so that the system tells its role and name, painted here in the frame's own colours. It
// holds other children and can be hit like any window, which native group boxes cannot.
#pragma once

#include "win32/ChildWidget.h"

namespace kiv::win32 {

class NativeFrame final : public WidgetOf<Frame> {
public:
    using WidgetOf::WidgetOf;

    std::u16string Caption() const override { return m_strCaption; }
    void SetCaption(std::u16string_view caption) override;

private:
    WindowDescription Describe() const override;
    bool IsParent() const noexcept override { return true; }
    bool ClicksByMouse() const noexcept override { return true; }
    bool WantsTabStop() const noexcept override { return false; }
    std::optional<LRESULT> HandleInstead(const Message& message) override;
    LRESULT RunNative(NativeWindow& native, const Message& message) override;
    AccessibleFacts Access() const override;
    void Paint(HDC dc) const;
    void PaintCaption(HDC dc, const RECT& border) const;

    std::u16string m_strCaption;
};

}  // namespace kiv::win32
