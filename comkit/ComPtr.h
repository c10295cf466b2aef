// Owning interface pointer.
#pragma once

#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace comkit {

template <class T>
class ComPtr {
public:
    ComPtr() noexcept = default;
    ComPtr(std::nullptr_t) noexcept {}
    explicit ComPtr(T* p) noexcept : m_p(p) {
        if (m_p) m_p->AddRef();
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.m_p) {}
    ComPtr(ComPtr&& other) noexcept : m_p(std::exchange(other.m_p, nullptr)) {}
    ~ComPtr() { Reset(); }

    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(m_p, other.m_p);
        return *this;
    }

    /// Takes over a reference that the caller already owns.
    static ComPtr Adopt(T* p) noexcept {
        ComPtr result;
        result.m_p = p;
        return result;
    }

    /// The pointer is cleared before the release: a release that re-enters finds it empty.
    void Reset() noexcept {
        if (T* p = std::exchange(m_p, nullptr)) p->Release();
    }

    T* Get() const noexcept { return m_p; }
    T* operator->() const noexcept { return m_p; }
    T& operator*() const noexcept { return *m_p; }
    explicit operator bool() const noexcept { return m_p != nullptr; }

    /// For out-parameters. Drops what is held.
    T** Put() noexcept {
        Reset();
        return &m_p;
    }
    void** PutVoid() noexcept { return reinterpret_cast<void**>(Put()); }

    T* Detach() noexcept { return std::exchange(m_p, nullptr); }

    /// For an out-parameter of ours: the callee's reference goes to the caller.
    void CopyTo(T** out) const noexcept {
        *out = m_p;
        if (m_p) m_p->AddRef();
    }

    /// Null when the object has no such interface.
    template <class U>
    ComPtr<U> As() const noexcept {
        return comkit::ComPtr<U>::From(m_p);
    }

    /// Queries any interface pointer; null in, null out.
    static ComPtr From(IUnknown* p) noexcept {
        ComPtr result;
        if (p && FAILED(p->QueryInterface(__uuidof(T), result.PutVoid()))) result.m_p = nullptr;
        return result;
    }

    friend bool operator==(const ComPtr&, const ComPtr&) = default;

private:
    T* m_p = nullptr;
};

}  // namespace comkit
