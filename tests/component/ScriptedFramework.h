// A framework that has nothing but hidden controls, which deliver the values that a test tells them to; and a variable
// with elements, for RefreshDisplay.
#pragma once

#include <Vexa.h>

#include <map>
#include <string>
#include <vector>

#include "comkit/ComObject.h"
#include "comkit/ConnectionPoint.h"
#include "comkit/Variant.h"

namespace component {

/// Only one may live at a time; what was registered is taken away at its end.
class ScriptedFramework {
public:
    ScriptedFramework();
    ScriptedFramework(const ScriptedFramework&) = delete;
    ScriptedFramework& operator=(const ScriptedFramework&) = delete;
    ~ScriptedFramework();

    /// To every hidden control that lives.
    void Deliver(short index, const wchar_t* value);
    /// What hidden controls were told of the number of their elements.
    const std::vector<long>& ElementCounts() const noexcept { return m_elementCounts; }
    std::size_t Living() const noexcept { return m_living.size(); }

    class Hidden;
    class Factory;

private:
    std::vector<Hidden*> m_living;
    std::vector<long> m_elementCounts;
    DWORD m_cookie = 0;
};

/// Element(Path) answers an object with Value. A path that it does not know fails.
class TestVariable final : public comkit::ComObject<TestVariable, IDispatch> {
public:
    std::map<std::wstring, comkit::Variant> elements;
    std::vector<std::wstring> asked;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;
};

}  // namespace component
