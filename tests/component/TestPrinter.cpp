#include "TestPrinter.h"

#include <winspool.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <sstream>

#include "comkit/Handle.h"

namespace component {

namespace {

constexpr char Description[] =
    "*PPD-Adobe: \"4.3\"\n"
    "*LanguageLevel: \"2\"\n"
    "*ColorDevice: True\n"
    "*DefaultColorSpace: RGB\n"
    "*DefaultResolution: 600dpi\n"
    "*OpenUI *PageSize: PickOne\n"
    "*DefaultPageSize: A4\n"
    "*PageSize A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n"
    "*CloseUI: *PageSize\n"
    "*DefaultImageableArea: A4\n"
    "*ImageableArea A4/A4: \"18 36 577 806\"\n"
    "*DefaultPaperDimension: A4\n"
    "*PaperDimension A4/A4: \"595 842\"\n"
    "*DefaultFont: Courier\n"
    "*Font Courier: Standard \"(002.004S)\" Standard ROM\n";

std::wstring DriverFolder() {
    wchar_t folder[MAX_PATH] = L"";
    DWORD size = 0;
    GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(folder), sizeof(folder), &size);
    return std::wstring(folder) + L"\\3\\";
}

bool WriteDescription(const std::wstring& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const comkit::UniqueKernelHandle owned(file);
    DWORD written = 0;
    return WriteFile(file, Description, sizeof(Description) - 1, &written, nullptr) != FALSE;
}

std::string ReadAndDelete(const std::wstring& path) {
    std::string text;
    {
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return text;
        const comkit::UniqueKernelHandle owned(file);
        text.resize(GetFileSize(file, nullptr));
        DWORD read = 0;
        if (!ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &read, nullptr)) read = 0;
        text.resize(read);
    }
    DeleteFileW(path.c_str());
    return text;
}

/// Five characters stand for four bytes, "z" for four zeros; the last group may be shorter.
std::vector<std::uint8_t> FromAscii85(const std::string& text) {
    std::vector<std::uint8_t> bytes;
    std::uint32_t group = 0;
    int length = 0;
    const auto add = [&](int count) {
        for (int i = 0; i < count; ++i) bytes.push_back(static_cast<std::uint8_t>(group >> (24 - 8 * i)));
        group = 0;
        length = 0;
    };
    for (const char c : text) {
        if (c == 'z' && length == 0) add(4);
        if (c < '!' || c > 'u') continue;
        group = group * 85 + static_cast<std::uint32_t>(c - '!');
        if (++length == 5) add(4);
    }
    if (length > 1) {
        const int rest = length - 1;
        for (; length < 5; ++length) group = group * 85 + 84;
        add(rest);
    }
    return bytes;
}

/// n up to 127: n + 1 bytes follow; from 129: the next one 257 - n times; 128 ends it.
std::vector<std::uint8_t> FromRunLengths(const std::vector<std::uint8_t>& coded) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t at = 0; at < coded.size() && coded[at] != 128;) {
        const std::size_t n = coded[at++];
        if (n < 128) {
            for (std::size_t i = 0; i <= n && at < coded.size(); ++i) bytes.push_back(coded[at++]);
        } else if (at < coded.size()) {
            bytes.insert(bytes.end(), 257 - n, coded[at++]);
        }
    }
    return bytes;
}

std::vector<DWORD> PixelsOf(const std::vector<std::uint8_t>& bytes) {
    std::vector<DWORD> pixels;
    for (std::size_t i = 0; i + 2 < bytes.size(); i += 3)
        pixels.push_back((DWORD{bytes[i]} << 16) | (DWORD{bytes[i + 1]} << 8) | bytes[i + 2]);
    return pixels;
}

/// The last line becomes the first.
void TurnOver(PrintedPicture& picture) {
    const auto width = static_cast<std::ptrdiff_t>(picture.width);
    const auto height = static_cast<std::ptrdiff_t>(picture.pixels.size()) / std::max<std::ptrdiff_t>(width, 1);
    for (std::ptrdiff_t top = 0; top < height / 2; ++top) {
        const auto line = picture.pixels.begin() + top * width;
        std::swap_ranges(line, line + width, picture.pixels.begin() + (height - 1 - top) * width);
    }
}

/// The pictures of a page description: "x y translate", "w h scale", "/Width n", "/Height n", "/ImageMatrix [...]",
/// "image", the coded pixels.
std::vector<PrintedPicture> PicturesOf(const std::string& page) {
    std::vector<PrintedPicture> pictures;
    PrintedPicture next;
    bool isFromBottom = false;
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
        std::istringstream words(line);
        double x = 0;
        double y = 0;
        std::string word;
        if (words >> x >> y >> word) {
            if (word == "translate") next.pageLeft = x, next.pageTop = y;
            if (word == "scale") next.pageWidth = x, next.pageHeight = y;
        } else if (line.starts_with(" /Width ")) {
            next.width = std::stoi(line.substr(8));
        } else if (line.starts_with(" /Height ")) {
            next.height = std::stoi(line.substr(9));
        } else if (line.starts_with(" /ImageMatrix [")) {
            std::istringstream matrix(line.substr(15));
            double upright = 0;
            matrix >> x >> x >> x >> upright;
            isFromBottom = upright < 0;
        } else if (line == "image") {
            std::string coded;
            std::getline(lines, coded, '~');
            next.pixels = PixelsOf(FromRunLengths(FromAscii85(coded)));
            if (isFromBottom) TurnOver(next);
            pictures.push_back(std::exchange(next, {}));
        }
    }
    return pictures;
}

