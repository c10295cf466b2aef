// A container that records what it is told. Position units are a tenth of a twip, so that a missing or a double
// conversion shows.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/Container.h"

namespace kiv::headless {

class HeadlessContainer final : public Container {
public:
    bool UserMode() const override { return userMode; }
    FontPtr AmbientFont() const override { return ambientFont; }
    std::u16string InstanceName() const override { return instanceName; }
    void PropertyChanged(std::u16string_view key) override {
        changes.emplace_back(key);
        if (onPropertyChanged) onPropertyChanged(key);
    }
    void SetExtenderNumber(std::u16string_view name, std::int32_t value) override {
        if (onExtender) onExtender();
        extender[std::u16string(name)] = value;
    }
    void MarkDirty() override { ++dirtyMarks; }
    Point ToContainerPosition(const Point& twips) const override { return {twips.x * 10, twips.y * 10}; }

    /// What was announced since the last call.
    std::vector<std::u16string> TakeChanges() { return std::exchange(changes, {}); }

    bool userMode = true;
    FontPtr ambientFont;
    std::u16string instanceName = u"KivSetDateTime1";
    std::vector<std::u16string> changes;
    int dirtyMarks = 0;  ///< what was to be saved without being announced
    std::function<void(std::u16string_view)> onPropertyChanged;
    std::map<std::u16string, std::int32_t> extender;  ///< what the control set on its wrapper
    std::function<void()> onExtender;                 ///< runs before that; may throw
};

}  // namespace kiv::headless
