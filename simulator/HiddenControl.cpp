#include "simulator/HiddenControl.h"

#include "framework/FrameworkNames.h"
#include "simulator/Simulation.h"
#include "Vexa.h"

namespace vexa {

using comkit::ComPtr;
using comkit::MakeObject;
using comkit::Variant;

namespace {
long g_living = 0;
}

HiddenControl::HiddenControl() : m_events(*Identity(), DIID_HiddenControlEvents), m_timer(PollTimer::Share()) {
    m_model =
        Simulation::Instance().Framework().CreateHiddenControl([this](std::int16_t index, const std::u16string& value) {
            const ComPtr<IUnknown> alive(Identity());
            comkit::Guarded([&] { m_events.Fire(EventId::ValueReceived, index, value); });
        });
    ++g_living;
}

HiddenControl::~HiddenControl() {
    m_model->Close();
    --g_living;
}

long HiddenControl::LivingCount() noexcept {
    return g_living;
}

std::span<const LateMember<HiddenControl>> HiddenControl::Members() {
    static constexpr LateMember<HiddenControl> members[] = {
        {Member::Element, 1, CallOrGet, 1, 1, &HiddenControl::Element},
        {Member::ElementCount, 2, CallOrGet, 0, 0, &HiddenControl::GetElementCount},
        {Member::ElementCount, 2, PutKinds, 1, 1, &HiddenControl::PutElementCount},
        {L"_NewEnum", DISPID_NEWENUM, CallOrGet, 0, 0, &HiddenControl::NewEnum},
    };
    return members;
}

Variant HiddenControl::GetElementCount(const LateArguments&) {
    return Variant(m_model->ElementCount());
}

Variant HiddenControl::PutElementCount(const LateArguments& arguments) {
    m_model->SetElementCount(arguments.Short(0));
    return {};
}

ComPtr<IDispatch> HiddenControl::MakeElement(std::int16_t index) const {
    return ComPtr<IDispatch>::Adopt(MakeObject<ElementControl>(ElementHandle{m_model, index}).Detach());
}

Variant HiddenControl::Element(const LateArguments& arguments) {
    const std::int16_t index = arguments.Short(0);
    m_model->CheckIndex(index);
    return Variant(MakeElement(index).Get());
}

Variant HiddenControl::NewEnum(const LateArguments&) {
    Simulation::CheckInjectedFailure();
    ObjectList elements;
    for (std::int16_t index = 0; index < m_model->ElementCount(); ++index) elements.push_back(MakeElement(index));
    return EnumeratorOver(std::move(elements));
}

}  // namespace vexa
