// The one exception with which the simulated device and framework report a failed call.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace vexa {

class SimulatorError final : public std::exception {
public:
    enum class Reason {
        Offline,
        UnknownVariable,
        ReadOnly,
        BadValue,
        NotWriteEnabled,
        NoSuchElement,
        InjectedFailure,
    };

    SimulatorError(Reason reason, std::u16string text) : m_reason(reason), m_text(std::move(text)) {}
    Reason Why() const noexcept { return m_reason; }
    /// For people; one line.
    const std::u16string& Text() const noexcept { return m_text; }
    const char* what() const noexcept override { return "vexa::SimulatorError"; }

private:
    Reason m_reason;
    std::u16string m_text;
};

}  // namespace vexa
