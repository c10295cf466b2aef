#include "screenhost/ScreenView.h"

#include <algorithm>
#include <cstdint>

#include "comkit/Handle.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr int MarginTwips = 240;
constexpr std::int32_t LargestShifted = 100'000;  // where a pasted control may have come from
constexpr DWORD ViewStyle = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN;

class PaintDc {
public:
    explicit PaintDc(HWND window) noexcept : m_window(window), m_dc(BeginPaint(window, &m_paint)) {}
    PaintDc(const PaintDc&) = delete;
    PaintDc& operator=(const PaintDc&) = delete;
    ~PaintDc() { EndPaint(m_window, &m_paint); }
    HDC Get() const noexcept { return m_dc; }
    const RECT& Area() const noexcept { return m_paint.rcPaint; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
};

void PaintGrid(HDC dc, const RECT& area) {
    const int step = std::max(4, PixelsFromTwips(DesignModel::Grid));
    const COLORREF color = GetSysColor(COLOR_BTNSHADOW);
    for (LONG y = area.top / step * step; y < area.bottom; y += step)
        for (LONG x = area.left / step * step; x < area.right; x += step) SetPixelV(dc, x, y, color);
}

}  // namespace

ScreenView::ScreenView(HWND parent, ScreenContext& context, ScreenFile file)
    : m_context(context), m_file(std::move(file)) {
    Create({L"ScreenHostView", L"", ViewStyle, WS_EX_CONTROLPARENT, COLOR_BTNFACE, nullptr}, parent);
    m_context.view = Handle();
    m_context.onLayout = [this] { OnLayout(); };
    m_design.emplace(*this);
    m_design->StartDocument(m_file.Text());
    MakeControls();
}

ScreenView::~ScreenView() {
    CloseControls();
    m_controls.clear();
    m_context.onLayout = nullptr;
}

void ScreenView::MakeControls() {
    m_controls.clear();
    for (ScreenSection* section : m_file.Controls())
        m_controls.push_back(std::make_unique<HostedControl>(m_context, *section));
}

void ScreenView::OpenControls() {
    for (const auto& control : m_controls) control->Open();
    FollowMode();
    if (!m_context.userMode) m_design->Enter();
    OnLayout();
}

/// While the screen is laid out the Tab key must not wander into the controls.
void ScreenView::FollowMode() {
    const LONG_PTR extended = GetWindowLongPtrW(Handle(), GWL_EXSTYLE);
    const LONG_PTR style = GetWindowLongPtrW(Handle(), GWL_STYLE);
    const bool runs = m_context.userMode;
    SetWindowLongPtrW(Handle(), GWL_EXSTYLE, runs ? extended | WS_EX_CONTROLPARENT : extended & ~WS_EX_CONTROLPARENT);
    SetWindowLongPtrW(Handle(), GWL_STYLE, runs ? style & ~WS_TABSTOP : style | WS_TABSTOP);
}

void ScreenView::Load(ScreenFile file) {
    m_design->Leave();
    CloseControls();
    m_controls.clear();
    m_file = std::move(file);
    m_design->StartDocument(m_file.Text());
    MakeControls();
    OpenControls();
    InvalidateRect(Handle(), nullptr, TRUE);
}

void ScreenView::CloseControls() noexcept {
    for (const auto& control : m_controls) control->Close();
}

void ScreenView::SwitchMode(bool userMode) {
    if (userMode == m_context.userMode) return;
    m_design->Leave();
    CloseControls();
    m_context.userMode = userMode;
    MakeControls();
    OpenControls();
}

std::string ScreenView::DocumentText() {
    // What happens at run time must not become the layout to which design mode returns.
    if (!m_context.userMode)
        for (const auto& control : m_controls) control->Save();
    return m_file.Text();
}

std::string ScreenView::Title() {
    const ScreenValue* const title = m_file.Screen().Find("Title");
    if (!title || !std::holds_alternative<std::u16string>(*title)) return {};
    return Utf8FromUtf16(std::get<std::u16string>(*title));
}

HostedControl* ScreenView::TryFind(const std::string& name) {
    const auto found =
        std::ranges::find_if(m_controls, [&](const auto& control) { return EqualWithoutCase(control->Name(), name); });
    return found == m_controls.end() ? nullptr : found->get();
}

HostedControl& ScreenView::Find(const std::string& name) {
    HostedControl* const found = TryFind(name);
    if (!found) throw TextError("there is no control named " + name);
    return *found;
}

HostedControl& ScreenView::OpenControl(ScreenSection& section) {
    m_controls.push_back(std::make_unique<HostedControl>(m_context, section));
    m_controls.back()->Open();
    return *m_controls.back();
}

std::string ScreenView::Add(const std::string& progId, const std::string& stem, const Box& box) {
    ScreenSection& section = m_file.AddControl(m_file.FreeName(stem));
    std::string name = section.Name();
    section.Put("ProgID", *Utf16FromUtf8(progId));
    section.Put("Left", box.left);
    section.Put("Top", box.top);
    if (box.width >= DesignModel::Smallest && box.height >= DesignModel::Smallest) {
        section.Put("Width", box.width);
        section.Put("Height", box.height);
    }
    const std::string failure = OpenControl(section).Failure();
    if (!failure.empty()) {
        m_controls.pop_back();
        m_file.RemoveControl(name);
        throw TextError(failure);
    }
    return name;
}

