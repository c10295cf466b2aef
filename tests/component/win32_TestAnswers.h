// Other answers of the system for the time of a test.
#pragma once

#include "win32/SystemAnswers.h"

namespace kiv::win32::test {

class TestAnswers {
public:
    TestAnswers() : m_former(SystemAnswers::Current()) {}
    TestAnswers(const TestAnswers&) = delete;
    TestAnswers& operator=(const TestAnswers&) = delete;
    ~TestAnswers() { SystemAnswers::Current() = m_former; }

    static void UseDpi(int dpi) {
        s_dpi = dpi;
        SystemAnswers::Current().dpiOf = [](HWND) noexcept { return s_dpi; };
    }
    static void UseHighContrast(bool on) {
        s_highContrast = on;
        SystemAnswers::Current().isHighContrast = []() noexcept { return s_highContrast; };
    }

private:
    static inline int s_dpi = 96;
    static inline bool s_highContrast = false;
    SystemAnswers m_former;
};

}  // namespace kiv::win32::test
