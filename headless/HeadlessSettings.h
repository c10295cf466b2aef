// A store of settings in memory. All its calls fail while fails is set.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/HostError.h"
#include "platform/SettingsStore.h"

namespace kiv::headless {

class HeadlessSettings final : public SettingsStore {
public:
    using Values = std::map<std::u16string, Value, std::less<>>;

    std::unique_ptr<SettingsKey> OpenKey(std::u16string_view path) override {
        ++calls;
        const auto known = keys.find(path);
        if (fails || known == keys.end()) throw HostError(ErrorNumber::ObjectNotSet);
        return std::make_unique<Key>(known->second);
    }
    std::unique_ptr<SettingsKey> CreateKey(std::u16string_view path) override {
        ++calls;
        if (fails) throw HostError(ErrorNumber::ObjectNotSet);
        return std::make_unique<Key>(keys[std::u16string(path)]);
    }

    std::map<std::u16string, Values, std::less<>> keys;
    bool fails = false;
    int calls = 0;

private:
    class Key final : public SettingsKey {
    public:
        explicit Key(Values& values) : m_values(values) {}
        Value QueryValue(std::u16string_view name) override {
            const auto known = m_values.find(name);
            if (known == m_values.end()) throw HostError(ErrorNumber::ObjectNotSet);
            return known->second;
        }
        void SetNumber(std::u16string_view name, std::int32_t value) override {
            m_values[std::u16string(name)] = value;
        }

    private:
        Values& m_values;
    };
};

}  // namespace kiv::headless
