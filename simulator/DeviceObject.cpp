#include "simulator/DeviceObject.h"

#include <utility>

#include "comkit/Bstr.h"
#include "comkit/Registration.h"
#include "simulator/ComErrors.h"
#include "simulator/DecimalText.h"
#include "simulator/HiddenControl.h"
#include "simulator/Module.h"
#include "simulator/OleDate.h"
#include "simulator/Simulation.h"

namespace vexa {

using comkit::Bstr;
using comkit::ComPtr;
using comkit::ThrowIfFailed;

namespace {

ComPtr<ITypeInfo> LoadDeviceTypeInfo() {
    ComPtr<ITypeLib> library;
    ThrowIfFailed(LoadTypeLibEx(comkit::ModulePath(ThisModule()).c_str(), REGKIND_NONE, library.Put()));
    ComPtr<ITypeInfo> info;
    ThrowIfFailed(library->GetTypeInfoOfGuid(IID_IVexaSimulatorDevice, info.Put()));
    return info;
}

VARIANT_BOOL VariantBool(bool value) noexcept {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

VariableAddress ByNameOrPath(BSTR name) noexcept {
    VariableAddress address;
    address.name = comkit::ViewOf(name);
    address.path = address.name;
    return address;
}

[[noreturn]] void ThrowBadValue(const char16_t* text) {
    throw SimulatorError(SimulatorError::Reason::BadValue, text);
}

/// What somebody did to the device itself stands in the log between what the controls did.
void Note(std::u16string line) {
    Simulation::Instance().Framework().Log().Add(std::move(line));
}

const VariableInfo& VariableAt(LONG index) {
    const auto& variables = DeviceVariables();
    if (index < 0 || static_cast<std::size_t>(index) >= variables.size())
        throw SimulatorError(SimulatorError::Reason::NoSuchElement, u"the device has no such variable");
    return variables[static_cast<std::size_t>(index)];
}

/// Gets a plain value into an out-parameter.
template <class T, class Get>
HRESULT Answer(T* out, Get&& get) noexcept {
    if (!out) return E_POINTER;
    *out = T{};
    return GuardedWithErrorInfo([&] { *out = get(); });
}

}  // namespace

DeviceObject::DeviceObject() : m_typeInfo(LoadDeviceTypeInfo()) {}

void* DeviceObject::FindInterface(REFIID iid) noexcept {
    return IsEqualIID(iid, IID_IDispatch) ? static_cast<IDispatch*>(this) : nullptr;
}

HRESULT DeviceObject::InterfaceSupportsErrorInfo(REFIID iid) {
    return IsEqualIID(iid, IID_IVexaSimulatorDevice) ? S_OK : S_FALSE;
}

HRESULT DeviceObject::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
}

HRESULT DeviceObject::GetTypeInfo(UINT index, LCID, ITypeInfo** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    m_typeInfo.CopyTo(out);
    return S_OK;
}

HRESULT DeviceObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return m_typeInfo->GetIDsOfNames(names, count, ids);
}

HRESULT DeviceObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* info,
                             UINT* argument) {
    // The system does not get properties that are called as methods.
    if (flags & DISPATCH_METHOD) flags |= DISPATCH_PROPERTYGET;
    return m_typeInfo->Invoke(static_cast<IVexaSimulatorDevice*>(this), id, flags, params, result, info, argument);
}

HRESULT DeviceObject::get_Now(DATE* value) {
    return Answer(value, [] { return ToOleDate(Simulation::Instance().Device().Now()); });
}

HRESULT DeviceObject::put_Now(DATE value) {
    return GuardedWithErrorInfo([&] { Simulation::Instance().Device().SetNow(FromOleDate(value)); });
}

HRESULT DeviceObject::get_Value(BSTR name, BSTR* value) {
    return Answer(value, [&] {
        DeviceModel& device = Simulation::Instance().Device();
        return Bstr(device.Peek(ByNameOrPath(name), device.Now())).Detach();
    });
}

HRESULT DeviceObject::put_Value(BSTR name, BSTR value) {
    return GuardedWithErrorInfo([&] {
        Simulation::Instance().Device().Force(ByNameOrPath(name), comkit::ViewOf(value));
        Note(u"at the device: " + std::u16string(comkit::ViewOf(name)).append(u" = ").append(comkit::ViewOf(value)));
    });
}

HRESULT DeviceObject::get_Offline(VARIANT_BOOL* value) {
    return Answer(value, [] { return VariantBool(Simulation::Instance().Device().IsOffline()); });
}

HRESULT DeviceObject::put_Offline(VARIANT_BOOL value) {
    return GuardedWithErrorInfo([&] {
        DeviceModel& device = Simulation::Instance().Device();
        const bool offline = value != VARIANT_FALSE;
        if (offline != device.IsOffline()) Note(offline ? u"the device goes offline" : u"the device is online again");
        device.SetOffline(offline);
    });
}

