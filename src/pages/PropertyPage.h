// A property page: fills its fields from the selected controls, remembers which of them the user edits, and writes
// those back to all selected controls on Apply.
//
// What an edit marks, how fields are filled and how they are written is up to each page (SelectionChanged, OnEdited,
// ApplyChanges). One thread. Selected controls are called in the middle of filling and applying; they may call back,
// even with another selection: a selection that is being worked on stays alive until that is done.
#pragma once

#include <cstdint>
#include <deque>
#include <string_view>

#include "pages/EditedObject.h"
#include "pages/PageDescription.h"
#include "pages/PageField.h"
#include "pages/PageView.h"
#include "platform/UserServices.h"

namespace kiv {

/// Outlives the page.
struct PageWorld {
    PageView& view;
    UserServices& services;
};

class PropertyPage {
public:
    PropertyPage(const PageDescription& description, const PageWorld& world);
    virtual ~PropertyPage() = default;
    PropertyPage(const PropertyPage&) = delete;
    PropertyPage& operator=(const PropertyPage&) = delete;

    const PageDescription& Description() const noexcept { return m_description; }
    /// As the description lists them; they stay where they are for the life of the page.
    std::deque<PageField>& Fields() noexcept { return m_fields; }
    const std::deque<PageField>& Fields() const noexcept { return m_fields; }
    /// Throws HostError 9 where there is no field of this name.
    PageField& Field(std::u16string_view name);

    /// Fills the page from another selection; unapplied edits are forgotten.
    void SetObjects(EditedObjects objects);
    /// Lets go of the selection without filling the page anew.
    void ForgetObjects();
    /// Whether there are edits to apply.
    bool IsDirty() const noexcept { return m_bChanged; }
    /// Throws what a page lets out of its ApplyChanges; then it stays dirty.
    void Apply();

    // What the user did.
    void Type(PageField& box, std::u16string_view text);
    void Check(PageField& box, int value);
    void Choose(PageField& button);
    void Pick(PageField& list, int index);
    /// A field got the keyboard; box is its text. Only text boxes come here.
    void GotFocus(TextSelection& box);
    /// A character typed into a field; 0 swallows it.
    void KeyPress(const PageField& field, std::int16_t& keyAscii);

protected:
    virtual void SelectionChanged() = 0;
    virtual void ApplyChanges() = 0;
    /// The user, or the page on his behalf, changed a field.
    virtual void OnEdited(PageField& field) { MarkChanged(field.Description().bit); }

    void MarkChanged(std::int32_t bit);
    bool IsChanged(std::int32_t bit) const noexcept { return (m_lChangedMask & bit) > 0; }
    void ClearMask() noexcept { m_lChangedMask = 0; }
    void SetChanged(bool changed);

    /// The selected controls of the page's own class; all of them where the page takes any.
    EditedObjects OwnObjects() const;
    /// Null where nothing is selected.
    std::shared_ptr<EditedObject> FirstObject() const;
    bool IsOwn(const EditedObject& object) const;
    const EditedObjects& Objects() const noexcept { return m_objects; }

    /// Gives every field that has one its text from the string table. Throws HostError 326.
    void LoadCaptions();
    /// Chooses an option button as a click on it does.
    void ChooseOption(PageField& button);
    PageWorld& World() noexcept { return m_world; }

private:
    class Quiet;

    const PageDescription& m_description;
    PageWorld m_world;
    std::deque<PageField> m_fields;
    EditedObjects m_objects;
    std::int32_t m_lChangedMask = 0;
    bool m_bChanged = false;
    int m_iQuiet = 0;  ///< filling or applying: the view hears of the outcome only
};

}  // namespace kiv
