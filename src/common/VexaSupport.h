// What a control answers to the framework, member by member of IVexaSupport. Most answers are fixed; arguments are
// ignored.
#pragma once

#include <string_view>

#include "platform/Framework.h"
#include "platform/HostError.h"

namespace kiv {

class VexaSupport {
public:
    virtual ~VexaSupport() = default;

    static constexpr bool VexaShowDefault() noexcept { return true; }
    static constexpr bool VexaShowInvalid() noexcept { return true; }
    static constexpr bool VexaShowOffline() noexcept { return true; }
    static constexpr bool SupportsVexaDataDef() noexcept { return false; }
    static constexpr bool SupportsVexaHelpDef() noexcept { return true; }
    static constexpr bool SupportsVexaUIDef() noexcept { return false; }
    static constexpr bool SupportsVexaLibUIControl() noexcept { return false; }
    /// Null: none.
    static FrameworkObjectPtr VexaDataObject() noexcept { return nullptr; }
    /// Null outside run mode, and where the framework has no such object.
    virtual FrameworkObjectPtr VexaHelpObject() const = 0;
    static FrameworkObjectPtr VexaUIObject() noexcept { return nullptr; }
    /// Always fails: nobody asks who has heard SupportsVexaLibUIControl.
    [[noreturn]] static FrameworkObjectPtr VexaLibUIControl() { throw HostError(ErrorNumber::ObjectNotSet); }
    /// False: a control contains data elements, it is none itself.
    static constexpr bool VexaIsDataElement() noexcept { return false; }
    /// The control's class name.
    virtual std::u16string_view VexaDescription() const noexcept = 0;
    static constexpr bool VexaHasSubElements() noexcept { return true; }
    /// The data elements that had a variable name when the control was loaded; null outside run mode, and where the
    /// framework has no collection to put them in.
    virtual FrameworkObjectPtr VexaSubElements() const = 0;
    static constexpr bool VexaValidate() noexcept { return true; }
    /// Never throws.
    virtual void VexaSetControlFocus() = 0;
};

}  // namespace kiv
