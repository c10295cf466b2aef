// The system's accessibility library, which this module does without until somebody asks for it.
#pragma once

#include <windows.h>

#include <oleacc.h>
#include <oleauto.h>

#include "comkit/ComPtr.h"

namespace kiv::win32 {

/// The system's accessibility library, loaded when the first client asks: most programs never do.
class AccessLibrary {
public:
    static const AccessLibrary& Get() noexcept {
        static const AccessLibrary library;
        return library;
    }
    /// What the system itself tells of a window's client area.
    HRESULT CreateStandardObject(HWND window, void** out) const noexcept {
        return m_create ? m_create(window, OBJID_CLIENT, IID_IAccessible, out) : E_NOTIMPL;
    }
    /// What a window answers WM_GETOBJECT with.
    LRESULT ResultFromObject(WPARAM wParam, IUnknown* object) const noexcept {
        return m_result ? m_result(IID_IAccessible, wParam, object) : 0;
    }

    /// The description of IAccessible, for callers by name or number. Wine's standard objects have none to offer.
    static HRESULT TypeInfo(ITypeInfo** out) noexcept {
        constexpr GUID Library = {0x1ea4dbf0, 0x3c3b, 0x11cf, {0x81, 0x0c, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71}};
        *out = nullptr;
        comkit::ComPtr<ITypeLib> library;
        const HRESULT hr = LoadRegTypeLib(Library, 1, 1, LOCALE_NEUTRAL, library.Put());
        return FAILED(hr) ? hr : library->GetTypeInfoOfGuid(IID_IAccessible, out);
    }

private:
    using CreateFunction = HRESULT(WINAPI*)(HWND, LONG, REFIID, void**);
    using ResultFunction = LRESULT(WINAPI*)(REFIID, WPARAM, IUnknown*);

    AccessLibrary() noexcept
        : m_library(LoadLibraryW(L"oleacc.dll")),
          m_create(Find<CreateFunction>("CreateStdAccessibleObject")),
          m_result(Find<ResultFunction>("LresultFromObject")) {}
    template <class Function>
    Function Find(const char* name) const noexcept {
        const FARPROC found = m_library ? GetProcAddress(m_library, name) : nullptr;
        return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
    }

    HMODULE m_library;  // stays: clients may hold its objects for longer than this module can know
    CreateFunction m_create;
    ResultFunction m_result;
};

}  // namespace kiv::win32