/// What a glyph of the driver's fonts stands for; '?' where it is none of those that dates and captions consist of.
char CharacterOf(const std::string& glyph) {
    static const std::map<std::string, char> names{
        {"zero", '0'},  {"one", '1'},   {"two", '2'},    {"three", '3'}, {"four", '4'},    {"five", '5'},
        {"six", '6'},   {"seven", '7'}, {"eight", '8'},  {"nine", '9'},  {"colon", ':'},   {"hyphen", '-'},
        {"slash", '/'}, {"comma", ','}, {"period", '.'}, {"space", ' '}, {"uni00A0", ' '}, {"uni00AD", '-'}};
    if (glyph.size() == 1) return glyph[0];
    const auto found = names.find(glyph);
    return found == names.end() ? '?' : found->second;
}

/// Areas and texts of a page description: "x y moveto", "w 0 rlineto", "0 h rlineto", then "r g b setrgbcolor" and
/// "fill", or "clip"; "[size 0 0 -size 0 0]" for the font, "/name glyphshow".
class PageReader {
public:
    explicit PageReader(PrintedPage& page) : m_page(page) {}

    void Read(const std::string& line) {
        std::istringstream words(line);
        double x = 0;
        double y = 0;
        std::string word;
        if (line.starts_with('[')) {
            std::istringstream(line.substr(1)) >> m_text.fontHeight;
        } else if (line.starts_with('/')) {
            words >> word >> m_word;
            if (m_word == "glyphshow") Show(CharacterOf(word.substr(1)));
        } else if (words >> x >> y >> word) {
            if (word == "moveto") MoveTo(x, y);
            if (word == "rlineto") LineBy(x, y);
            if (double blue = 0; std::istringstream(word) >> blue && line.ends_with("setrgbcolor"))
                m_color = ByteOf(x) << 16 | ByteOf(y) << 8 | ByteOf(blue);
        } else if (line == "fill") {
            m_page.areas.push_back({m_area, m_color});
        } else if (line == "clip") {
            m_text.clip = m_area;
        }
    }

private:
    static DWORD ByteOf(double part) { return static_cast<DWORD>(std::lround(part * 255)); }
    void MoveTo(double x, double y) {
        m_text.left = x;
        m_text.base = y;
        m_area = {std::lround(x), std::lround(y), std::lround(x), std::lround(y)};
        m_begins = true;
    }
    // The edges of an area are drawn to the right, down and back.
    void LineBy(double x, double y) {
        if (x > 0) m_area.right += std::lround(x);
        if (y > 0) m_area.bottom += std::lround(y);
    }
    void Show(char character) {
        m_text.color = m_color;
        if (m_begins) m_page.texts.push_back(m_text);
        m_begins = false;
        m_page.texts.back().text += character;
    }

    PrintedPage& m_page;
    PrintedText m_text;
    std::string m_word;
    RECT m_area{};
    DWORD m_color = 0;
    bool m_begins = true;
};

PrintedPage PageOf(const std::string& description) {
    PrintedPage page;
    page.pictures = PicturesOf(description);
    PageReader reader(page);
    std::istringstream lines(description);
    for (std::string line; std::getline(lines, line);) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
        reader.Read(line);
    }
    return page;
}

}  // namespace

TestPrinter::TestPrinter() {
    std::wstring module = L"wineps.drv";
    std::wstring data = L"kiv-test.ppd";
    std::wstring driver = Driver();
    std::wstring name = Name();
    std::wstring type = L"RAW";
    std::wstring port = L"FILE:";
    std::wstring processor = L"winprint";
    if (GetFileAttributesW((DriverFolder() + module).c_str()) == INVALID_FILE_ATTRIBUTES) return;
    m_description = DriverFolder() + data;
    if (!WriteDescription(m_description)) return;
    DRIVER_INFO_3W driverInfo{};
    driverInfo.cVersion = 3;
    driverInfo.pName = driver.data();
    driverInfo.pDriverPath = module.data();
    driverInfo.pDataFile = data.data();
    driverInfo.pConfigFile = module.data();
    driverInfo.pDefaultDataType = type.data();
    AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driverInfo), APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY);
    PRINTER_INFO_2W printerInfo{};
    printerInfo.pPrinterName = name.data();
    printerInfo.pPortName = port.data();
    printerInfo.pDriverName = driver.data();
    printerInfo.pPrintProcessor = processor.data();
    printerInfo.pDatatype = type.data();
    m_printer = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printerInfo));
    if (m_printer) return;
    // A run that was ended in the middle may have left it.
    PRINTER_DEFAULTSW all{nullptr, nullptr, PRINTER_ALL_ACCESS};
    if (!OpenPrinterW(name.data(), &m_printer, &all)) m_printer = nullptr;
}

TestPrinter::~TestPrinter() {
    if (m_printer) {
        DeletePrinter(m_printer);
        ClosePrinter(m_printer);
    }
    std::wstring driver = Driver();
    DeletePrinterDriverW(nullptr, nullptr, driver.data());
    if (!m_description.empty()) DeleteFileW(m_description.c_str());
}

PrintedPage TestPrinter::Print(const std::function<void(HDC)>& draw) const {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const std::wstring output = std::wstring(folder) + L"kiv-printed.ps";
    {
        const comkit::UniqueMemoryDc dc(CreateDCW(L"WINSPOOL", Name(), nullptr, nullptr));
        DOCINFOW document{};
        document.cbSize = sizeof(document);
        document.lpszDocName = L"test page";
        document.lpszOutput = output.c_str();
        if (!dc || StartDocW(dc.Get(), &document) <= 0) return {};
        StartPage(dc.Get());
        draw(dc.Get());
        EndPage(dc.Get());
        EndDoc(dc.Get());
    }
    return PageOf(ReadAndDelete(output));
}

}  // namespace component