std::vector<std::string> ScreenView::AddCopies(ScreenFile& other, int shift) {
    std::vector<std::string> names;
    for (const ScreenSection* source : other.Controls()) {
        std::string stem = source->Name();
        while (!stem.empty() && stem.back() >= '0' && stem.back() <= '9') stem.pop_back();
        if (stem.empty()) stem = source->Name();
        const bool isTaken = m_file.FindControl(source->Name()) != nullptr;
        ScreenSection& section = m_file.AddCopy(*source, isTaken ? m_file.FreeName(stem) : source->Name());
        for (const char* key : {"Left", "Top"}) {
            const ScreenValue* const value = section.Find(key);
            if (value && std::holds_alternative<std::int32_t>(*value))
                section.Put(key, std::clamp(std::get<std::int32_t>(*value), 0, LargestShifted) + shift);
        }
        OpenControl(section);
        names.push_back(section.Name());
    }
    return names;
}

void ScreenView::Remove(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        std::erase_if(m_controls, [&](const auto& control) { return EqualWithoutCase(control->Name(), name); });
        m_file.RemoveControl(name);
    }
    OnLayout();
}

std::string ScreenView::TextOf(const std::vector<std::string>& names) {
    ScreenFile copy = ScreenFile::Parse({});
    for (const auto& control : m_controls) {
        if (std::ranges::find(names, control->Name()) == names.end()) continue;
        control->Save();
        copy.AddCopy(*m_file.FindControl(control->Name()), control->Name());
    }
    return copy.Text();
}

std::vector<std::string> ScreenView::Restore(const std::string& text) {
    ScreenFile next = ScreenFile::Parse(text);
    std::vector<std::unique_ptr<HostedControl>> controls;
    std::vector<HostedControl*> anew;
    for (ScreenSection* section : next.Controls()) {
        const auto old = std::ranges::find_if(
            m_controls, [&](const auto& control) { return control && control->Name() == section->Name(); });
        const bool same = old != m_controls.end() && m_file.FindControl(section->Name())->Text() == section->Text();
        if (same) {
            controls.push_back(std::move(*old));
            controls.back()->Rebind(*section);
        } else {
            controls.push_back(std::make_unique<HostedControl>(m_context, *section));
            anew.push_back(controls.back().get());
        }
    }
    // What is left of the old ones closes before the new ones open, with the sections that it knows.
    std::erase(m_controls, nullptr);
    m_controls.clear();
    m_file = std::move(next);
    m_controls = std::move(controls);
    std::vector<std::string> names;
    for (HostedControl* control : anew) {
        control->Open();
        names.push_back(control->Name());
    }
    OnLayout();
    return names;
}

SIZE ScreenView::ContentSize() const {
    SIZE size{};
    for (const auto& control : m_controls) {
        const RECT place = control->PixelRect();
        size.cx = std::max(size.cx, place.right);
        size.cy = std::max(size.cy, place.bottom);
    }
    const int margin = PixelsFromTwips(MarginTwips);
    return {size.cx + margin, size.cy + margin};
}

void ScreenView::OnLayout() {
    InvalidateRect(Handle(), nullptr, TRUE);
    if (!m_context.userMode) m_design->OnLayout();
    if (m_design->Model().Dragging() == DesignModel::Drag::None) AfterDrag();
}

void ScreenView::AfterDrag() {
    SendMessageW(GetParent(Handle()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(Handle()), 0),
                 reinterpret_cast<LPARAM>(Handle()));
}

LRESULT ScreenView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) {
        Paint();
        return 0;
    }
    const bool designs = !m_context.userMode && m_design;
    if (message == WM_SIZE && designs) m_design->OnLayout();
    if (designs && m_design->OnMessage(message, wParam, lParam)) return TRUE;
    return Default(message, wParam, lParam);
}

void ScreenView::Paint() {
    const PaintDc dc(Handle());
    if (!m_context.userMode) PaintGrid(dc.Get(), dc.Area());
    for (const auto& control : m_controls)
        if (!control->IsOpen()) PaintFailure(dc.Get(), *control);
}

/// A control that could not be opened says so in its place.
void ScreenView::PaintFailure(HDC dc, const HostedControl& control) const {
    RECT place = control.PixelRect();
    FillRect(dc, &place, GetSysColorBrush(COLOR_WINDOW));
    FrameRect(dc, &place, GetSysColorBrush(COLOR_BTNSHADOW));
    InflateRect(&place, -Scaled(8), -Scaled(8));
    const auto font = reinterpret_cast<HFONT>(SendMessageW(GetParent(Handle()), WM_GETFONT, 0, 0));
    const comkit::GdiSelection selection(dc, font ? font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    const std::wstring text = Wide(control.Name() + "\n\n" + control.Failure());
    DrawTextW(dc, text.c_str(), -1, &place, DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace screenhost
