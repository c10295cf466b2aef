// From within which calls of a control a container may do what: the two sides of the table of re-entrancy.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "PersistenceFixture.h"
#include "ScriptedFramework.h"
#include "TypeMembers.h"

namespace component {

/// Which call of a container's sink it is.
enum class SinkCall { Event, Changed, Requested };

/// Something that makes a control call its sinks.
struct Occasion {
    std::string name;
    SinkCall call;
    DISPID id;
    std::function<void()> cause;
    bool userMode = true;
    bool inactive = false;  ///< the cause is what activates it
};

/// Something that a handler does.
struct Deed {
    const char* name;
    std::function<void()> run;
    std::function<void()> check = nullptr;  ///< once all calls have returned, if the control lives
    bool raises = false;                    ///< more events than its occasion would have without it
    bool repeats = false;                   ///< at each call, not at the first one only
};

struct Form {
    const char* name;
    const TestedClass* tested;
    bool windowless;
};
void PrintTo(const Form& form, std::ostream* out);

/// A control in one of its forms, and what can be done with it.
class ReentrancyFixture : public PersistenceFixture {
protected:
    explicit ReentrancyFixture(const Form& which);

    bool IsSet() const { return &tested == &SetClass; }
    std::vector<Occasion> Events();
    /// The change of each property, and the question before it.
    std::vector<Occasion> Notifications();
    std::vector<Deed> Deeds();

    /// A new control, ready for the occasion.
    void PlaceFor(const Occasion& next);
    /// A message to a child with this class and caption, or to the control as a whole where it has no children.
    void Send(const wchar_t* windowClass, const wchar_t* caption, UINT id, WPARAM wParam);
    /// Puts a value that is valid and another one than before, and notes it.
    void PutAnother(const Member& member);
    bool CanBePut(const Member& member) const;
    /// Everything that was put last is there, except for what the occasion's own value came after.
    void ExpectLastValues();

    const Form form;
    std::vector<Member> members;
    const Occasion* occasion = nullptr;  ///< the present one
    DWORD deedCookie = 0;                ///< of the sink that does the deed
    std::vector<DWORD> otherCookies;
    int depth = 0;  ///< of the deed that raises its event again

private:
    std::vector<Occasion> UserEvents();
    void LoadFromWithin(bool bag);
    void PumpPostedInput();
    void ShowABox();

    comkit::Variant AnotherValue(const Member& member);
    comkit::Variant Read(const Member& member);
    static std::wstring Shown(const Member& member, const VARIANT& value);
    void Note(const Member& member, const VARIANT& value);
    void NoteDaylightSaving();
    void PutAll();
    std::map<DISPID, std::wstring> m_last;  ///< what was put last, by property
    comkit::ComPtr<TestVariable> m_variable = comkit::MakeObject<TestVariable>();
    comkit::ComPtr<IFontDisp> m_fonts[2] = {MakeFont(L"Tahoma", 8), MakeFont(L"Arial", 9)};
    std::vector<std::byte> m_stream;  ///< of a control with a caption of its own
    int m_number = 0;
};

}  // namespace component