HRESULT DeviceObject::Refresh() {
    return GuardedWithErrorInfo([] { Simulation::Instance().Framework().Refresh(); });
}

HRESULT DeviceObject::get_LogCount(LONG* value) {
    return Answer(value, [] { return static_cast<LONG>(Simulation::Instance().Framework().Log().Count()); });
}

HRESULT DeviceObject::get_LogLine(LONG index, BSTR* value) {
    return Answer(value, [&] {
        // A negative index lies beyond every line.
        const std::u16string* const line =
            Simulation::Instance().Framework().Log().Line(static_cast<std::size_t>(index));
        if (!line) throw SimulatorError(SimulatorError::Reason::NoSuchElement, u"the log has no such line");
        return Bstr(*line).Detach();
    });
}

HRESULT DeviceObject::ClearLog() {
    return GuardedWithErrorInfo([] { Simulation::Instance().Framework().Log().Clear(); });
}

HRESULT DeviceObject::get_RefuseWrites(VARIANT_BOOL* value) {
    return Answer(value, [] { return VariantBool(Simulation::Instance().Device().RefusesWrites()); });
}

HRESULT DeviceObject::put_RefuseWrites(VARIANT_BOOL value) {
    return GuardedWithErrorInfo([&] {
        DeviceModel& device = Simulation::Instance().Device();
        const bool refuse = value != VARIANT_FALSE;
        if (refuse != device.RefusesWrites())
            Note(refuse ? u"the device rejects writes" : u"the device takes writes again");
        device.SetRefusesWrites(refuse);
    });
}

HRESULT DeviceObject::get_FailNext(LONG* value) {
    return Answer(value, [] { return LONG{Simulation::Instance().Framework().FailNext()}; });
}

HRESULT DeviceObject::put_FailNext(LONG value) {
    return GuardedWithErrorInfo([&] {
        if (value < -1) ThrowBadValue(u"a count of calls, or -1 for all");
        Simulation::Instance().Framework().SetFailNext(value);
    });
}

HRESULT DeviceObject::get_PollInterval(LONG* value) {
    return Answer(value, [] { return static_cast<LONG>(Simulation::Instance().PollInterval()); });
}

HRESULT DeviceObject::put_PollInterval(LONG value) {
    return GuardedWithErrorInfo([&] {
        constexpr LONG Shortest = 10;
        if (value < Shortest) ThrowBadValue(u"the shortest interval is 10 milliseconds");
        Simulation::Instance().SetPollInterval(static_cast<std::uint32_t>(value));
        PollTimer::RestartShared();
    });
}

HRESULT DeviceObject::get_HiddenControlCount(LONG* value) {
    return Answer(value, [] { return HiddenControl::LivingCount(); });
}

HRESULT DeviceObject::Reset() {
    return GuardedWithErrorInfo([] {
        Simulation::Instance().Reset();
        PollTimer::RestartShared();
    });
}

HRESULT DeviceObject::get_ClockPaused(VARIANT_BOOL* value) {
    return Answer(value, [] { return VariantBool(Simulation::Instance().Device().IsClockPaused()); });
}

HRESULT DeviceObject::put_ClockPaused(VARIANT_BOOL value) {
    return GuardedWithErrorInfo([&] {
        DeviceModel& device = Simulation::Instance().Device();
        const bool paused = value != VARIANT_FALSE;
        if (paused == device.IsClockPaused()) return;
        device.SetClockPaused(paused);
        Note(paused ? u"the device's clock stands still" : u"the device's clock runs again");
    });
}

HRESULT DeviceObject::get_ResponseTime(LONG* value) {
    return Answer(value, [] { return static_cast<LONG>(Simulation::Instance().Device().ResponseTime().count()); });
}

HRESULT DeviceObject::put_ResponseTime(LONG value) {
    return GuardedWithErrorInfo([&] {
        if (value < 0) ThrowBadValue(u"a response takes no time or some, not less");
        DeviceModel& device = Simulation::Instance().Device();
        const std::chrono::milliseconds time(value);
        if (time == device.ResponseTime()) return;
        device.SetResponseTime(time);
        Note(value > 0 ? u"the device answers one read in " + ToDecimal(value) + u" ms"
                       : std::u16string(u"the device answers at once again"));
    });
}

HRESULT DeviceObject::get_VariableCount(LONG* value) {
    return Answer(value, [] { return static_cast<LONG>(VariableCount); });
}

HRESULT DeviceObject::get_VariableName(LONG index, BSTR* value) {
    return Answer(value, [&] { return Bstr(VariableAt(index).name).Detach(); });
}

HRESULT DeviceObject::get_VariableType(LONG index, LONG* value) {
    return Answer(value, [&] { return LONG{VariableAt(index).dataType}; });
}

}  // namespace vexa
