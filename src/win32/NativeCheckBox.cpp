#include "win32/NativeCheckBox.h"

#include <commctrl.h>

#include <string>

#include "comkit/Bstr.h"
#include "win32/OleColors.h"

namespace kiv::win32 {

void NativeCheckBox::SetCaption(std::u16string_view caption) {
    if (m_strCaption == caption) return;
    m_strCaption = caption;
    if (Window()) SetWindowTextW(Window(), comkit::ToWide(m_strCaption).data());
}

int NativeCheckBox::Value() const {
    if (!Window()) return m_lValue;
    return SendMessageW(Window(), BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
}

void NativeCheckBox::SetValue(int value) {
    m_lValue = value ? 1 : 0;
    if (Window()) SendMessageW(Window(), BM_SETCHECK, m_lValue ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool NativeCheckBox::AnswersMnemonic(wchar_t key) const {
    return key != 0 && MnemonicOf(m_strCaption) == key && IsTabStop();
}

void NativeCheckBox::Press() {
    SetValue(Value() ? 0 : 1);
    Note(PendingClick);
    if (!IsBusy()) TellPending();
}

WindowDescription NativeCheckBox::Describe() const {
    return {.className = WC_BUTTONW,
            .text = comkit::ToWide(m_strCaption).data(),
            .style = BS_CHECKBOX,
            .extendedStyle = 0,
            .place = {},
            .parent = nullptr,
            .hasInnerWindows = false};
}

void NativeCheckBox::OnOpened() {
    if (m_lValue) SendMessageW(Window(), BM_SETCHECK, BST_CHECKED, 0);
}

void NativeCheckBox::KeepState() {
    m_lValue = Value();
}

void NativeCheckBox::OnCommand(WORD code) {
    if (code != BN_CLICKED) return;
    SetValue(Value() ? 0 : 1);
    Note(PendingClick);
}

HBRUSH NativeCheckBox::OnControlColor(HDC dc) {
    SetTextColor(dc, ColorRefOf(GetEnabled() ? GetFore() : SystemColor::GreyText));
    SetBkColor(dc, ColorRefOf(GetBack()));
    return BrushFor(dc, GetBack());
}

wchar_t MnemonicOf(std::u16string_view caption) noexcept {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != u'&') continue;
        auto letter = static_cast<wchar_t>(caption[i + 1]);
        if (letter != L'&') {
            CharUpperBuffW(&letter, 1);
            return letter;
        }
        ++i;
    }
    return 0;
}

}  // namespace kiv::win32
