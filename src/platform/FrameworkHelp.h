// How the framework tells a control about help, and the application's help file.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/Framework.h"

namespace kiv {

/// A value of an array as text, as the framework sent it; nothing where it has no text.
using HelpIDText = std::optional<std::u16string>;

/// What the framework says. IDs are help topics; 0 is none.
class HelpListener {
public:
    virtual ~HelpListener() = default;
    virtual void OnHelpContextIDChange(std::int32_t id) = 0;
    virtual void OnHelpFileChange(std::u16string_view path) = 0;
    virtual void OnWhatsThisHelpIDChange(std::int32_t id) = 0;
    /// In the order of the array, wherever its indices start.
    virtual void OnWhatsThisHelpIDsChange(std::span<const HelpIDText> ids) = 0;
};

/// The framework's help settings for one control.
class HelpDefinition : public FrameworkObject {
public:
    /// The listener must outlive the object or be detached before.
    virtual void Attach(HelpListener& listener) = 0;
    /// The listener hears nothing any more. So does the object's end.
    virtual void Detach() noexcept = 0;
};

/// The help file of the whole application.
class ApplicationHelp {
public:
    virtual ~ApplicationHelp() = default;
    virtual void SetHelpFile(std::u16string_view path) = 0;
};

}  // namespace kiv
