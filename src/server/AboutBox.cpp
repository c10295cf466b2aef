#include "server/AboutBox.h"

#include <string>

#include "comkit/Bstr.h"
#include "common/ResourceStrings.h"

namespace kiv::server {

namespace {

std::u16string AboutText(std::int16_t purpose) {
    std::u16string text = GetResString(residProductTitle);
    text += u"\r\n\r\n" + GetResString(purpose);
    text += u"\r\n\r\n" + GetResString(residOwnershipAn) + GetResString(residParentCompany) +
            GetResString(residOwnershipCompany);
    text += u"\r\n" + GetResString(residLegalNotice);
    return text;
}

}  // namespace

void ShowAboutBox(HWND parent, std::int16_t title, std::int16_t purpose) {
    const std::u16string text = AboutText(purpose);
    const std::u16string caption = GetResString(title);
    MessageBoxW(parent, comkit::ToWide(text).data(), comkit::ToWide(caption).data(), MB_OK | MB_ICONINFORMATION);
}

}  // namespace kiv::server
