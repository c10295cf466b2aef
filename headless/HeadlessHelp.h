// The framework's collection, help definition and application help in memory.
//
// note is called with each call's text before it happens ("add 3" by the collection's count, "walk", "attach"); what it
// throws makes the call fail.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/FrameworkHelp.h"

namespace kiv::headless {

using NoteCall = std::function<void(const std::string& call)>;

class HeadlessCollection final : public Collection {
public:
    explicit HeadlessCollection(NoteCall note) : m_note(std::move(note)) {}

    void Add(const DataElementPtr& element) override {
        m_note("add " + std::to_string(items.size() + 1));
        items.push_back(element);
    }
    void Walk() override {
        ++walks;
        m_note("walk");
    }

    std::vector<DataElementPtr> items;
    int walks = 0;

private:
    NoteCall m_note;
};

class HeadlessHelp final : public HelpDefinition {
public:
    explicit HeadlessHelp(NoteCall note) : m_note(std::move(note)) {}

    void Attach(HelpListener& itsListener) override {
        m_note("attach");
        listener = &itsListener;
    }
    void Detach() noexcept override { listener = nullptr; }

    HelpListener* listener = nullptr;  ///< null while detached

private:
    NoteCall m_note;
};

/// The framework raises the event on a help object that a control handed out. Without effect where there is none, or
/// nobody listens.
inline void FireHelpFile(const FrameworkObjectPtr& help, std::u16string_view path) {
    const auto object = std::dynamic_pointer_cast<HeadlessHelp>(help);
    if (object && object->listener) object->listener->OnHelpFileChange(path);
}
inline void FireHelpContextID(const FrameworkObjectPtr& help, std::int32_t id) {
    const auto object = std::dynamic_pointer_cast<HeadlessHelp>(help);
    if (object && object->listener) object->listener->OnHelpContextIDChange(id);
}
inline void FireWhatsThisID(const FrameworkObjectPtr& help, std::int32_t id) {
    const auto object = std::dynamic_pointer_cast<HeadlessHelp>(help);
    if (object && object->listener) object->listener->OnWhatsThisHelpIDChange(id);
}
inline void FireWhatsThisIDs(const FrameworkObjectPtr& help, const std::vector<HelpIDText>& ids) {
    const auto object = std::dynamic_pointer_cast<HeadlessHelp>(help);
    if (object && object->listener) object->listener->OnWhatsThisHelpIDsChange(ids);
}

class HeadlessApplicationHelp final : public ApplicationHelp {
public:
    void SetHelpFile(std::u16string_view path) override {
        if (onSet) onSet();
        helpFile = path;
    }

    std::u16string helpFile;
    std::function<void()> onSet;
};

}  // namespace kiv::headless
