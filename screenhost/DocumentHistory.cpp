#include "screenhost/DocumentHistory.h"

#include <utility>

namespace screenhost {

void DocumentHistory::Reset(std::string text) {
    m_current = std::move(text);
    m_saved = m_current;
    m_past.clear();
    m_future.clear();
}

void DocumentHistory::Settle(std::string text) {
    if (!IsChanged()) m_saved = text;
    m_current = std::move(text);
}

bool DocumentHistory::Commit(std::string text, const std::string& label, const std::string& tag) {
    if (text == m_current) return false;
    const bool joins = !tag.empty() && !m_past.empty() && m_future.empty() && m_past.back().tag == tag;
    m_future.clear();
    if (!joins) m_past.push_back({m_current, label, tag});
    m_current = std::move(text);
    Trim();
    return true;
}

void DocumentHistory::Trim() {
    std::size_t bytes = 0;
    for (const Step& step : m_past) bytes += step.text.size();
    while (!m_past.empty() && (m_past.size() > MostSteps || bytes > MostBytes)) {
        bytes -= m_past.front().text.size();
        m_past.pop_front();
    }
}

const std::string& DocumentHistory::Undo() {
    Step step = std::move(m_past.back());
    m_past.pop_back();
    std::swap(step.text, m_current);
    step.tag.clear();  // what is done next is another row of edits
    m_future.push_back(std::move(step));
    return m_current;
}

const std::string& DocumentHistory::Redo() {
    Step step = std::move(m_future.back());
    m_future.pop_back();
    std::swap(step.text, m_current);
    m_past.push_back(std::move(step));
    return m_current;
}

}  // namespace screenhost
