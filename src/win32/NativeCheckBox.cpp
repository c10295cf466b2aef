#include "win32/NativeCheckBox.h"

#include <commctrl.h>
#include <oleacc.h>

#include <string>

#include "comkit/Bstr.h"
#include "win32/AccessKeys.h"
#include "win32/ShownColors.h"

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
    SetTextColor(dc, ShownTextColor(GetFore(), GetEnabled()));
    SetBkColor(dc, ShownColor(GetBack(), ColorUse::Face));
    return FaceBrush(dc, GetBack());
}

AccessibleFacts NativeCheckBox::Access() const {
    return {WithoutAccessKey(m_strCaption), ROLE_SYSTEM_CHECKBUTTON, {}, Value() ? STATE_SYSTEM_CHECKED : 0};
}

}  // namespace kiv::win32
