// A control's connection to the Vexa framework: its hidden control, made at the first use and only in run mode.
//
// A framework that is not installed fails every call; that the hidden control could not be made is remembered until the
// next Release, so that a screen full of controls does not look for it again at every property.
#pragma once

#include <cstdint>
#include <memory>

#include "common/Lifeline.h"
#include "platform/Framework.h"

namespace kiv {

class FrameworkLink {
public:
    FrameworkLink(Framework& framework, std::int16_t elementCount, DeviceValueListener& listener,
                  const Lifeline& lifeline);

    /// Whether there is any use in asking: false once the hidden control could not be made. To ask all the same fails.
    bool MayAnswer() const noexcept { return !m_bUnavailable; }

    /// Makes the hidden control where there is none so far; false where there is no framework to make it. Throws like
    /// Element. To ask for an element without it fails, which costs more than to look first.
    bool Answers() { return Find() != nullptr; }

    /// Data element object of an element, never null. Throws when the framework fails; the caller has made sure that
    /// the control is in run mode.
    DataElementPtr Element(std::int16_t index);

    /// The element controls, one after the other; never null. Throws like Element.
    std::unique_ptr<ElementWalk> Elements();

    /// Its data definition object, never null. Throws like Element.
    std::shared_ptr<DataDefinition> Definition(const DataElementPtr& element) const;

    DataElementBinding Read(const DataElementPtr& element) const;
    void Write(const DataElementPtr& element, const DataElementBinding& binding) const;

    /// Lets go of the hidden control.
    void Release() noexcept;

private:
    std::shared_ptr<HiddenControl> Find();
    std::shared_ptr<HiddenControl> Hidden();

    Framework& m_framework;
    std::int16_t m_iElementCount;
    DeviceValueListener& m_listener;
    const Lifeline& m_lifeline;
    // Shared, so that a call in progress keeps it alive when the control lets go of it meanwhile.
    std::shared_ptr<HiddenControl> m_pHidden;
    bool m_bUnavailable = false;
};

}  // namespace kiv
