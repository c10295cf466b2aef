// A framework that keeps its definitions in memory, writes down every call, and fails where a test wants it to.
//
// Calls are written as "read 3", "write 3 nvoMinute", "enable 3 True", "value 3 30"; the number is the element's index.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "headless/HeadlessHelp.h"
#include "platform/Framework.h"

namespace kiv::headless {

class HeadlessFramework final : public Framework {
public:
    std::unique_ptr<HiddenControl> CreateHiddenControl(std::int16_t elementCount,
                                                       DeviceValueListener& listener) override;

    CollectionPtr CreateCollection() override;
    HelpDefinitionPtr CreateHelpDefinition() override;

    /// A value arrives from the device. False where no hidden control lives.
    bool Deliver(std::int16_t index, std::u16string_view value);

    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    /// Called with each call's text before it happens; true makes it fail. May run anything. Asked as well, though not
    /// written down: "create", "element 3", the walk over the element controls ("elements", "next 3", "data 3"),
    /// "create collection", "create help" and what HeadlessHelp.h lists.
    std::function<bool(const std::string& call)> fails;
    std::vector<std::string> calls;
    std::vector<DataElementBinding> definitions;  ///< by element; kept when the hidden control goes
    std::vector<std::int16_t> walkOrder;          ///< of the element controls; empty: by number
    int created = 0;
    int living = 0;

    /// For the parts of the framework: writes down a call and throws where it is to fail.
    void Note(const std::string& call, bool writeDown = true);

private:
    NoteCall Noter() {
        return [this](const std::string& call) { Note(call, false); };
    }

    friend class HeadlessHidden;
    DeviceValueListener* m_listener = nullptr;
};

}  // namespace kiv::headless
