// The extender: what the container adds to a control. Name, place, size and visibility are the host's; everything else
// is passed on to the control itself.
#pragma once

#include <oaidl.h>

#include <string>

#include "comkit/ComObject.h"
#include "comkit/Variant.h"

namespace screenhost {

/// The host's side of an extender. Lengths are twips.
class ExtenderOwner {
public:
    virtual std::string Name() const = 0;
    virtual double GetPlace(std::size_t side) const = 0;  ///< 0 left, 1 top, 2 width, 3 height
    virtual void SetPlace(std::size_t side, double twips) = 0;
    virtual bool IsVisible() const = 0;
    virtual void SetVisible(bool visible) = 0;
    /// Null while there is no control.
    virtual IDispatch* ControlDispatch() const = 0;

protected:
    ~ExtenderOwner() = default;
};

class Extender final : public comkit::ComObject<Extender, IDispatch> {
public:
    explicit Extender(ExtenderOwner& owner) noexcept : m_owner(&owner) {}
    void Detach() noexcept { m_owner = nullptr; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* exception, UINT* argument) override;

private:
    comkit::Variant Get(DISPID id) const;
    void Put(DISPID id, const VARIANT& value);

    ExtenderOwner* m_owner;
};

}  // namespace screenhost
