#include "win32/ObjectByProgId.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "comkit/Errors.h"
#include "comkit/SlimLock.h"

namespace kiv::win32 {

namespace {

struct AbsentName {
    std::wstring name;
    ULONGLONG since;
};

/// A screen full of controls asks for the same missing objects a thousand times, and each time the system goes to the
/// registry for it.
class AbsentNames {
public:
    bool Has(std::wstring_view name) {
        const std::lock_guard guard(m_lock);
        const ULONGLONG now = GetTickCount64();
        std::erase_if(m_names, [now](const AbsentName& entry) { return now - entry.since > AbsenceHolds; });
        return std::ranges::any_of(m_names, [name](const AbsentName& entry) { return entry.name == name; });
    }
    void Add(std::wstring_view name) {
        const std::lock_guard guard(m_lock);
        m_names.push_back({std::wstring(name), GetTickCount64()});
    }

private:
    comkit::SlimLock m_lock;
    std::vector<AbsentName> m_names;
};

HRESULT FindClass(const wchar_t* progId, CLSID& clsid) {
    static AbsentNames absent;
    if (absent.Has(progId)) return CO_E_CLASSSTRING;
    const HRESULT hr = CLSIDFromProgID(progId, &clsid);
    if (FAILED(hr)) absent.Add(progId);
    return hr;
}

}  // namespace

comkit::ComPtr<IDispatch> CreateObject(const wchar_t* progId) {
    CLSID clsid{};
    comkit::ComPtr<IDispatch> result;
    if (FAILED(FindClass(progId, clsid))) return result;
    comkit::ThrowIfFailed(
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDispatch), result.PutVoid()));
    return result;
}

comkit::ComPtr<IDispatch> TryCreateObject(const wchar_t* progId) noexcept {
    try {
        return CreateObject(progId);
    } catch (...) {
        return {};
    }
}

}  // namespace kiv::win32
