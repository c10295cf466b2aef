// A control in a recording container, for all tests. A set control, unless a test asks for the other one.
#pragma once

#include <gtest/gtest.h>
#include <KivDateTime.h>

#include <string>
#include <vector>

#include "comkit/Dispatch.h"
#include "RecordingSinks.h"
#include "RecordingSite.h"
#include "Server.h"
#include "TestBag.h"

namespace component {

/// How a late-bound call ended.
struct CallResult {
    HRESULT hr = S_OK;
    HRESULT scode = S_OK;  ///< of the exception, where there was one
    std::u16string source;
    std::u16string description;
    comkit::Variant value;
};

/// Calls a member by name; args in the order in which they are written.
CallResult Invoke(IDispatch& object, const wchar_t* name, WORD flags, const std::vector<comkit::Variant>& args = {});

/// A member's value as text, as a script would print it.
std::wstring Text(const VARIANT& value);

/// What differs between the classes of controls.
struct TestedClass {
    const CLSID& clsid;
    const IID& members;
    const IID& events;
    const wchar_t* name;
};
extern const TestedClass SetClass;
extern const TestedClass ShowClass;
/// For the names of tests that run for both.
void PrintTo(const TestedClass* tested, std::ostream* out);

class ControlFixture : public testing::Test {
protected:
    explicit ControlFixture(const TestedClass& what = SetClass);
    ~ControlFixture() override;

    /// Sites and initialises a new control. The mode holds from then on.
    void Place(bool userMode);
    /// Lets the container go as it should: closed, unsited, released.
    void Remove();

    template <class T>
    comkit::ComPtr<T> As() const {
        return comkit::ComPtr<T>::From(control.Get());
    }
    IDispatch& Members() const { return *dispatch; }
    comkit::Variant Get(const wchar_t* name) const { return comkit::Call(*dispatch, name); }
    template <class T>
    void Put(const wchar_t* name, const T& value) const {
        comkit::Put(*dispatch, name, value);
    }
    std::wstring TextOf(const wchar_t* name) const { return Text(Get(name).Get()); }

    HRESULT DoVerb(LONG verb);
    HWND Window() const;
    /// The first child window, at any depth, of this class and, unless empty, this caption.
    HWND Child(const wchar_t* windowClass, const wchar_t* caption = L"") const;

    comkit::ComPtr<EventSink> AdviseEvents();
    comkit::ComPtr<NotifySink> AdviseNotifications();

    const TestedClass& tested;
    comkit::ComPtr<RecordingSite> site;
    comkit::ComPtr<IUnknown> control;
    comkit::ComPtr<IDispatch> dispatch;
    DWORD eventCookie = 0;
    DWORD notifyCookie = 0;
};

/// For tests that hold for both controls.
class BothControls : public ControlFixture, public testing::WithParamInterface<const TestedClass*> {
protected:
    BothControls() : ControlFixture(*GetParam()) {}
};
inline auto EitherControl() {
    return testing::Values(&SetClass, &ShowClass);
}
inline std::string NameOfControl(const testing::TestParamInfo<const TestedClass*>& info) {
    return info.param == &SetClass ? "SetControl" : "ShowControl";
}

/// A font object of normal weight.
comkit::ComPtr<IFontDisp> MakeFont(const wchar_t* face, int points);

/// Deletes the machine-wide memory of the "use PC" choice, which overrides what is loaded.
void ForgetRememberedChoice();

/// Advises a sink at a connection point; 0 on failure.
DWORD Advise(IUnknown* object, REFIID iid, IUnknown* sink);
HRESULT Unadvise(IUnknown* object, REFIID iid, DWORD cookie);

}  // namespace component
