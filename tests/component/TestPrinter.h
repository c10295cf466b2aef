// A colour printer of 600 dots per inch that prints into a file, and what it printed: pictures, areas and texts of its
// page. It is installed for as long as this lives, over the PostScript driver of the system, where the system has one
// (Wine).
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

/// An area of one colour, in dots.
struct PrintedArea {
    RECT place{};
    DWORD color = 0;  ///< 0x00RRGGBB
};

/// Characters of one line, one font and one colour.
struct PrintedText {
    std::string text;
    double left = 0;  ///< where its base line begins, in dots
    double base = 0;
    double fontHeight = 0;  ///< of the em square, in dots
    DWORD color = 0;
    RECT clip{};  ///< what lies outside is not printed
};

/// Each kind in the order in which it was drawn.
struct PrintedPage {
    std::vector<PrintedPicture> pictures;
    std::vector<PrintedArea> areas;
    std::vector<PrintedText> texts;
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

    /// One page.
    PrintedPage Print(const std::function<void(HDC)>& draw) const;

private:
    std::wstring m_description;  ///< file that tells the driver what kind of printer it is
    HANDLE m_printer = nullptr;
};

}  // namespace component
