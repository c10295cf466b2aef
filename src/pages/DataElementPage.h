// Pages "Vexa Data": one set of fields that shows and edits whichever data element slot is chosen in a list.
//
// The page keeps a record of every slot, read from the first selected control; a slot's fields go back to its record
// when another is chosen. What was edited is marked by slot and field.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pages/PropertyPage.h"

namespace kiv {

/// In what the pages of the two controls differ.
struct DataElementTraits {
    std::int32_t slotCount = 0;
    std::int16_t firstSlotName = 0;   ///< string that names slot 0; the others follow it
    bool needsVariableNames = false;  ///< slots other than 0 must not lose their variable name
};

class DataElementPage : public PropertyPage {
protected:
    DataElementPage(const PageDescription& description, const DataElementTraits& traits, const PageWorld& world);

    void SelectionChanged() override;
    /// Marks are taken away with the first control written to, so that any further one receives nothing. The first
    /// failure ends it: what was not written by then stays marked.
    void ApplyChanges() override;
    void OnEdited(PageField& field) override;

private:
    struct Slot {
        std::u16string lmObject;
        std::u16string variableName;
        std::u16string elementPath;
        std::int32_t dataType = 0;
        std::uint8_t changed = 0;
    };

    void MarkSlotChanged(std::int32_t bit);
    static bool IsSlotChanged(std::int32_t bit, const Slot& slot) noexcept { return (slot.changed & bit) != 0; }
    /// The fields' contents into the record of the slot that they show.
    void StoreSlot();
    /// The chosen slot's record into the fields.
    void ShowSlot();
    void ReadSlots(EditedObject& object);
    /// False where the page ends ApplyChanges itself.
    bool WriteSlot(std::int32_t slot, EditedObject& object);
    bool LacksVariableName(std::int32_t slot, const Slot& record) const;
    void ReportMissingName(std::int32_t slot);
    std::vector<PageEntry> SlotEntries() const;
    Slot& At(std::int32_t slot) { return m_slots[static_cast<std::size_t>(slot)]; }

    const DataElementTraits m_traits;
    std::vector<Slot> m_slots;
    std::int32_t m_lShownSlot = PageField::None;
};

class SetDT_VexaData final : public DataElementPage {
public:
    static const PageDescription Page;
    explicit SetDT_VexaData(const PageWorld& world);
};

class ShowDT_VexaData final : public DataElementPage {
public:
    static const PageDescription Page;
    explicit ShowDT_VexaData(const PageWorld& world);
};

}  // namespace kiv
