#include "pages/PropertyPage.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "common/Attempt.h"
#include "common/ResourceStrings.h"
#include "platform/HostError.h"

namespace kiv {

/// Keeps the view from hearing of a flag that goes up and down.
class PropertyPage::Quiet {
public:
    explicit Quiet(PropertyPage& page) noexcept : m_page(page), m_before(page.m_bChanged) { ++page.m_iQuiet; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
    ~Quiet() { --m_page.m_iQuiet; }

    void Tell() const {
        if (m_page.m_iQuiet == 1 && m_page.m_bChanged != m_before) m_page.m_world.view.OnChangedFlag(!m_before);
    }

private:
    PropertyPage& m_page;
    bool m_before;
};

PropertyPage::PropertyPage(const PageDescription& description, const PageWorld& world)
    : m_description(description), m_world(world) {
    for (const FieldDescription& field : description.fields) m_fields.emplace_back(field, world.view);
}

PageField& PropertyPage::Field(std::u16string_view name) {
    const auto found = std::ranges::find_if(m_fields, [name](const PageField& field) { return field.Is(name); });
    if (found == m_fields.end()) throw HostError(ErrorNumber::SubscriptOutOfRange);
    return *found;
}

void PropertyPage::SetObjects(EditedObjects objects) {
    const EditedObjects former = std::exchange(m_objects, std::move(objects));
    const Quiet quiet(*this);
    SelectionChanged();
    quiet.Tell();
}

void PropertyPage::ForgetObjects() {
    const EditedObjects former = std::exchange(m_objects, {});
    ClearMask();
    SetChanged(false);
}

void PropertyPage::Apply() {
    const Quiet quiet(*this);
    SetChanged(false);
    try {
        ApplyChanges();
    } catch (...) {
        SetChanged(true);
        Attempt([&] { quiet.Tell(); });
        throw;
    }
    quiet.Tell();
}

void PropertyPage::Type(PageField& box, std::u16string_view text) {
    box.TakeText(text);
    OnEdited(box);
}

void PropertyPage::Check(PageField& box, int value) {
    box.TakeValue(value);
    OnEdited(box);
}

void PropertyPage::Choose(PageField& button) {
    ChooseOption(button);
}

void PropertyPage::Pick(PageField& list, int index) {
    list.TakeListIndex(index);
    OnEdited(list);
}

void PropertyPage::GotFocus(TextSelection& box) {
    m_world.services.SelectAllText(box);
}

void PropertyPage::KeyPress(const PageField& field, std::int16_t& keyAscii) {
    if (field.Description().kind == FieldKind::NumericBox) m_world.services.FilterNumericKey(keyAscii);
}

void PropertyPage::MarkChanged(std::int32_t bit) {
    m_lChangedMask |= bit;
    SetChanged(true);
}

void PropertyPage::SetChanged(bool changed) {
    if (m_bChanged == changed) return;
    m_bChanged = changed;
    if (m_iQuiet == 0) m_world.view.OnChangedFlag(changed);
}

bool PropertyPage::IsOwn(const EditedObject& object) const {
    return !m_description.control || object.Kind() == *m_description.control;
}

EditedObjects PropertyPage::OwnObjects() const {
    EditedObjects own;
    std::ranges::copy_if(m_objects, std::back_inserter(own), [this](const auto& object) { return IsOwn(*object); });
    return own;
}

std::shared_ptr<EditedObject> PropertyPage::FirstObject() const {
    return m_objects.empty() ? nullptr : m_objects.front();
}

void PropertyPage::LoadCaptions() {
    for (PageField& field : m_fields) {
        if (field.Description().captionId != 0) field.SetText(LoadResString(field.Description().captionId));
    }
}

void PropertyPage::ChooseOption(PageField& button) {
    if (button.Value() == 1) return;
    for (PageField& other : m_fields) {
        const FieldDescription& description = other.Description();
        if (description.kind == FieldKind::OptionButton && description.property == button.Description().property)
            other.SetValue(&other == &button ? 1 : 0);
    }
    OnEdited(button);
}

}  // namespace kiv
