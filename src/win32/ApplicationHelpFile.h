// The help file of the whole process, and the showing of its topics: a .hlp file by the system's help program, a .chm
// file by the HTML Help control where there is one.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/FrameworkHelp.h"

namespace kiv::win32 {

struct HelpRequest {
    HWND asking;  ///< the window that help is for
    std::int32_t topic;
    bool popUp;  ///< in a small window beside asking, for a part that was pointed at
};

class ApplicationHelpFile final : public ApplicationHelp {
public:
    void SetHelpFile(std::u16string_view path) override;

    /// False where there is no topic (0), no help file that exists, or nothing that could show it.
    static bool Show(const HelpRequest& request);

    /// Shows a topic of an existing file.
    using Viewer = bool (*)(const std::wstring& file, const HelpRequest& request);
    /// Another one than the system's; null for that.
    static void UseViewer(Viewer viewer) noexcept;
};

}  // namespace kiv::win32
