// The sink of the hidden control's events: hands arriving values to a listener until it is detached.
#pragma once

#include "platform/Framework.h"
#include "win32/FrameworkSink.h"

namespace kiv::win32 {

class ValueSink final : public FrameworkSink<ValueSink> {
public:
    explicit ValueSink(DeviceValueListener& listener) noexcept : m_pListener(&listener) {}
    ~ValueSink() = default;

    static const IID& EventSet() noexcept;
    void Detach() noexcept { m_pListener = nullptr; }

    /// For FrameworkSink; 0 for members that are none.
    static UINT ArgumentCount(DISPID member) noexcept;
    void Receive(DISPID member, const VARIANT* arguments);

private:
    DeviceValueListener* m_pListener;
};

}  // namespace kiv::win32
