#include "server/AboutBox.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>

#include "comkit/Bstr.h"
#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "pages/AboutBox.h"
#include "pages/SharedServices.h"
#include "server/Module.h"
#include "server/ResourceNumbers.h"
#include "server/VersionResource.h"
#include "win32/DialogTemplate.h"
#include "win32/Dpi.h"
#include "win32/LateBoundServices.h"

namespace kiv::server {

namespace {

constexpr const wchar_t* LabelFont = L"MS Sans Serif";
constexpr WORD OkId = IDOK;

/// Texts in the font of a dialog.
class DialogMeasure final : public TextMeasure {
public:
    explicit DialogMeasure(HWND dialog) noexcept
        : m_dc(dialog), m_selection(m_dc.Get(), reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0))) {}

    Extent Measure(std::u16string_view text) override {
        const std::wstring_view wide = comkit::ToWide(text);
        SIZE size{};
        GetTextExtentPoint32W(m_dc.Get(), wide.data(), static_cast<int>(wide.size()), &size);
        return {size.cx, size.cy};
    }

private:
    comkit::WindowDc m_dc;
    comkit::GdiSelection m_selection;
};

class AboutDialog {
public:
    explicit AboutDialog(AboutTexts texts) : m_texts(std::move(texts)) {}

    void Show(HWND owner) {
        const win32::DialogTemplate dialog(WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME, WS_EX_DLGMODALFRAME,
                                           {0, 0, 0, 0}, comkit::ToWide(m_texts.caption), LabelFont);
        const INT_PTR result = DialogBoxIndirectParamW(Module::Instance(), dialog.Get(), owner, &Procedure,
                                                       reinterpret_cast<LPARAM>(this));
        if (m_failure) std::rethrow_exception(m_failure);
        if (result == -1) throw comkit::ComError(comkit::LastErrorResult());
    }

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
        if (id == WM_INITDIALOG) {
            reinterpret_cast<AboutDialog*>(lParam)->OnInit(dialog);
            return FALSE;  // the focus is set already
        }
        if (id == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
            EndDialog(dialog, IDOK);
            return TRUE;
        }
        return FALSE;
    }

    void OnInit(HWND dialog) noexcept {
        try {
            DialogMeasure measure(dialog);
            const AboutLayout layout = LayOutAboutBox(m_texts, measure, win32::DpiOf(dialog));
            AddIcon(dialog, layout.icon);
            for (std::size_t i = 0; i < m_texts.labels.size(); ++i)
                Add(dialog, {L"STATIC", SS_LEFT | SS_NOPREFIX, m_texts.labels[i], 0}, layout.labels[i]);
            for (const DialogRect& line : layout.lines) Add(dialog, {L"STATIC", SS_ETCHEDHORZ, {}, 0}, line);
            const HWND ok = Add(dialog, {L"BUTTON", BS_DEFPUSHBUTTON | WS_TABSTOP, m_texts.ok, OkId}, layout.ok);
            SetSize(dialog, layout);
            SetFocus(ok);
        } catch (...) {
            m_failure = std::current_exception();
            EndDialog(dialog, IDCANCEL);
        }
    }

    struct Part {
        const wchar_t* className;
        DWORD style;
        std::u16string_view text;
        WORD id;
    };

    static HWND Add(HWND dialog, const Part& part, const DialogRect& place) {
        const HWND window =
            CreateWindowExW(0, part.className, std::wstring(comkit::ToWide(part.text)).c_str(),
                            WS_CHILD | WS_VISIBLE | part.style, place.x, place.y, place.width, place.height, dialog,
                            reinterpret_cast<HMENU>(static_cast<UINT_PTR>(part.id)), Module::Instance(), nullptr);
        if (!window) throw comkit::ComError(comkit::LastErrorResult());
        SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(SendMessageW(dialog, WM_GETFONT, 0, 0)), FALSE);
        return window;
    }

    void AddIcon(HWND dialog, const DialogRect& place) {
        const HWND picture = Add(dialog, {L"STATIC", SS_ICON | SS_REALSIZECONTROL, {}, 0}, place);
        m_icon.Reset(static_cast<HICON>(LoadImageW(Module::Instance(), MAKEINTRESOURCEW(IconAbout), IMAGE_ICON,
                                                   place.width, place.height, LR_DEFAULTCOLOR)));
        SendMessageW(picture, STM_SETICON, reinterpret_cast<WPARAM>(m_icon.Get()), 0);
    }

    /// Around its contents, in the middle of its owner or of the screen, and on the screen in any case.
    static void SetSize(HWND dialog, const AboutLayout& layout) noexcept {
        RECT frame{0, 0, layout.width, layout.height};
        AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(dialog, GWL_STYLE)), FALSE,
                           static_cast<DWORD>(GetWindowLongW(dialog, GWL_EXSTYLE)));
        const SIZE size{frame.right - frame.left, frame.bottom - frame.top};
        MONITORINFO screen{};
        screen.cbSize = sizeof(screen);
        const HWND owner = GetWindow(dialog, GW_OWNER);
        GetMonitorInfoW(MonitorFromWindow(owner ? owner : dialog, MONITOR_DEFAULTTONEAREST), &screen);
        RECT around = screen.rcWork;
        if (owner && IsWindowVisible(owner)) GetWindowRect(owner, &around);
        const auto placed = [](LONG low, LONG high, LONG length, LONG least, LONG most) {
            return std::max(least, std::min((low + high - length) / 2, most - length));
        };
        SetWindowPos(dialog, nullptr,
                     placed(around.left, around.right, size.cx, screen.rcWork.left, screen.rcWork.right),
                     placed(around.top, around.bottom, size.cy, screen.rcWork.top, screen.rcWork.bottom), size.cx,
                     size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    }

    AboutTexts m_texts;
    comkit::UniqueHandle<HICON, &DestroyIcon> m_icon;
    std::exception_ptr m_failure;
};

}  // namespace

void ShowAboutBox(HWND owner, ControlKind control) {
    SharedServices services(&win32::FindLateBoundServices);
    AboutDialog dialog(LoadAboutTexts(control, OwnVersion(), services));
    dialog.Show(owner);
}

}  // namespace kiv::server
