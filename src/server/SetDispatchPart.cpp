#include "server/SetDispatchPart.h"

#include "comkit/Errors.h"
#include "common/ResourceStrings.h"
#include "platform/DateTime.h"
#include "platform/HostError.h"
#include "server/Module.h"
#include "server/VariantTarget.h"

namespace kiv::server {

namespace {

std::u16string AboutText() {
    std::u16string text = GetResString(residProductTitle);
    text += u"\r\n\r\n" + GetResString(residSetPurpose);
    text += u"\r\n\r\n" + GetResString(residOwnershipAn) + GetResString(residParentCompany) +
            GetResString(residOwnershipCompany);
    text += u"\r\n" + GetResString(residLegalNotice);
    return text;
}

}  // namespace

SetDispatchPart::SetDispatchPart(ControlHost& host, SetControl& control)
    : ComPart(host.Identity()),
      m_host(host),
      m_control(control),
      m_pInfo(Module::Dispatch(__uuidof(_KivSetDateTime))) {}

void* SetDispatchPart::Find(REFIID iid) noexcept {
    if (IsEqualIID(iid, IID_IDispatch)) return static_cast<IDispatch*>(this);
    return ComPart::Find(iid);
}

HRESULT SetDispatchPart::GetTypeInfoCount(UINT* out) {
    if (!out) return E_POINTER;
    *out = 1;
    return S_OK;
}

HRESULT SetDispatchPart::GetTypeInfo(UINT index, LCID, ITypeInfo** out) {
    return m_pInfo->GetTypeInfo(index, out);
}

HRESULT SetDispatchPart::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    return m_pInfo->GetIDsOfNames(names, count, ids);
}

HRESULT SetDispatchPart::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                EXCEPINFO* info, UINT* argument) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (!params) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] {
        return m_pInfo->Invoke(static_cast<_KivSetDateTime*>(this), id, flags, *params, result, info, argument);
    });
}

void SetDispatchPart::AskToEdit(DISPID member) {
    if (!m_host.RequestEdit(member)) throw HostError(ErrorNumber::PropertyReadOnly);
}

HRESULT SetDispatchPart::putref_Font(IFontDisp* value) {
    return AtBoundaryOf(Owner(), [&] {
        const FontPtr font = win32::WrapFont(value);
        if (!font) throw HostError(ErrorNumber::InvalidPropertyValue);
        m_host.EnsureInitialized();
        AskToEdit(SetMember::Font);
        m_control.SetFont(font);
    });
}

HRESULT SetDispatchPart::put_DataInUpload(VARIANT_BOOL value) {
    return AtBoundaryOf(Owner(), [&] {
        m_host.EnsureInitialized();
        m_control.SetDataInUpload(Taken(value));
    });
}

HRESULT SetDispatchPart::GetDateTimeInfo(VARIANT* vDate, VARIANT* vTime, VARIANT_BOOL* bEnableDST) {
    if (!vDate || !vTime || !bEnableDST) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] {
        m_host.EnsureInitialized();
        const DateTimeInfo info = m_control.GetDateTimeInfo();
        AssignTo(*vDate, comkit::Variant::Date(ToOleDate({info.date, {}})));
        AssignTo(*vTime, comkit::Variant::Date(ToOleDate(info.time)));
        Hand(info.enableDst, *bEnableDST);
    });
}

HRESULT SetDispatchPart::ShowAboutBox() {
    return AtBoundaryOf(Owner(), [&] {
        const std::u16string text = AboutText();
        const std::u16string title = GetResString(residSetAboutTitle);
        MessageBoxW(m_host.DialogParent(), reinterpret_cast<const wchar_t*>(text.c_str()),
                    reinterpret_cast<const wchar_t*>(title.c_str()), MB_OK | MB_ICONINFORMATION);
    });
}

}  // namespace kiv::server
