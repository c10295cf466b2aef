// The property bag over a control's section of the screen file, and the error log that goes with it.
//
// One object for one load or save. A control that keeps its reference longer finds the bag closed.
#pragma once

#include <ocidl.h>

#include <string>
#include <vector>

#include "comkit/ComObject.h"
#include "comkit/Variant.h"
#include "screenhost/HostLog.h"
#include "screenhost/ScreenFile.h"

namespace screenhost {

/// A value as an argument of automation. Throws ComError.
comkit::Variant VariantFromValue(const ScreenValue& value);

/// Throws TextError for a kind that a screen file cannot hold.
ScreenValue ValueFromVariant(const VARIANT& value);

class SectionBag final : public comkit::ComObject<SectionBag, IPropertyBag, IErrorLog> {
public:
    /// For loading. The section must live until Close.
    SectionBag(const ScreenSection& section, HostLog& log);
    /// For saving into a section through its update.
    SectionBag(const ScreenSection& section, SectionUpdate& update, HostLog& log);

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog* errors) override;
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE AddError(LPCOLESTR name, EXCEPINFO* info) override;

    void Close() noexcept;
    /// Every key that the control asked for or wrote.
    const std::vector<std::string>& KnownKeys() const noexcept { return m_knownKeys; }

private:
    HRESULT Convert(const std::string& key, const ScreenValue& value, VARIANT& out, IErrorLog* errors);
    void Remember(const std::string& key);

    const ScreenSection* m_section;
    SectionUpdate* m_update = nullptr;
    HostLog* m_log;
    std::vector<std::string> m_knownKeys;
};

}  // namespace screenhost
