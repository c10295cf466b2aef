// The about boxes: modal, closed by their user, legible.
#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "ControlFixture.h"
#include "server/ResourceNumbers.h"
#include "WindowPictures.h"

namespace component {
namespace {

/// What is found in the box, and what it is closed with.
struct Visit {
    static Visit* current;
    std::wstring caption;
    std::vector<std::wstring> texts;
    std::vector<RECT> places;
    bool ownerDisabled = false;
    bool clipped = false;
    WPARAM closeWith = IDOK;
    std::function<void()> onBox;
    int boxes = 0;
    HWND owner = nullptr;
};
Visit* Visit::current = nullptr;

BOOL CALLBACK LookAtPart(HWND part, LPARAM) {
    wchar_t text[256] = L"";
    GetWindowTextW(part, text, 256);
    RECT place{};
    GetWindowRect(part, &place);
    Visit::current->texts.emplace_back(text);
    Visit::current->places.push_back(place);
    const comkit::WindowDc dc(part);
    const comkit::GdiSelection font(dc.Get(), reinterpret_cast<HFONT>(SendMessageW(part, WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32W(dc.Get(), text, static_cast<int>(wcslen(text)), &size);
    if (size.cx > place.right - place.left || size.cy > place.bottom - place.top) Visit::current->clipped = *text != 0;
    return TRUE;
}

std::string Narrow(std::wstring_view text) {
    std::string narrow;
    for (const wchar_t letter : text) narrow += static_cast<char>(letter);
    return narrow;
}

BOOL CALLBACK LookAtWindow(HWND window, LPARAM) {
    wchar_t text[128] = L"";
    GetWindowTextW(window, text, 128);
    if (std::wstring_view(text).substr(0, 6) != L"About " || !IsWindowVisible(window)) return TRUE;
    ++Visit::current->boxes;
    Visit::current->caption = text;
    Visit::current->owner = GetWindow(window, GW_OWNER);
    Visit::current->ownerDisabled = Visit::current->owner && !IsWindowEnabled(Visit::current->owner);
    EnumChildWindows(window, &LookAtPart, 0);
    const std::wstring control = Visit::current->caption.substr(6);
    LeavePicture(window, "about-" + Narrow(control));
    if (Visit::current->onBox) Visit::current->onBox();
    PostMessageW(window, WM_COMMAND, Visit::current->closeWith, 0);
    return FALSE;
}

/// Until the box is there.
void CALLBACK Look(HWND, UINT, UINT_PTR timer, DWORD) {
    const int boxes = Visit::current->boxes;
    EnumThreadWindows(GetCurrentThreadId(), &LookAtWindow, 0);
    if (Visit::current->boxes != boxes) KillTimer(nullptr, timer);
}

class AboutBox : public BothControls {
protected:
    void ShowIt() {
        Visit::current = &visit;
        SetTimer(nullptr, 0, 50, &Look);
        EXPECT_EQ(S_OK, Invoke(Members(), L"ShowAboutBox", DISPATCH_METHOD).hr);
        Visit::current = nullptr;
    }
    bool Has(const wchar_t* text) const { return std::ranges::find(visit.texts, text) != visit.texts.end(); }

    Visit visit;
};

TEST_P(AboutBox, HasItsTextsAndBelongsToTheControlsWindow) {
    Place(false);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_SHOW));
    ShowIt();
    ASSERT_EQ(1, visit.boxes);
    EXPECT_EQ(std::wstring(L"About ") + tested.name, visit.caption);
    EXPECT_TRUE(Has(L"Corvale Plug-in User Control for Vexa Service Tool - KivShowDateTime"));
    EXPECT_TRUE(Has(&tested == &SetClass ? L"Control used to set a device's Date and/or Time."
                                         : L"Control used to display device's Date or Time."));
    EXPECT_TRUE(Has(L"Version: 1.0.0"));
    EXPECT_TRUE(Has(L"Copyright (c) 2000 The Corvale Company. All rights reserved."));
    EXPECT_TRUE(Has(L"OK"));
    EXPECT_FALSE(visit.clipped);
    const auto first = std::ranges::find(visit.texts, L"An") - visit.texts.begin();
    ASSERT_LT(first + 2, static_cast<std::ptrdiff_t>(visit.texts.size()));
    EXPECT_EQ(L" Arden ", visit.texts[static_cast<std::size_t>(first) + 1]);
    EXPECT_EQ(L"Company", visit.texts[static_cast<std::size_t>(first) + 2]);
    for (std::ptrdiff_t i = first; i < first + 2; ++i) {
        EXPECT_EQ(visit.places[static_cast<std::size_t>(i)].right, visit.places[static_cast<std::size_t>(i) + 1].left);
        EXPECT_EQ(visit.places[static_cast<std::size_t>(i)].top, visit.places[static_cast<std::size_t>(i) + 1].top);
    }
    EXPECT_EQ(GetAncestor(site->Window(), GA_ROOT), visit.owner);
    EXPECT_TRUE(visit.ownerDisabled);
    EXPECT_TRUE(IsWindowEnabled(site->Window()));
}

constexpr int CellsPerSide = 4;
/// Red, green and blue in the mean, of each cell of a grid.
using Cells = std::array<std::array<int, 3>, std::size_t{CellsPerSide} * CellsPerSide>;

/// What the box's icon looks like on white.
Cells LookOfIcon(int size) {
    const comkit::UniqueHandle<HICON, &DestroyIcon> icon(static_cast<HICON>(
        LoadImageW(GetModuleHandleW(L"KivDateTime.ocx"), MAKEINTRESOURCEW(IconAbout), IMAGE_ICON, size, size, 0)));
    const comkit::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
    BITMAPINFO format{};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), size, size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const comkit::UniqueBitmap picture(CreateDIBSection(dc.Get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    const comkit::GdiSelection selection(dc.Get(), picture.Get());
    PatBlt(dc.Get(), 0, 0, size, size, WHITENESS);
    EXPECT_TRUE(DrawIconEx(dc.Get(), 0, 0, icon.Get(), size, size, 0, nullptr, DI_NORMAL));
    const int side = size / CellsPerSide;
    Cells cells{};
    for (int i = 0; i < size * size; ++i) {
        const int cell = i / size / side * CellsPerSide + i % size / side;
        for (int channel = 0; channel < 3; ++channel)
            cells[static_cast<std::size_t>(cell)][static_cast<std::size_t>(channel)] +=
                static_cast<const BYTE*>(bits)[4 * i + 2 - channel];
    }
    for (auto& cell : cells)
        for (int& channel : cell) channel /= side * side;
    return cells;
}

TEST(AboutBoxIcon, ComesInSizesOfItsOwnThatLookTheSame) {
    Server::Get();
    const HMODULE server = GetModuleHandleW(L"KivDateTime.ocx");
    const HRSRC group = FindResourceW(server, MAKEINTRESOURCEW(IconAbout), RT_GROUP_ICON);
    auto* const directory = static_cast<BYTE*>(LockResource(LoadResource(server, group)));
    const auto pictureFor = [&](int size) { return LookupIconIdFromDirectoryEx(directory, TRUE, size, size, 0); };
    EXPECT_NE(pictureFor(32), pictureFor(48));
    EXPECT_NE(pictureFor(48), pictureFor(64));
    const Cells small = LookOfIcon(32);
    EXPECT_TRUE(std::ranges::any_of(small, [](const auto& cell) { return cell[0] < cell[2] - 30; }))
        << "a part of it is blue";
    for (const int size : {48, 64}) {
        const Cells cells = LookOfIcon(size);
        for (std::size_t cell = 0; cell < small.size(); ++cell)
            for (std::size_t channel = 0; channel < 3; ++channel)
                EXPECT_NEAR(small[cell][channel], cells[cell][channel], 32) << size << ": " << cell << ", " << channel;
    }
}

TEST_P(AboutBox, NeedsNoParentAndClosesWithEscapeToo) {
    control = Server::Get().CreateControl(tested.clsid);
    dispatch = As<IDispatch>();
    visit.closeWith = IDCANCEL;
    ShowIt();
    EXPECT_EQ(1, visit.boxes);
    ShowIt();
    EXPECT_EQ(2, visit.boxes);
}

TEST_P(AboutBox, KeepsTheModelessWindowsOfTheContainersFrameOutOfTheWay) {
    using Calls = std::vector<bool>;
    Place(false);
    ShowIt();
    EXPECT_EQ(Calls{}, site->Frame().modeless) << "a control that is not active has no frame";
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_SHOW));
    visit.onBox = [&] { EXPECT_EQ(Calls{false}, site->Frame().modeless); };
    ShowIt();
    EXPECT_EQ((Calls{false, true}), site->Frame().modeless);
    site->Frame().modeless.clear();
    // A container that closes the control while the box is up, and one whose frame does not want to.
    visit.onBox = [&] { As<IOleObject>()->Close(OLECLOSE_NOSAVE); };
    ShowIt();
    EXPECT_EQ((Calls{false, true}), site->Frame().modeless);
    site->Frame().modeless.clear();
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_SHOW));
    visit.onBox = nullptr;
    site->Frame().onCall = [](const char* call) {
        return std::string_view(call) == "EnableModeless" ? std::optional<HRESULT>(E_NOTIMPL) : std::nullopt;
    };
    ShowIt();
    EXPECT_EQ(Calls{false}, site->Frame().modeless) << "what was not taken is not given back";
    EXPECT_EQ(4, visit.boxes);
}

INSTANTIATE_TEST_SUITE_P(Controls, AboutBox, EitherControl(), NameOfControl);

}  // namespace
}  // namespace component
