#include "TestBag.h"

#include <algorithm>

namespace component {

void TestBag::Put(const std::wstring& key, comkit::Variant value) {
    entries.emplace_back(key, std::move(value));
}

const VARIANT* TestBag::Find(const std::wstring& key) const {
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.first == key; });
    return found == entries.end() ? nullptr : &found->second.Get();
}

std::vector<std::wstring> TestBag::Keys() const {
    std::vector<std::wstring> keys;
    for (const Entry& entry : entries) keys.push_back(entry.first);
    return keys;
}

HRESULT TestBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
    if (!failsOn.empty() && failsOn == name) return failure;
    const VARIANT* found = Find(name);
    if (!found) return E_INVALIDARG;
    if (value->vt != VT_EMPTY && value->vt != found->vt) return DISP_E_TYPEMISMATCH;
    return VariantCopy(value, const_cast<VARIANT*>(found));  // the tool chain's header lacks the const
}

HRESULT TestBag::Write(LPCOLESTR name, VARIANT* value) {
    comkit::Variant copy;
    VariantCopy(copy.Put(), value);
    entries.emplace_back(name, std::move(copy));
    return S_OK;
}

}  // namespace component
