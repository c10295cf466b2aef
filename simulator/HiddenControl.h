// The framework's invisible part on a control: hands out its data elements and raises ValueReceived.
#pragma once

#include <memory>

#include "simulator/ElementObjects.h"
#include "simulator/EventSource.h"
#include "simulator/LateBound.h"
#include "simulator/PollTimer.h"
#include "simulator/VariantEnumerator.h"

namespace vexa {

class HiddenControl final : public LateBoundObject<HiddenControl> {
public:
    HiddenControl();
    ~HiddenControl();

    static std::span<const LateMember<HiddenControl>> Members();
    void* FindInterface(REFIID iid) noexcept { return m_events.Find(iid); }

    /// Hidden controls that are living.
    static long LivingCount() noexcept;

private:
    comkit::Variant GetElementCount(const LateArguments&);
    comkit::Variant PutElementCount(const LateArguments& arguments);
    comkit::Variant Element(const LateArguments& arguments);
    comkit::Variant NewEnum(const LateArguments&);
    comkit::ComPtr<IDispatch> MakeElement(std::int16_t index) const;

    EventSource m_events;
    std::shared_ptr<HiddenControlModel> m_model;
    std::shared_ptr<PollTimer> m_timer;
};

}  // namespace vexa
