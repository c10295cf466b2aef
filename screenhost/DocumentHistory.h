// A document's past and future as whole texts: undo, redo, and whether there is anything to save.
//
// Screens are small, so that every step keeps the text before it; the oldest steps go when there are too many.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace screenhost {

class DocumentHistory {
public:
    static constexpr std::size_t MostSteps = 200;
    static constexpr std::size_t MostBytes = std::size_t{32} * 1024 * 1024;

    /// A new or an opened document: no past, nothing to save.
    void Reset(std::string text);
    /// The document as it is now has been saved.
    void MarkSaved() { m_saved = m_current; }
    bool IsChanged() const noexcept { return m_current != m_saved; }
    const std::string& Current() const noexcept { return m_current; }
    /// The same document in another spelling: nothing that was saved becomes unsaved by it.
    void Settle(std::string text);

    /// The document after an edit. A step that carries the same tag as the one before goes with it, so that a row of
    /// small edits is undone at once; an empty tag goes with nothing. False when nothing has changed.
    bool Commit(std::string text, const std::string& label, const std::string& tag = {});

    bool CanUndo() const noexcept { return !m_past.empty(); }
    bool CanRedo() const noexcept { return !m_future.empty(); }
    /// What would be undone or redone; empty where nothing can be.
    std::string UndoLabel() const { return CanUndo() ? m_past.back().label : std::string(); }
    std::string RedoLabel() const { return CanRedo() ? m_future.back().label : std::string(); }
    /// The text to go to. To be called only where it can be.
    const std::string& Undo();
    const std::string& Redo();

private:
    struct Step {
        std::string text;  ///< of the other side of the step
        std::string label;
        std::string tag;
    };
    void Trim();

    std::string m_current;
    std::string m_saved;
    std::deque<Step> m_past;
    std::vector<Step> m_future;
};

}  // namespace screenhost
