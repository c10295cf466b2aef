// A property page that nobody sees: writes down what its window and frame would be told.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "pages/PageField.h"
#include "pages/PageView.h"
#include "platform/UserServices.h"

namespace kiv::headless {

class HeadlessPageView final : public PageView {
public:
    void ShowField(const PageField& field) override { shown.emplace_back(field.Description().name); }
    void FocusField(const PageField& field) override { focused = field.Description().name; }
    void ShowWarning(std::u16string_view message, std::u16string_view /*title*/) override {
        warnings.emplace_back(message);
    }
    void OnChangedFlag(bool changed) override { flags.push_back(changed); }

    std::vector<bool> TakeFlags() { return std::exchange(flags, {}); }

    std::vector<std::u16string> shown;
    std::u16string focused;
    std::vector<std::u16string> warnings;
    std::vector<bool> flags;  ///< what the frame was told of the page, in order
};

/// A text box's text without the box.
class HeadlessText final : public TextSelection {
public:
    explicit HeadlessText(std::u16string content) : text(std::move(content)) {}
    std::u16string Text() const override { return text; }
    std::size_t SelStart() const override { return start; }
    void SetSelStart(std::size_t value) override {
        start = value;
        length = 0;
    }
    std::size_t SelLength() const override { return length; }
    void SetSelLength(std::size_t value) override { length = value; }

    std::u16string text;
    std::size_t start = 0;
    std::size_t length = 0;
};

}  // namespace kiv::headless
