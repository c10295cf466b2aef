// A control of the core as a property page's selected object: properties by name, as a container's late-bound call
// reaches them. Writes down what is put ("TimeHeight", "DataType 3"), and fails where a test wants it to.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "common/ValueConversion.h"
#include "pages/EditedObject.h"
#include "platform/HostError.h"
#include "setcontrol/SetControl.h"
#include "showcontrol/ShowControl.h"

namespace kiv::headless {

class HeadlessEditedControl final : public EditedObject {
public:
    /// The control outlives the object.
    explicit HeadlessEditedControl(SetControl& control);
    explicit HeadlessEditedControl(ShowControl& control);

    ControlKind Kind() const override { return kind; }
    Value Get(std::u16string_view property) override { return GetAt(property, 0); }
    void Put(std::u16string_view property, const Value& value) override;
    Value GetAt(std::u16string_view property, std::int32_t index) override;
    void PutAt(std::u16string_view property, std::int32_t index, const Value& value) override;

    std::vector<std::string> TakePuts() { return std::exchange(puts, {}); }

    ControlKind kind;
    std::vector<std::string> puts;                             ///< those that were asked for, refused ones included
    std::function<void(std::u16string_view property)> onCall;  ///< runs before every call; may throw
    std::function<void(std::u16string_view property, Value& answer)> onAnswer;  ///< may put another in its place

private:
    struct Member {
        std::function<Value(std::int32_t)> get;
        std::function<void(std::int32_t, const Value&)> put;
    };

    template <class Control>
    void AddShared(Control& control);
    template <class Control, class Result, class Argument>
    void Add(const char16_t* name, Control& control, Result (Control::*get)() const, void (Control::*put)(Argument));
    template <class Control, class Result, class Argument>
    void AddIndexed(const char16_t* name, Control& control, Result (Control::*get)(std::int32_t),
                    void (Control::*put)(std::int32_t, Argument));
    const Member& Find(std::u16string_view property);
    void Note(std::u16string_view property, std::string_view suffix);

    std::map<std::u16string, Member, std::less<>> m_members;
};

}  // namespace kiv::headless
