// Keeps the modeless windows of a container's frame (palettes, tool windows) out of the way of a modal dialog of the
// control's, and gives them back at the end, whatever became of the control meanwhile.
#pragma once

#include <oleidl.h>

#include <utility>

#include "comkit/ComPtr.h"

namespace kiv::server {

class ModalScope {
public:
    /// frame: null where there is none.
    explicit ModalScope(comkit::ComPtr<IOleInPlaceFrame> frame) noexcept : m_pFrame(std::move(frame)) {
        // A frame that refuses has nothing to give back.
        if (m_pFrame && FAILED(m_pFrame->EnableModeless(FALSE))) m_pFrame.Reset();
    }
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;
    ~ModalScope() {
        if (m_pFrame) m_pFrame->EnableModeless(TRUE);
    }

private:
    comkit::ComPtr<IOleInPlaceFrame> m_pFrame;
};

}  // namespace kiv::server
