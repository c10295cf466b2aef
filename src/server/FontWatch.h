// Watches the font object of a control: whoever holds it may change it in place, and the control has to follow.
#pragma once

#include <ocidl.h>

#include <functional>

#include "comkit/ComObject.h"
#include "platform/Font.h"

namespace kiv::server {

class FontWatch final {
public:
    /// changed runs after each change of the watched font, until Stop().
    explicit FontWatch(std::function<void()> changed);
    FontWatch(const FontWatch&) = delete;
    FontWatch& operator=(const FontWatch&) = delete;
    ~FontWatch();

    /// Instead of the font watched so far. A font that cannot be watched, or none, is no error.
    void Watch(const FontPtr& font);
    void Stop() noexcept;

private:
    class Sink;

    std::function<void()> m_changed;
    comkit::ComPtr<IUnknown> m_pFont;
    comkit::ComPtr<IConnectionPoint> m_pPoint;
    comkit::ComPtr<Sink> m_pSink;
    DWORD m_cookie = 0;
};

}  // namespace kiv::server
