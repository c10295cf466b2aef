// The sink of a help definition's events: hands them to a listener until it is detached.
#pragma once

#include "platform/FrameworkHelp.h"
#include "win32/FrameworkSink.h"

namespace kiv::win32 {

class HelpSink final : public FrameworkSink<HelpSink> {
public:
    explicit HelpSink(HelpListener& listener) noexcept : m_pListener(&listener) {}
    ~HelpSink() = default;

    static const IID& EventSet() noexcept;
    void Detach() noexcept { m_pListener = nullptr; }

    /// For FrameworkSink; 0 for members that are none.
    static UINT ArgumentCount(DISPID member) noexcept;
    void Receive(DISPID member, const VARIANT* arguments);

private:
    HelpListener* m_pListener;
};

}  // namespace kiv::win32
