#include "screenhost/ExchangeOutcome.h"

namespace screenhost {

namespace {

constexpr std::string_view ReadMark = "value ";
constexpr std::string_view WriteMark = "write value ";
constexpr std::string_view FailureMark = " failed: ";

/// "nvoHour" of "value 2: nvoHour = 14".
std::string_view VariableOf(std::string_view line) {
    const std::size_t start = line.find(": ");
    if (start == std::string_view::npos) return {};
    line.remove_prefix(start + 2);
    return line.substr(0, line.find(" = "));
}

std::string Count(std::size_t count, std::string_view one, std::string_view several) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : several);
}

}  // namespace

bool ExchangeOutcome::Take(std::string_view line) {
    if (!line.starts_with(m_kind == Kind::Read ? ReadMark : WriteMark)) return false;
    const std::string_view variable = VariableOf(line);
    if (m_kind == Kind::Read) {
        const bool isNew = m_read.emplace(variable).second;
        m_done = m_read.size();
        return isNew;
    }
    const std::size_t failure = line.rfind(FailureMark);
    if (failure == std::string_view::npos) {
        ++m_done;
    } else {
        if (m_refused++ == 0)
            m_reason = std::string(variable) + ": " + std::string(line.substr(failure + FailureMark.size()));
    }
    return true;
}

std::string ExchangeOutcome::Text() const {
    return m_kind == Kind::Read ? TextOfRead() : TextOfWrite();
}

std::string ExchangeOutcome::TextOfRead() const {
    if (m_done == 0) return "Nothing was read: no value came from the device.";
    return Count(m_done, "value was", "values were") + " read from the device.";
}

std::string ExchangeOutcome::TextOfWrite() const {
    if (m_done + m_refused == 0) return "Nothing was written: no control has a value.";
    if (m_refused == 0) return Count(m_done, "value was", "values were") + " written to the device.";
    const std::string written = m_done == 0 ? std::string("Nothing") : Count(m_done, "value", "values");
    return written + " written, " + std::to_string(m_refused) + " refused: " + m_reason;
}

}  // namespace screenhost
