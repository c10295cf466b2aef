// The pages as they are drawn, at whatever resolution the test runs: no text is cut off.
#include "PageFixture.h"
#include "WindowPictures.h"

namespace component {
namespace {

using kiv::FieldKind;
using kiv::PageId;

constexpr int PageCount = 8;
constexpr int NormalResolution = 96;

/// What a control has round its text, in pixels at 96 to the inch.
SIZE BorderOf(FieldKind kind) {
    switch (kind) {
        case FieldKind::CheckBox:
        case FieldKind::OptionButton:
            return {18, 0};
        case FieldKind::Frame:
            return {16, 0};
        case FieldKind::DropDown:
            return {8, 0};
        case FieldKind::TextBox:
        case FieldKind::NumericBox:
            return {0, 2};
        case FieldKind::Label:
            break;
    }
    return {0, 0};
}

std::wstring TextOfWindow(HWND window) {
    wchar_t text[512] = L"";
    GetWindowTextW(window, text, 512);
    return text;
}

/// The longest of a list's texts.
std::wstring WidestEntry(HWND list, HDC dc) {
    std::wstring widest;
    LONG width = 0;
    for (LRESULT i = 0; i < SendMessageW(list, CB_GETCOUNT, 0, 0); ++i) {
        wchar_t text[256] = L"";
        SendMessageW(list, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        SIZE size{};
        GetTextExtentPoint32W(dc, text, static_cast<int>(wcslen(text)), &size);
        if (size.cx > width) {
            width = size.cx;
            widest = text;
        }
    }
    return widest;
}

class PageLook : public PageFixture {
protected:
    void ExpectRoomFor(const kiv::FieldDescription& field, const std::wstring& text, HDC dc) const {
        const HWND window = Field(field.name.data());
        RECT place{};
        GetWindowRect(window, &place);
        RECT needed{0, 0, place.right - place.left, 0};
        const bool wraps = text.size() > 60;
        DrawTextW(dc, text.c_str(), -1, &needed, DT_CALCRECT | (wraps ? DT_WORDBREAK : DT_SINGLELINE));
        const SIZE border = BorderOf(field.kind);
        const int resolution = GetDeviceCaps(dc, LOGPIXELSX);
        EXPECT_LE(needed.right + MulDiv(border.cx, resolution, NormalResolution), place.right - place.left)
            << std::string(field.name.begin(), field.name.end());
        if (field.kind == FieldKind::Frame) return;
        EXPECT_LE(needed.bottom + MulDiv(border.cy, resolution, NormalResolution), place.bottom - place.top)
            << std::string(field.name.begin(), field.name.end());
    }
};

TEST_F(PageLook, CutsOffNoText) {
    set.Put(L"DataVariableName", 13, L"nviSetYear");
    for (int number = 0; number < PageCount; ++number) {
        const auto which = static_cast<PageId>(number);
        const bool isShow = kiv::DescriptionOf(which).control == kiv::ControlKind::Show;
        Open(which, {isShow ? show.object.Get() : set.object.Get()});
        SCOPED_TRACE(number);
        // The longest headings that there are.
        if (which == PageId::SetDT_VexaData) Pick(u"cboDataObject", 13);
        const comkit::WindowDc dc(PageWindow());
        const comkit::GdiSelection font(dc.Get(),
                                        reinterpret_cast<HFONT>(SendMessageW(PageWindow(), WM_GETFONT, 0, 0)));
        for (const kiv::FieldDescription& field : kiv::DescriptionOf(which).fields) {
            const HWND window = Field(field.name.data());
            const bool isList = field.kind == FieldKind::DropDown;
            const std::wstring text = isList ? WidestEntry(window, dc.Get()) : TextOfWindow(window);
            ExpectRoomFor(field, text, dc.Get());
            if (!isList) continue;
            COMBOBOXINFO parts{};
            parts.cbSize = sizeof(parts);
            ASSERT_TRUE(GetComboBoxInfo(window, &parts));
            SIZE size{};
            GetTextExtentPoint32W(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
            EXPECT_LE(size.cx, parts.rcItem.right - parts.rcItem.left);
        }
        const auto name = kiv::DescriptionOf(which).name;
        LeavePicture(PageWindow(), "page-" + std::string(name.begin(), name.end()));
    }
}

}  // namespace
}  // namespace component
