// A font that is nothing but its traits. Whoever holds it may change it in place.
#pragma once

#include <memory>
#include <utility>

#include "platform/Font.h"

namespace kiv::headless {

class HeadlessFont final : public Font {
public:
    explicit HeadlessFont(FontTraits traits) : m_traits(std::move(traits)) {}
    FontTraits Traits() const override { return m_traits; }
    void SetTraits(FontTraits traits) { m_traits = std::move(traits); }

private:
    FontTraits m_traits;
};

inline FontPtr MakeFont(const FontTraits& traits) {
    return std::make_shared<HeadlessFont>(traits);
}

/// The name's style does not matter; points times 10,000.
inline FontPtr MakeFont(std::u16string name, std::int64_t size = 82500) {
    FontTraits traits;
    traits.name = std::move(name);
    traits.size = size;
    return MakeFont(traits);
}

}  // namespace kiv::headless
