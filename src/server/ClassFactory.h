// Class factory of a control class, or of a class of property pages.
#pragma once

#include <unknwn.h>

#include <functional>
#include <utility>

#include "comkit/ComObject.h"
#include "comkit/ComPtr.h"

namespace kiv::server {

class ClassFactory final : public comkit::ComObject<ClassFactory, IClassFactory> {
public:
    /// Makes one object; may throw.
    using Maker = std::function<comkit::ComPtr<IUnknown>()>;

    explicit ClassFactory(Maker make) noexcept : m_make(std::move(make)) {}

    /// Aggregation is refused: CLASS_E_NOAGGREGATION.
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    Maker m_make;
};

}  // namespace kiv::server
