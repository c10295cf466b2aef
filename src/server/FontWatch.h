// Watches the font object of a control: whoever holds it may change it in place, and the control has to follow.
#pragma once

#include <ocidl.h>

#include <functional>
#include <memory>

#include "comkit/ComObject.h"
#include "platform/Font.h"
#include "win32/OleFont.h"

namespace kiv::server {

class FontWatch final : private win32::OleFont::Watcher {
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

    void OnObjectMade() override;
    void Advise(IFont& object);

    std::function<void()> m_changed;
    std::shared_ptr<win32::OleFont> m_pUnmade;  ///< nobody can have changed it: it has no object yet
    comkit::ComPtr<IUnknown> m_pFont;
    comkit::ComPtr<IConnectionPoint> m_pPoint;
    comkit::ComPtr<Sink> m_pSink;
    DWORD m_cookie = 0;
};

}  // namespace kiv::server
