// Persistence of a control: property bag, stream and storage, all over the core's one description of its keys.
//
// A stream holds the keys whose values differ from their defaults; a storage keeps the same bytes in the stream
// "Contents". Nothing of a stream is applied unless all of it is sound. The control is dirty from a real change on
// until it is saved with clearing, loaded or initialised.
#pragma once

#include <objidl.h>
#include <ocidl.h>

#include <cstddef>
#include <vector>

#include "comkit/ComObject.h"
#include "platform/PropertyBag.h"
#include "server/ControlCore.h"

namespace kiv::server {

class PersistPart final : public comkit::ComPart<IPersistStreamInit, IPersistPropertyBag, IPersistStorage> {
public:
    PersistPart(IUnknown& owner, const ControlClass& controlClass, ControlHost& host) noexcept
        : ComPart(owner), m_class(controlClass), m_host(host) {}
    /// The control, once it exists.
    void Attach(ControlCore& core) noexcept { m_pCore = &core; }

    /// As ComPart, and under their older names: IPersist, IPersistStream.
    void* Find(REFIID iid) noexcept;

    bool IsInitialized() const noexcept { return m_bInitialized; }
    bool IsLoading() const noexcept { return m_bLoading; }
    void MarkDirty() noexcept { m_bDirty = true; }
    /// Gives the control its defaults if its container has not spoken.
    void EnsureInitialized();

    // IPersist
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* out) override;
    // IPersistStreamInit, and IsDirty and InitNew of the others
    HRESULT STDMETHODCALLTYPE IsDirty() override;
    HRESULT STDMETHODCALLTYPE Load(IStream* stream) override;
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* out) override;
    HRESULT STDMETHODCALLTYPE InitNew() override;
    // IPersistPropertyBag
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;
    // IPersistStorage
    HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL sameAsLoad) override;
    HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE HandsOffStorage() override;

private:
    enum class StorageState { Normal, NoScribble, HandsOff };

    template <class Step>
    void WhileLoading(Step step);
    void InitDefaults();
    void LoadFrom(const PropertyBag& bag);
    void LoadStream(IStream& stream);
    std::vector<std::byte> Encode() const;

    const ControlClass& m_class;
    ControlHost& m_host;
    ControlCore* m_pCore = nullptr;
    bool m_bLoading = false;
    bool m_bInitialized = false;
    bool m_bDirty = false;
    bool m_bSavedInPlace = false;
    StorageState m_eStorage = StorageState::Normal;
};

}  // namespace kiv::server
