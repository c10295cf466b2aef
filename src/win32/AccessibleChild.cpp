#include "win32/AccessibleChild.h"

#include <oleacc.h>
#include <oleauto.h>
#include <oleidl.h>

#include "comkit/Bstr.h"
#include "comkit/ComObject.h"
#include "comkit/ComPtr.h"
#include "win32/AccessLibrary.h"

namespace kiv::win32 {

namespace {

using comkit::ComPtr;

bool IsSelf(const VARIANT& child) noexcept {
    return V_VT(&child) == VT_I4 && V_I4(&child) == CHILDID_SELF;
}

class AccessibleChild final : public comkit::ComObject<AccessibleChild, IAccessible, IOleWindow, IEnumVARIANT> {
public:
    AccessibleChild(HWND window, FindAccessibleSubject find, ComPtr<IAccessible> standard) noexcept
        : m_window(window),
          m_find(find),
          m_standard(std::move(standard)),
          m_children(ComPtr<IEnumVARIANT>::From(m_standard.Get())) {}

    void* FindInterface(REFIID iid) noexcept {
        return IsEqualIID(iid, IID_IDispatch) ? static_cast<IAccessible*>(this) : nullptr;
    }

    // What the child itself tells
    STDMETHODIMP get_accName(VARIANT child, BSTR* out) override {
        if (!IsSelf(child)) return m_standard->get_accName(child, out);
        return Tell(out, &AccessibleFacts::name);
    }
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* out) override {
        const HRESULT result = m_standard->get_accRole(child, out);
        if (!IsSelf(child) || !out) return result;
        const bool known =
            result == S_OK && V_VT(out) == VT_I4 && V_I4(out) != ROLE_SYSTEM_CLIENT && V_I4(out) != ROLE_SYSTEM_WINDOW;
        const AccessibleSubject* const subject = m_find(m_window);
        if (known || !subject) return result;
        return Guarded([&] {
            V_VT(out) = VT_I4;
            V_I4(out) = subject->Access().role;
            return S_OK;
        });
    }
    STDMETHODIMP get_accState(VARIANT child, VARIANT* out) override {
        const HRESULT result = m_standard->get_accState(child, out);
        const AccessibleSubject* const subject = m_find(m_window);
        if (!IsSelf(child) || result != S_OK || V_VT(out) != VT_I4 || !subject) return result;
        return Guarded([&] {
            V_I4(out) |= subject->Access().state;
            return S_OK;
        });
    }
    STDMETHODIMP get_accValue(VARIANT child, BSTR* out) override {
        const HRESULT result = m_standard->get_accValue(child, out);
        if (!IsSelf(child) || !out || (result == S_OK && SysStringLen(*out) > 0)) return result;
        return Tell(out, &AccessibleFacts::value);
    }

    // What the system tells
    STDMETHODIMP get_accParent(IDispatch** out) override { return m_standard->get_accParent(out); }
    STDMETHODIMP get_accChildCount(long* out) override { return m_standard->get_accChildCount(out); }
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** out) override { return m_standard->get_accChild(child, out); }
    STDMETHODIMP get_accDescription(VARIANT child, BSTR* out) override {
        return m_standard->get_accDescription(child, out);
    }
    STDMETHODIMP get_accHelp(VARIANT child, BSTR* out) override { return m_standard->get_accHelp(child, out); }
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
        return m_standard->get_accHelpTopic(file, child, topic);
    }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* out) override {
        return m_standard->get_accKeyboardShortcut(child, out);
    }
    STDMETHODIMP get_accFocus(VARIANT* out) override { return m_standard->get_accFocus(out); }
    STDMETHODIMP get_accSelection(VARIANT* out) override { return m_standard->get_accSelection(out); }
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* out) override {
        return m_standard->get_accDefaultAction(child, out);
    }
    STDMETHODIMP accSelect(long flags, VARIANT child) override { return m_standard->accSelect(flags, child); }
    STDMETHODIMP accLocation(long* left, long* top, long* width, long* height, VARIANT child) override {
        return m_standard->accLocation(left, top, width, height, child);
    }
    STDMETHODIMP accNavigate(long direction, VARIANT start, VARIANT* out) override {
        return m_standard->accNavigate(direction, start, out);
    }
    STDMETHODIMP accHitTest(long x, long y, VARIANT* out) override { return m_standard->accHitTest(x, y, out); }
    STDMETHODIMP accDoDefaultAction(VARIANT child) override { return m_standard->accDoDefaultAction(child); }
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP put_accValue(VARIANT child, BSTR value) override { return m_standard->put_accValue(child, value); }

    // IDispatch
    STDMETHODIMP GetTypeInfoCount(UINT* out) override { return m_standard->GetTypeInfoCount(out); }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) override {
        return m_standard->GetTypeInfo(index, locale, out);
    }
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return m_standard->GetIDsOfNames(iid, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* argument) override {
        // Through the type library: the standard object's own Invoke would answer past this one.
        ComPtr<ITypeInfo> type;
        if (const HRESULT found = AccessLibrary::TypeInfo(type.Put()); FAILED(found)) return found;
        return type->Invoke(static_cast<IAccessible*>(this), member, flags, arguments, result, exception, argument);
    }

    // IOleWindow
    STDMETHODIMP GetWindow(HWND* out) override {
        if (!out) return E_POINTER;
        *out = m_window;
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    // IEnumVARIANT
    STDMETHODIMP Next(ULONG count, VARIANT* out, ULONG* fetched) override {
        return m_children ? m_children->Next(count, out, fetched) : E_NOTIMPL;
    }
    STDMETHODIMP Skip(ULONG count) override { return m_children ? m_children->Skip(count) : E_NOTIMPL; }
    STDMETHODIMP Reset() override { return m_children ? m_children->Reset() : E_NOTIMPL; }
    STDMETHODIMP Clone(IEnumVARIANT** out) override { return m_children ? m_children->Clone(out) : E_NOTIMPL; }

private:
    template <class Step>
    static HRESULT Guarded(Step step) noexcept {
        try {
            return step();
        } catch (...) {
            return E_FAIL;
        }
    }
    HRESULT Tell(BSTR* out, std::u16string AccessibleFacts::*fact) const noexcept {
        if (!out) return E_INVALIDARG;
        *out = nullptr;
        const AccessibleSubject* const subject = m_find(m_window);
        if (!subject) return CO_E_OBJNOTCONNECTED;
        return Guarded([&] {
            const AccessibleFacts facts = subject->Access();
            if ((facts.*fact).empty()) return S_FALSE;
            *out = comkit::Bstr(facts.*fact).Detach();
            return S_OK;
        });
    }

    HWND m_window;
    FindAccessibleSubject m_find;
    ComPtr<IAccessible> m_standard;
    ComPtr<IEnumVARIANT> m_children;
};

}  // namespace

LRESULT AnswerAccess(HWND window, WPARAM wParam, FindAccessibleSubject find) {
    const AccessLibrary& library = AccessLibrary::Get();
    ComPtr<IAccessible> standard;
    if (FAILED(library.CreateStandardObject(window, standard.PutVoid())) || !standard) return 0;
    const auto object = comkit::MakeObject<AccessibleChild>(window, find, std::move(standard));
    return library.ResultFromObject(wParam, object->Identity());
}

}  // namespace kiv::win32
