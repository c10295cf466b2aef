// The framework's services for user interfaces, as pages and about boxes use them. Any member may throw.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kiv {

/// The text of a text box and what of it is selected, in UTF-16 units.
class TextSelection {
public:
    virtual ~TextSelection() = default;
    virtual std::u16string Text() const = 0;
    virtual std::size_t SelStart() const = 0;
    /// Leaves nothing selected behind the new start.
    virtual void SetSelStart(std::size_t start) = 0;
    virtual std::size_t SelLength() const = 0;
    virtual void SetSelLength(std::size_t length) = 0;
};

class UserServices {
public:
    virtual ~UserServices() = default;
    virtual void SelectAllText(TextSelection& box) = 0;
    /// A key that a number has no use for becomes 0.
    virtual void FilterNumericKey(std::int16_t& keyCode) = 0;
    virtual std::u16string FormatVersion(std::int32_t major, std::int32_t minor, std::int32_t revision) = 0;
};

}  // namespace kiv
