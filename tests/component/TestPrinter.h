// A colour printer of 600 dots per inch that prints into a file, and what it printed: the pictures on its page. It is
// installed for as long as this lives, over the PostScript driver of the system, where the system has one (Wine).
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace component {

struct PrintedPicture {
    int width = 0;  ///< of the picture itself, in pixels
    int height = 0;
    double pageLeft = 0;  ///< where it lies on the page, in dots
    double pageTop = 0;
    double pageWidth = 0;
    double pageHeight = 0;
    std::vector<DWORD> pixels;  ///< 0x00RRGGBB each, line by line from the top
};

class TestPrinter {
public:
    TestPrinter();
    TestPrinter(const TestPrinter&) = delete;
    TestPrinter& operator=(const TestPrinter&) = delete;
    ~TestPrinter();

    /// False where no such printer can be had.
    bool IsThere() const noexcept { return m_printer != nullptr; }
    static const wchar_t* Name() noexcept { return L"Kiv Test Printer"; }
    static const wchar_t* Driver() noexcept { return L"Kiv Test Printer Driver"; }

    /// One page. Pictures in the order in which they were drawn.
    std::vector<PrintedPicture> Print(const std::function<void(HDC)>& draw) const;

private:
    std::wstring m_description;  ///< file that tells the driver what kind of printer it is
    HANDLE m_printer = nullptr;
};

}  // namespace component
