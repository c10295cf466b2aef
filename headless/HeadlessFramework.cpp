#include "headless/HeadlessFramework.h"

#include <numeric>

#include "platform/HostError.h"

namespace kiv::headless {

namespace {

std::string Narrow(std::u16string_view text) {
    std::string narrow;
    for (const char16_t unit : text) narrow.push_back(unit < 128 ? static_cast<char>(unit) : '?');
    return narrow;
}

class MemoryDefinition final : public DataDefinition {
public:
    MemoryDefinition(HeadlessFramework& framework, std::int16_t index) : m_framework(framework), m_index(index) {}

    DataElementBinding ReadDefinition() override {
        m_framework.Note("read " + std::to_string(m_index));
        return Stored();
    }
    void WriteDefinition(const DataElementBinding& binding) override {
        m_framework.Note("write " + std::to_string(m_index) + " " + Narrow(binding.variableName));
        Stored() = binding;
    }
    void WriteValue(std::u16string_view text, std::u16string_view display, std::u16string_view use) override {
        const bool known = display == u"NoDisplay" && use == u"UseCurrent";
        m_framework.Note("value " + std::to_string(m_index) + " " + Narrow(text) + (known ? "" : " badly"));
    }
    void SetWriteEnabled(bool enabled) override {
        m_framework.Note("enable " + std::to_string(m_index) + (enabled ? " True" : " False"));
    }

private:
    DataElementBinding& Stored() const { return m_framework.definitions.at(static_cast<std::size_t>(m_index)); }

    HeadlessFramework& m_framework;
    std::int16_t m_index;
};

class MemoryElement final : public DataElement {
public:
    MemoryElement(HeadlessFramework& framework, std::int16_t index)
        : m_definition(std::make_shared<MemoryDefinition>(framework, index)) {}
    std::shared_ptr<DataDefinition> Definition() override { return m_definition; }

private:
    std::shared_ptr<DataDefinition> m_definition;
};

class MemoryElementControl final : public ElementControl {
public:
    MemoryElementControl(HeadlessFramework& framework, std::int16_t index) : m_framework(framework), m_index(index) {}
    DataElementPtr Data() override {
        m_framework.Note("data " + std::to_string(m_index), false);
        return std::make_shared<MemoryElement>(m_framework, m_index);
    }

private:
    HeadlessFramework& m_framework;
    std::int16_t m_index;
};

class MemoryWalk final : public ElementWalk {
public:
    MemoryWalk(HeadlessFramework& framework, std::vector<std::int16_t> order)
        : m_framework(framework), m_order(std::move(order)) {}
    std::unique_ptr<ElementControl> Next() override {
        if (m_next == m_order.size()) return nullptr;
        const std::int16_t index = m_order[m_next++];
        m_framework.Note("next " + std::to_string(index), false);
        return std::make_unique<MemoryElementControl>(m_framework, index);
    }

private:
    HeadlessFramework& m_framework;
    std::vector<std::int16_t> m_order;
    std::size_t m_next = 0;
};

}  // namespace

class HeadlessHidden final : public HiddenControl {
public:
    HeadlessHidden(HeadlessFramework& framework, DeviceValueListener& listener) : m_framework(framework) {
        m_framework.m_listener = &listener;
        ++m_framework.living;
    }
    ~HeadlessHidden() override {
        m_framework.m_listener = nullptr;
        --m_framework.living;
    }
    HeadlessHidden(const HeadlessHidden&) = delete;
    HeadlessHidden& operator=(const HeadlessHidden&) = delete;

    DataElementPtr Element(std::int16_t index) override {
        m_framework.Note("element " + std::to_string(index), false);
        if (index < 0 || static_cast<std::size_t>(index) >= m_framework.definitions.size()) {
            throw HostError(ErrorNumber::SubscriptOutOfRange);
        }
        return std::make_shared<MemoryElement>(m_framework, index);
    }

    std::unique_ptr<ElementWalk> Elements() override {
        m_framework.Note("elements", false);
        std::vector<std::int16_t> order = m_framework.walkOrder;
        if (order.empty()) {
            order.resize(m_framework.definitions.size());
            std::iota(order.begin(), order.end(), std::int16_t{0});
        }
        return std::make_unique<MemoryWalk>(m_framework, std::move(order));
    }

private:
    HeadlessFramework& m_framework;
};

std::unique_ptr<HiddenControl> HeadlessFramework::CreateHiddenControl(std::int16_t elementCount,
                                                                      DeviceValueListener& listener) {
    Note("create", false);
    ++created;
    definitions.resize(static_cast<std::size_t>(elementCount));
    return std::make_unique<HeadlessHidden>(*this, listener);
}

CollectionPtr HeadlessFramework::CreateCollection() {
    Note("create collection", false);
    return std::make_shared<HeadlessCollection>(Noter());
}

HelpDefinitionPtr HeadlessFramework::CreateHelpDefinition() {
    Note("create help", false);
    return std::make_shared<HeadlessHelp>(Noter());
}

bool HeadlessFramework::Deliver(std::int16_t index, std::u16string_view value) {
    if (!m_listener) return false;
    m_listener->OnValueReceived(index, value);
    return true;
}

void HeadlessFramework::Note(const std::string& call, bool writeDown) {
    if (fails && fails(call)) throw HostError(ErrorNumber::ObjectNotSet);
    if (writeDown) calls.push_back(call);
}

}  // namespace kiv::headless
