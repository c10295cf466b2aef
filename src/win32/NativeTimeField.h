// Time field: the native date and time picker with spin buttons. The spin buttons are a window of their own inside it;
// what happens to them happens to the time field.
//
// A digit that does not complete its field counts when the field is left: so the native picker does it.
#pragma once

#include <string>

#include "win32/ChildWidget.h"

namespace kiv::win32 {

class NativeTimeField final : public WidgetOf<TimeField> {
public:
    NativeTimeField(std::shared_ptr<SurfaceContext> context, WidgetWindow& parent);

    DateTime Value() const override;
    void SetValue(const DateTime& value) override;
    std::u16string Format() const override { return m_strFormat; }
    void SetFormat(std::u16string_view format) override;
    void TakeFocus() override { PutFocus(); }

private:
    WindowDescription Describe() const override;
    void OnOpened() override;
    void KeepState() override;
    bool ClicksByMouse() const noexcept override { return true; }
    void OnNotify(const NMHDR& header) override;
    AccessibleFacts Access() const override;
    LRESULT RunNative(NativeWindow& native, const Message& message) override;

    void ApplyFormat() const;
    void ApplyValue() const;

    DateTime m_value;  ///< while there is a window: what it was when somebody was told or told us last
    std::u16string m_strFormat = u"HH:mm";
};

}  // namespace kiv::win32
