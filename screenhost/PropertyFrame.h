// A property sheet round the property pages of one control, or round those that several controls have in common.
//
// The system's own frame is of no use everywhere: under Wine it neither applies anything nor closes. This one keeps its
// owner disabled while it is open and works inside the host's message loop, which passes every message to Filter first.
//
// A page whose Apply fails is brought to the front, its own words are shown, and the frame stays open; what other pages
// have applied stays applied.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "screenhost/HostedPage.h"
#include "screenhost/WindowBase.h"

namespace screenhost {

/// The pages that all objects have, in the order of the first one's.
std::vector<CLSID> CommonPages(const std::vector<comkit::ComPtr<IUnknown>>& objects);

struct PropertyFrameRequest {
    HWND owner = nullptr;
    std::wstring title;
    std::vector<comkit::ComPtr<IUnknown>> objects;
    std::vector<CLSID> pages;
    HFONT font = nullptr;
    /// Throws comkit::ComError.
    std::function<comkit::ComPtr<IPropertyPage>(REFCLSID)> create;
    /// A page's trouble in words, to be shown over the given window.
    std::function<void(HWND over, const std::string& text)> report;
    /// Pages were applied: once for all that were applied together.
    std::function<void()> applied;
    /// The frame is closed and may be destroyed, but not from within this call.
    std::function<void()> closed;
};

class PropertyFrame final : public WindowBase, private PageOwner {
public:
    enum Button { ApplyButton = 3 };  ///< besides IDOK, IDCANCEL and IDHELP

    /// Pages that cannot be made are reported and left out. Throws TextError when there is none left.
    explicit PropertyFrame(PropertyFrameRequest request);
    ~PropertyFrame() override;

    void Open();
    bool IsOpen() const noexcept { return m_bOpen; }
    /// As Cancel does. Nothing while a page is being applied.
    void Close();
    /// Keys of the frame and of its pages, before they are dispatched. True: done.
    bool Filter(MSG& message);

    HWND Tabs() const noexcept { return m_tabs; }
    std::vector<std::wstring> Titles() const;
    std::size_t Current() const noexcept { return m_current; }
    void ShowPage(std::size_t index);

private:
    class Panel;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPageStatus(HostedPage& page, DWORD flags) override;
    bool OnPageKey(MSG& message) override;

    void MakePages();
    void MakeParts();
    void Layout();
    void OnCommand(int command);
    bool TurnPage(const MSG& message);
    /// False when a page refused.
    bool ApplyAll();
    bool ApplyPage(std::size_t index);
    void TellApplied();
    void UpdateButtons();
    void ShowHelp();
    void FocusPage();
    void OnActivate(bool active);
    std::string NameOf(const HostedPage& page) const;

    PropertyFrameRequest m_request;
    std::vector<std::unique_ptr<HostedPage>> m_pages;
    std::unique_ptr<Panel> m_panel;
    HWND m_ok = nullptr;
    HWND m_cancel = nullptr;
    HWND m_apply = nullptr;
    HWND m_help = nullptr;
    HWND m_tabs = nullptr;
    HWND m_focus = nullptr;
    std::size_t m_current = 0;
    bool m_bOpen = false;
    bool m_bApplying = false;
    bool m_bApplied = false;
};

}  // namespace screenhost
