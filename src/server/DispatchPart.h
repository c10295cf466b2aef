// A control's own dual interface: how its members reach the control. A class derived from it is the table of them.
//
// Whatever is called first gives the control its defaults where the container has not loaded it. Members that are
// marked so in the type library ask the property sinks before they change anything, and raise error 383 where a sink
// refuses.
#pragma once

#include "platform/HostError.h"
#include "server/AutomationTypes.h"
#include "server/DualPart.h"

namespace kiv::server {

template <class Dual, class Control>
class DispatchPart : public DualPart<Dual> {
public:
    DispatchPart(ControlHost& host, Control& control) : DualPart<Dual>(host), m_control(control) {}

    /// As ComPart, and IDispatch: whoever queries for it gets this interface's.
    void* Find(REFIID iid) noexcept {
        if (IsEqualIID(iid, IID_IDispatch)) return static_cast<IDispatch*>(this);
        return DualPart<Dual>::Find(iid);
    }

protected:
    ~DispatchPart() = default;

    /// Runs a member's body, which is given the control.
    template <class Body>
    HRESULT Run(Body body) {
        return AtBoundaryOf(this->Owner(), [&] {
            this->Host().EnsureInitialized();
            return body(m_control);
        });
    }

    template <auto Getter, class Out, class... Index>
    HRESULT Get(Out* out, Index... index) {
        if (!out) return E_POINTER;
        *out = Out{};
        return Run([&](Control& control) { Hand((control.*Getter)(index...), *out); });
    }

    template <auto Setter, class In>
    HRESULT Put(DISPID member, In value) {
        return Run([&](Control& control) {
            AskToEdit(member);
            (control.*Setter)(Taken(value));
        });
    }

    /// 16-bit numbers have the type of automation's Booleans and are taken as they are.
    template <auto Setter>
    HRESULT PutShort(DISPID member, SHORT value) {
        return Run([&](Control& control) {
            AskToEdit(member);
            (control.*Setter)(value);
        });
    }

    /// A member that asks nobody.
    template <auto Setter, class In>
    HRESULT PutUnasked(In value) {
        return Run([&](Control& control) { (control.*Setter)(Taken(value)); });
    }

    template <auto Setter, class In>
    HRESULT PutSlot(LONG index, In value) {
        return Run([&](Control& control) { (control.*Setter)(index, Taken(value)); });
    }

    template <auto Setter>
    HRESULT PutFont(DISPID member, IFontDisp* value) {
        return AtBoundaryOf(this->Owner(), [&] {
            const FontPtr font = win32::WrapFont(value);
            if (!font) throw HostError(ErrorNumber::InvalidPropertyValue);
            this->Host().EnsureInitialized();
            AskToEdit(member);
            (m_control.*Setter)(font);
        });
    }

private:
    /// Throws HostError 383 where a container that watches the member does not allow a change now.
    void AskToEdit(DISPID member) {
        if (!this->Host().RequestEdit(member)) throw HostError(ErrorNumber::PropertyReadOnly);
    }

    Control& m_control;
};

}  // namespace kiv::server
