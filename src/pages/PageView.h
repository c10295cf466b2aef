// What a page asks of whatever shows it.
#pragma once

#include <string_view>

namespace kiv {

class PageField;

class PageView {
public:
    virtual ~PageView() = default;
    /// The page has given the field another text, value, list, choice or enabled state.
    virtual void ShowField(const PageField& field) = 0;
    virtual void FocusField(const PageField& field) = 0;
    /// A message box with an exclamation mark and an OK button; returns when the user is done with it.
    virtual void ShowWarning(std::u16string_view message, std::u16string_view title) = 0;
    /// The page has become changed or unchanged: there is something to apply, or nothing any more.
    virtual void OnChangedFlag(bool changed) = 0;
};

}  // namespace kiv
