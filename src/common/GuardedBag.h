// A container's property bag, seen from a control that the container may destroy while the bag is being used.
#pragma once

#include <string_view>

#include "common/Lifeline.h"
#include "platform/PropertyBag.h"

namespace kiv {

class GuardedReadBag final : public PropertyBag {
public:
    GuardedReadBag(const PropertyBag& bag, const Lifeline& lifeline) : m_bag(bag), m_lifeline(lifeline) {}

    Value Read(std::u16string_view key, const Value& fallback) const override {
        return m_lifeline.CallOut([&] { return m_bag.Read(key, fallback); });
    }
    void Write(std::u16string_view /*key*/, const Value& /*value*/, const Value* /*defaultValue*/) override {}
    void ReportBadValue(std::u16string_view key) const override {
        m_lifeline.CallOut([&] { m_bag.ReportBadValue(key); });
    }

private:
    const PropertyBag& m_bag;
    const Lifeline& m_lifeline;
};

class GuardedWriteBag final : public PropertyBag {
public:
    GuardedWriteBag(PropertyBag& bag, const Lifeline& lifeline) : m_bag(bag), m_lifeline(lifeline) {}

    Value Read(std::u16string_view key, const Value& fallback) const override {
        return m_lifeline.CallOut([&] { return m_bag.Read(key, fallback); });
    }
    void Write(std::u16string_view key, const Value& value, const Value* defaultValue) override {
        m_lifeline.CallOut([&] { m_bag.Write(key, value, defaultValue); });
    }

private:
    PropertyBag& m_bag;
    const Lifeline& m_lifeline;
};

}  // namespace kiv
