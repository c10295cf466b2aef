// What an accessibility client is told of an area of drawn labels: a group named after its first label, and in it each
// label that shows, as text. The area may lie in a window of its own or in a place of its container's.
#pragma once

#include <windows.h>

#include <oleacc.h>

#include <memory>
#include <string>
#include <vector>

#include "comkit/ComPtr.h"

namespace kiv::win32 {

/// Where the area's labels come from, asked anew for each answer.
class LabelAccessSource {
public:
    struct Facts {
        std::u16string text;
        RECT place;  ///< in pixels from the area's top left corner
        bool isEnabled;
    };
    /// The labels that show, in their order.
    virtual std::vector<Facts> LabelsForAccess() const = 0;
    struct Place {
        HWND window = nullptr;  ///< null while the area is not active
        RECT area{};            ///< in the window
        bool isOwnWindow = false;
        bool isEnabled = true;
    };
    virtual Place PlaceForAccess() const noexcept = 0;

protected:
    ~LabelAccessSource() = default;
};

/// The object outlives the source: it then answers that there is nothing any more.
comkit::ComPtr<IAccessible> MakeLabelAccess(std::weak_ptr<const LabelAccessSource> source);

/// The answer of the area's own window to WM_GETOBJECT for its client area; 0 where accessibility is not to be had.
LRESULT AnswerLabelAccess(WPARAM wParam, std::weak_ptr<const LabelAccessSource> source);

}  // namespace kiv::win32
