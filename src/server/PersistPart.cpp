#include "server/PersistPart.h"

#include "comkit/Errors.h"
#include "common/MemoryBag.h"
#include "common/PropertyStream.h"
#include "server/Boundary.h"
#include "server/ContainerBag.h"
#include "server/StreamBytes.h"
#include "win32/OleFont.h"

namespace kiv::server {

namespace {

constexpr const wchar_t* StreamName = L"Contents";
constexpr DWORD Exclusive = STGM_DIRECT | STGM_SHARE_EXCLUSIVE;

}  // namespace

void* PersistPart::Find(REFIID iid) noexcept {
    // The methods of IPersistStream stand first in IPersistStreamInit, in the same order.
    if (IsEqualIID(iid, IID_IPersist) || IsEqualIID(iid, IID_IPersistStream))
        return static_cast<IPersistStreamInit*>(this);
    return ComPart::Find(iid);
}

void PersistPart::EnsureInitialized() {
    if (!m_bInitialized && !m_bLoading) InitDefaults();
}

template <class Step>
void PersistPart::WhileLoading(Step step) {
    struct LoadingFlag {
        bool& flag;
        ~LoadingFlag() { flag = false; }
    };
    m_bLoading = true;
    m_bInitialized = true;
    const LoadingFlag end{m_bLoading};
    step();
    m_host.OnLoaded();
    m_bDirty = false;
}

void PersistPart::InitDefaults() {
    WhileLoading([this] { m_pCore->InitProperties(); });
}

void PersistPart::LoadFrom(const PropertyBag& bag) {
    WhileLoading([&] { m_pCore->ReadProperties(bag); });
}

void PersistPart::LoadStream(IStream& stream) {
    const auto header = ReadBytes(stream, PropertyStreamHeaderSize);
    const auto records = ReadBytes(stream, DecodePropertyHeader(header));
    LoadFrom(DecodeProperties(records, &win32::MakeFont));
}

std::vector<std::byte> PersistPart::Encode() const {
    MemoryBag bag;
    m_pCore->WriteProperties(bag);
    return EncodeProperties(bag);
}

HRESULT PersistPart::GetClassID(CLSID* out) {
    if (!out) return E_POINTER;
    *out = m_class.clsid;
    return S_OK;
}

HRESULT PersistPart::IsDirty() {
    return m_bDirty ? S_OK : S_FALSE;
}

HRESULT PersistPart::InitNew() {
    return AtBoundaryOf(Owner(), [&] { InitDefaults(); });
}

HRESULT PersistPart::Load(IStream* stream) {
    if (!stream) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] { LoadStream(*stream); });
}

HRESULT PersistPart::Save(IStream* stream, BOOL clearDirty) {
    if (!stream) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] {
        EnsureInitialized();
        WriteBytes(*stream, Encode());
        if (clearDirty) m_bDirty = false;
    });
}

HRESULT PersistPart::GetSizeMax(ULARGE_INTEGER* out) {
    if (!out) return E_POINTER;
    out->QuadPart = 0;
    return AtBoundaryOf(Owner(), [&] {
        EnsureInitialized();
        out->QuadPart = Encode().size();
    });
}

HRESULT PersistPart::Load(IPropertyBag* bag, IErrorLog* log) {
    if (!bag) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] { LoadFrom(ContainerBag(*bag, log, m_class.name)); });
}

HRESULT PersistPart::Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) {
    if (!bag) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] {
        EnsureInitialized();
        ContainerBag target(*bag, saveAll != FALSE);
        m_pCore->WriteProperties(target);
        if (clearDirty) m_bDirty = false;
    });
}

HRESULT PersistPart::InitNew(IStorage* storage) {
    return storage ? InitNew() : E_POINTER;
}

HRESULT PersistPart::Load(IStorage* storage) {
    if (!storage) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] {
        comkit::ComPtr<IStream> stream;
        comkit::ThrowIfFailed(storage->OpenStream(StreamName, nullptr, STGM_READ | Exclusive, 0, stream.Put()));
        if (!stream) throw comkit::ComError(STG_E_FILENOTFOUND);
        LoadStream(*stream);
        m_eStorage = StorageState::Normal;
    });
}

HRESULT PersistPart::Save(IStorage* storage, BOOL sameAsLoad) {
    if (!storage) return E_POINTER;
    if (m_eStorage != StorageState::Normal) return E_UNEXPECTED;
    return AtBoundaryOf(Owner(), [&] {
        EnsureInitialized();
        const auto bytes = Encode();
        comkit::ComPtr<IStream> stream;
        comkit::ThrowIfFailed(
            storage->CreateStream(StreamName, STGM_CREATE | STGM_WRITE | Exclusive, 0, 0, stream.Put()));
        if (!stream) throw comkit::ComError(STG_E_WRITEFAULT);
        WriteBytes(*stream, bytes);
        m_bSavedInPlace = sameAsLoad != FALSE;
        m_eStorage = StorageState::NoScribble;
    });
}

HRESULT PersistPart::SaveCompleted(IStorage* storage) {
    // Everything is read at once and no storage is kept: a new one only ends the waiting.
    if (m_eStorage == StorageState::HandsOff && !storage) return E_INVALIDARG;
    if (m_eStorage == StorageState::NoScribble && (storage || m_bSavedInPlace)) m_bDirty = false;
    m_eStorage = StorageState::Normal;
    m_bSavedInPlace = false;
    return S_OK;
}

HRESULT PersistPart::HandsOffStorage() {
    m_eStorage = StorageState::HandsOff;
    return S_OK;
}

}  // namespace kiv::server
