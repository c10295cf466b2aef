// Base of COM objects: reference count, identity, QueryInterface over the listed interfaces, count of living objects.
//
// A class derives from ComObject<Class, Interface...> and is made with MakeObject<Class>(...), which returns the first
// reference. The destructor runs with the count held above zero, so that a pointer taken and released during it does
// not destroy the object a second time. Interfaces that an object answers in parts of their own (ComPart) or under a
// second name come from FindInterface, which a class may provide.
#pragma once

#include <unknwn.h>

#include <atomic>
#include <cstdint>
#include <utility>

#include "comkit/ComPtr.h"

namespace comkit {

/// Living objects and locks of this module; 0 means that it may be unloaded.
inline std::atomic<long> g_liveObjects{0};

template <class Interface>
void* InterfaceIfMatches(Interface* p, REFIID iid) noexcept {
    return IsEqualIID(iid, __uuidof(Interface)) ? static_cast<void*>(p) : nullptr;
}

template <class Derived, class First, class... Rest>
class ComObject : public First, public Rest... {
public:
    ComObject() noexcept { ++g_liveObjects; }
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        void* found = nullptr;
        if (IsEqualIID(iid, IID_IUnknown)) {
            found = static_cast<First*>(this);
        } else {
            found = static_cast<Derived*>(this)->FindInterface(iid);
            if (!found) found = InterfaceIfMatches<First>(this, iid);
            ((found = found ? found : InterfaceIfMatches<Rest>(this, iid)), ...);
        }
        if (!found) return E_NOINTERFACE;
        *out = found;
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }

    ULONG STDMETHODCALLTYPE Release() override {
        const std::uint32_t left = --m_references;
        if (left == 0) {
            m_references = 1;
            delete static_cast<Derived*>(this);
        }
        return left;
    }

    /// Further interfaces; a class that has any hides this one.
    void* FindInterface(REFIID) noexcept { return nullptr; }

    IUnknown* Identity() noexcept { return static_cast<First*>(this); }

protected:
    ~ComObject() { --g_liveObjects; }

private:
    std::atomic<std::uint32_t> m_references{1};
};

/// Returns the object's first reference. Throws what the constructor throws.
template <class T, class... Args>
ComPtr<T> MakeObject(Args&&... args) {
    return ComPtr<T>::Adopt(new T(std::forward<Args>(args)...));
}

/// Some interfaces of a larger object, in a class of their own. The part is a member of the object and passes reference
/// counting and identity on to it; the object asks Find from its FindInterface.
template <class... Interfaces>
class ComPart : public Interfaces... {
public:
    explicit ComPart(IUnknown& owner) noexcept : m_owner(owner) {}
    ComPart(const ComPart&) = delete;
    ComPart& operator=(const ComPart&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        return m_owner.QueryInterface(iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_owner.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return m_owner.Release(); }

    void* Find(REFIID iid) noexcept {
        void* found = nullptr;
        ((found = found ? found : InterfaceIfMatches<Interfaces>(this, iid)), ...);
        return found;
    }

protected:
    ~ComPart() = default;
    IUnknown& Owner() const noexcept { return m_owner; }

private:
    IUnknown& m_owner;
};

}  // namespace comkit
