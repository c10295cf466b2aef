// Class factory of one control class.
#pragma once

#include <unknwn.h>

#include "comkit/ComObject.h"
#include "server/ControlCore.h"

namespace kiv::server {

class ClassFactory final : public comkit::ComObject<ClassFactory, IClassFactory> {
public:
    explicit ClassFactory(const ControlClass& controlClass) noexcept : m_class(controlClass) {}

    /// Aggregation is refused: CLASS_E_NOAGGREGATION.
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    const ControlClass& m_class;
};

}  // namespace kiv::server
