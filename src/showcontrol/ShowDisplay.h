// What lblValue shows: built from the six numbers, or at design time from the PC's clock, and put into the label.
//
// The text is rebuilt when it is asked for, and the formatter is set up anew only where a setting changed since. While
// properties are loaded, asking is only noted: the text is built once somebody needs it, and ValueChange waits for the
// end of the load.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "showcontrol/DisplayFormatter.h"
#include "showcontrol/ShowControlContext.h"

namespace kiv {

class ShowDisplay {
public:
    explicit ShowDisplay(ShowControlContext& context) : m_context(context) {}

    /// Rebuilds the text. Raises ValueChange, where it became another one.
    void UpdateDisplay();

    /// Something that the formatter goes by changed: the next text is built accordingly.
    void OnSettingsChanged() noexcept { m_bConfigured = false; }

    /// Builds the text that a load in progress has left for later.
    void CatchUp();

    /// After a load: catches up, and raises ValueChange where the text is another one than before.
    void EndLoad();

    std::u16string Value();

private:
    bool ShowText();
    void Configure();
    void LoadPresentDateTime();

    /// All that a text is made of, besides the settings.
    struct Content {
        std::int32_t mode = 0;
        bool sunken = false;
        DateTimeNumbers numbers;
        friend bool operator==(const Content&, const Content&) = default;
    };

    ShowControlContext& m_context;
    DisplayFormatter m_formatter;
    std::optional<Content> m_shown;  ///< what the label shows, unless a setting changed since
    bool m_bConfigured = false;
    bool m_bPending = false;        ///< a text was asked for during a load
    bool m_bChangedInLoad = false;  ///< the text changed, and ValueChange is still to come
};

}  // namespace kiv
