#include "screenhost/DesignSession.h"

#include <windowsx.h>

#include <algorithm>

#include "screenhost/Clipboard.h"
#include "screenhost/ScreenView.h"
#include "screenhost/Units.h"

namespace screenhost {

namespace {

constexpr int HandlePixels = 7;
constexpr int SlackPixels = 3;
constexpr int PasteShift = 2 * DesignModel::Grid;
constexpr int FirstPlace = 2 * DesignModel::Grid;

Spot SpotOf(POINT point) {
    return {TwipsFromPixels(static_cast<int>(point.x)), TwipsFromPixels(static_cast<int>(point.y))};
}

RECT PixelsOf(const Box& box) {
    return {PixelsFromTwips(box.left), PixelsFromTwips(box.top), PixelsFromTwips(box.Right()),
            PixelsFromTwips(box.Bottom())};
}

/// The handle of a control, just outside of it, so that it hides nothing.
RECT HandlePlace(const RECT& control, int x, int y) {
    const int size = Scaled(HandlePixels);
    const auto at = [size](LONG low, LONG high, int side) {
        return side < 0 ? low - size : side > 0 ? high : (low + high - size) / 2;
    };
    RECT result{at(control.left, control.right, x), at(control.top, control.bottom, y), 0, 0};
    result.right = result.left + size;
    result.bottom = result.top + size;
    return result;
}

void AddEdges(const RECT& frame, std::vector<MarkPlace>& marks) {
    const int line = std::max(1, Scaled(1));
    const auto add = [&marks](LONG left, LONG top, LONG right, LONG bottom) {
        marks.push_back({{left, top, right, bottom}, MarkKind::Edge});
    };
    add(frame.left, frame.top, frame.right, frame.top + line);
    add(frame.left, frame.bottom - line, frame.right, frame.bottom);
    add(frame.left, frame.top, frame.left + line, frame.bottom);
    add(frame.right - line, frame.top, frame.right, frame.bottom);
}

bool IsDown(int key) noexcept {
    return GetKeyState(key) < 0;
}

}  // namespace

DesignSession::DesignSession(ScreenView& view)
    : m_view(view),
      m_model(TwipsFromPixels(Scaled(HandlePixels)), TwipsFromPixels(SlackPixels)),
      m_overlay(view.Handle()) {}

void DesignSession::StartDocument(std::string text) {
    m_history.Reset(std::move(text));
    m_model.Select({});
}

void DesignSession::Enter() {
    m_bEntered = true;
    m_overlay.Cover();
    ReadItems();
    // Controls may spell what they hold in a way of their own; nobody has changed anything by that.
    try {
        m_history.Settle(m_view.DocumentText());
    } catch (const TextError& error) {
        if (onProblem) onProblem(error.what());
    }
    Changed();
}

void DesignSession::Leave() {
    if (!m_bEntered) return;
    Commit("Edit");
    m_bEntered = false;
    m_placing = {};
    m_overlay.Lift();
}

void DesignSession::ReadItems() {
    std::vector<DesignItem> items;
    for (const auto& control : m_view.Controls()) items.push_back({control->Name(), control->TwipBox()});
    m_model.SetItems(std::move(items));
}

std::vector<HostedControl*> DesignSession::Selection() {
    std::vector<HostedControl*> result;
    if (!m_bEntered) return result;
    for (const std::string& name : m_model.Selected())
        if (HostedControl* const control = m_view.TryFind(name)) result.push_back(control);
    return result;
}

void DesignSession::Changed() {
    ShowMarks();
    if (onChange) onChange();
}

void DesignSession::ShowMarks() {
    if (!m_bEntered) return;
    std::vector<MarkPlace> marks;
    const DesignItem* const leading = m_model.Leading();
    for (const HostedControl* control : Selection()) {
        const bool leads = leading && control->Name() == leading->name;
        for (int y = -1; y <= 1; ++y) {
            for (int x = -1; x <= 1; ++x) {
                if (x || y)
                    marks.push_back(
                        {HandlePlace(control->PixelRect(), x, y), leads ? MarkKind::LeadingHandle : MarkKind::Handle});
            }
        }
    }
    const auto drag = m_model.Dragging();
    if (drag == DesignModel::Drag::Band || drag == DesignModel::Drag::Placement)
        AddEdges(PixelsOf(m_model.Band()), marks);
    m_overlay.ShowMarks(marks);
}

void DesignSession::OnLayout() {
    if (!m_bEntered) return;
    m_overlay.Cover();
    for (const auto& control : m_view.Controls()) m_model.SetBox(control->Name(), control->TwipBox());
    Changed();
}

void DesignSession::Choose(NewControl control) {
    m_placing = std::move(control);
    Changed();
}

void DesignSession::PlaceNow(const NewControl& control) {
    Box box{FirstPlace, FirstPlace, 0, 0};
    const auto taken = [&](const DesignItem& item) { return item.box.left == box.left && item.box.top == box.top; };
    while (std::ranges::any_of(m_model.Items(), taken)) {
        box.left += PasteShift;
        box.top += PasteShift;
    }
    Place(control, box);
}

void DesignSession::Place(const NewControl& control, const Box& box) {
    m_placing = {};
    try {
        const std::string name = m_view.Add(control.progId, control.stem, box);
        ReadItems();
        m_model.Select({name});
        Commit("Place " + name);
    } catch (const TextError& error) {
        if (onProblem) onProblem(error.what());
    }
    m_overlay.Cover();
    Changed();
}

void DesignSession::Select(const std::vector<std::string>& names) {
    m_model.Select(names);
    Changed();
}

bool DesignSession::Commit(const std::string& label, const std::string& tag) {
    if (!m_bEntered) return false;
    try {
        const bool changed = m_history.Commit(m_view.DocumentText(), label, tag);
        if (changed) Changed();
        return changed;
    } catch (const TextError& error) {
        if (onProblem) onProblem(error.what());
        return false;
    }
}

std::string DesignSession::SelectionTag(const char* what) const {
    std::string tag = what;
    for (const std::string& name : m_model.Selected()) (tag += ' ') += name;
    return tag;
}

void DesignSession::Delete() {
    if (m_model.Selected().empty()) return;
    const std::vector<std::string> names = m_model.Selected();
    m_view.Remove(names);
    ReadItems();
    Commit(names.size() == 1 ? "Delete " + names.front() : "Delete");
    Changed();
}

void DesignSession::Copy() const {
    if (!m_model.Selected().empty()) PutClipboardText(m_view.Handle(), m_view.TextOf(m_model.Selected()));
}

void DesignSession::Cut() {
    Copy();
    Delete();
}

void DesignSession::Paste() {
    const std::string text = GetClipboardText(m_view.Handle());
    if (text.empty() || text.size() > ScreenFile::MaxBytes) return;
    ScreenFile pasted = ScreenFile::Parse(text);
    try {
        const std::vector<std::string> names = m_view.AddCopies(pasted, PasteShift);
        ReadItems();
        if (!names.empty()) m_model.Select(names);
    } catch (const TextError& error) {
        ReadItems();
        if (onProblem) onProblem(error.what());
    }
    m_overlay.Cover();
    Commit("Paste");
    Changed();
}

void DesignSession::GoTo(const std::string& text) {
    const std::vector<std::string> anew = m_view.Restore(text);
    m_overlay.Cover();
    ReadItems();
    if (!anew.empty()) m_model.Select(anew);
    Changed();
}

void DesignSession::Undo() {
    if (!m_bEntered) return;
    // What a control has changed by itself since the last step is a step of its own.
    Commit("Edit");
    if (m_history.CanUndo()) GoTo(m_history.Undo());
}

void DesignSession::Redo() {
    if (m_bEntered && !Commit("Edit") && m_history.CanRedo()) GoTo(m_history.Redo());
}

void DesignSession::Align(Alignment alignment) {
    Apply(m_model.Aligned(alignment), false, false);
    Commit("Align");
}

/// keepRight, keepBottom: a control that takes another size than it is offered keeps the side that was not dragged.
void DesignSession::Apply(const std::vector<DesignItem>& places, bool keepRight, bool keepBottom) {
    for (const auto& [name, box] : places) {
        HostedControl* const control = m_view.TryFind(name);
        if (!control) continue;
        control->MoveTo(box);
        Box taken = control->TwipBox();
        const Box offered = taken;
        if (keepRight && taken.width != box.width) taken.left = box.Right() - taken.width;
        if (keepBottom && taken.height != box.height) taken.top = box.Bottom() - taken.height;
        if (taken != offered) control->MoveTo(taken);
        m_model.SetBox(name, control->TwipBox());
    }
    Changed();
}

void DesignSession::OnButtonDown(POINT point, WPARAM keys) {
    Focus();
    if (IsPlacing())
        m_model.PressToPlace(SpotOf(point));
    else
        m_model.Press(SpotOf(point), (keys & (MK_CONTROL | MK_SHIFT)) != 0);
    if (m_model.Dragging() != DesignModel::Drag::None) SetCapture(m_view.Handle());
    Changed();
}

void DesignSession::OnMouseMove(POINT point) {
    if (m_model.Dragging() == DesignModel::Drag::None) return;
    const std::vector<DesignItem> places = m_model.DragTo(SpotOf(point));
    const bool sizes = m_model.Dragging() == DesignModel::Drag::Size;
    Apply(places, sizes && m_model.DragGrip().x < 0, sizes && m_model.DragGrip().y < 0);
}

void DesignSession::OnButtonUp(POINT point) {
    if (m_model.Dragging() == DesignModel::Drag::None) return;
    OnMouseMove(point);
    const DesignModel::Outcome outcome = m_model.Release();
    if (GetCapture() == m_view.Handle()) ReleaseCapture();
    switch (outcome.drag) {
        case DesignModel::Drag::Placement:
            return Place(NewControl(m_placing), outcome.placed);
        case DesignModel::Drag::Move:
            Commit("Move");
            break;
        case DesignModel::Drag::Size:
            Commit("Size");
            break;
        default:
            break;
    }
    m_view.AfterDrag();
    Changed();
}

void DesignSession::EndDrag() {
    if (m_model.Dragging() == DesignModel::Drag::None) return;
    Apply(m_model.CancelDrag(), false, false);
    if (GetCapture() == m_view.Handle()) ReleaseCapture();
}

void DesignSession::OnEscape() {
    if (m_model.Dragging() != DesignModel::Drag::None)
        EndDrag();
    else if (IsPlacing())
        Choose({});
    else
        Select({});
}

void DesignSession::OnRightButton(POINT point) {
    Focus();
    const DesignItem* const item = m_model.ItemAt(SpotOf(point));
    if (item && !m_model.IsSelected(item->name)) Select({item->name});
    if (!item) Select({});
}

void DesignSession::OnContextMenu(LPARAM lParam) {
    POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (lParam == -1) {
        // Asked for with the keyboard.
        const std::vector<HostedControl*> selection = Selection();
        at = {Scaled(16), Scaled(16)};
        if (!selection.empty()) {
            at.x += selection.back()->PixelRect().left;
            at.y += selection.back()->PixelRect().top;
        }
        ClientToScreen(m_view.Handle(), &at);
    }
    if (onMenu) onMenu(at);
}

bool DesignSession::OnCommandKey(WPARAM key) {
    switch (key) {
        case 'A':
            m_model.SelectAll();
            Changed();
            return true;
        case 'C':
        case VK_INSERT:
            Copy();
            return true;
        case 'X':
            Cut();
            return true;
        case 'V':
            Paste();
            return true;
        default:
            return false;
    }
}

bool DesignSession::OnKey(WPARAM key) {
    const int columns = key == VK_LEFT ? -1 : key == VK_RIGHT ? 1 : 0;
    const int rows = key == VK_UP ? -1 : key == VK_DOWN ? 1 : 0;
    const bool shift = IsDown(VK_SHIFT);
    const bool dragging = m_model.Dragging() != DesignModel::Drag::None;
    if (key == VK_ESCAPE) {
        OnEscape();
    } else if (dragging) {
        return true;  // one thing after the other
    } else if (columns || rows) {
        Apply(shift ? m_model.Stretched(columns, rows) : m_model.Nudged(columns, rows), false, false);
        Commit(shift ? "Size" : "Move", SelectionTag(shift ? "size" : "move"));
        m_view.AfterDrag();
    } else if (key == VK_TAB && !IsDown(VK_CONTROL)) {
        m_model.SelectNext(shift);
        Changed();
    } else if (key == VK_DELETE) {
        shift ? Cut() : Delete();
    } else if (key == VK_INSERT && shift) {
        Paste();
    } else if (key == VK_RETURN) {
        if (onProperties) onProperties();
    } else {
        return IsDown(VK_CONTROL) && OnCommandKey(key);
    }
    return true;
}

bool DesignSession::SetCursorFor(POINT point) const {
    const wchar_t* cursor = IDC_ARROW;
    if (IsPlacing()) {
        cursor = IDC_CROSS;
    } else if (const auto grip = m_model.GripAt(SpotOf(point))) {
        cursor = grip->x == 0         ? IDC_SIZENS
                 : grip->y == 0       ? IDC_SIZEWE
                 : grip->x == grip->y ? IDC_SIZENWSE
                                      : IDC_SIZENESW;
    } else if (m_model.ItemAt(SpotOf(point))) {
        cursor = IDC_SIZEALL;
    }
    SetCursor(LoadCursorW(nullptr, cursor));
    return true;
}

bool DesignSession::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
        case WM_LBUTTONDOWN:
            OnButtonDown(point, wParam);
            return true;
        case WM_MOUSEMOVE:
            OnMouseMove(point);
            return true;
        case WM_LBUTTONUP:
            OnButtonUp(point);
            return true;
        case WM_LBUTTONDBLCLK:
            if (m_model.ItemAt(SpotOf(point)) && onProperties) onProperties();
            return true;
        case WM_RBUTTONDOWN:
            OnRightButton(point);
            return true;
        case WM_CONTEXTMENU:
            OnContextMenu(lParam);
            return true;
        case WM_CANCELMODE:
        case WM_CAPTURECHANGED:
            EndDrag();
            return false;
        case WM_KEYDOWN:
            return OnKey(wParam);
        case WM_SETFOCUS:
            Focus();
            return true;
        case WM_SETCURSOR: {
            POINT at{};
            GetCursorPos(&at);
            ScreenToClient(m_view.Handle(), &at);
            return SetCursorFor(at);
        }
        default:
            return false;
    }
}

}  // namespace screenhost
