// A container's property bag and error log, with what was read, written and reported.
#pragma once

#include <ocidl.h>

#include <string>
#include <utility>
#include <vector>

#include "comkit/ComObject.h"
#include "comkit/Variant.h"

namespace component {

class TestBag final : public comkit::ComObject<TestBag, IPropertyBag> {
public:
    using Entry = std::pair<std::wstring, comkit::Variant>;
    std::vector<Entry> entries;
    std::wstring failsOn;  ///< a key that the bag cannot read, though it has it
    HRESULT failure = DISP_E_TYPEMISMATCH;

    void Put(const std::wstring& key, comkit::Variant value);
    const VARIANT* Find(const std::wstring& key) const;
    std::vector<std::wstring> Keys() const;

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override;
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override;
};

class TestErrorLog final : public comkit::ComObject<TestErrorLog, IErrorLog> {
public:
    std::vector<std::wstring> keys;
    std::vector<HRESULT> codes;
    std::vector<std::wstring> sources;

    HRESULT STDMETHODCALLTYPE AddError(LPCOLESTR name, EXCEPINFO* info) override {
        keys.emplace_back(name);
        codes.push_back(info->scode);
        sources.emplace_back(info->bstrSource ? info->bstrSource : L"");
        return S_OK;
    }
};

}  // namespace component
