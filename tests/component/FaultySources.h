// Streams, property bags and error logs that fail, or do something of their own, at a chosen call.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <functional>

#include "comkit/ComObject.h"
#include "comkit/ComPtr.h"
#include "TestBag.h"

namespace component {

/// Counts the calls that can fail and says which of them does.
struct Fault {
    int at = 0;  ///< the first call that fails, from 1; 0: none
    int calls = 0;
    std::function<HRESULT()> deed;  ///< done at that call; a failure is the call's answer

    bool Due() { return ++calls == at; }
};

/// A stream in memory. Cloning, copying, locking and the like is not for it.
class FaultyStream final : public comkit::ComObject<FaultyStream, IStream> {
public:
    explicit FaultyStream(Fault& fault) : m_fault(fault) { CreateStreamOnHGlobal(nullptr, TRUE, m_memory.Put()); }
    /// The most that one call reads or writes.
    ULONG most = MAXDWORD;

    IStream& Memory() const noexcept { return *m_memory; }
    void Rewind() const { m_memory->Seek({}, STREAM_SEEK_SET, nullptr); }

    HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG count, ULONG* read) override {
        if (read) *read = 0;
        if (m_fault.Due()) {
            if (const HRESULT hr = m_fault.deed(); hr != S_OK) return hr;
        }
        return m_memory->Read(bytes, count < most ? count : most, read);
    }
    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG count, ULONG* written) override {
        if (written) *written = 0;
        if (m_fault.Due()) {
            if (const HRESULT hr = m_fault.deed(); hr != S_OK) return hr;
        }
        return m_memory->Write(bytes, count < most ? count : most, written);
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IStream** out) override {
        *out = nullptr;
        return E_NOTIMPL;
    }

private:
    Fault& m_fault;
    comkit::ComPtr<IStream> m_memory;
};

/// A bag over another one.
class FaultyBag final : public comkit::ComObject<FaultyBag, IPropertyBag> {
public:
    FaultyBag(Fault& fault, comkit::ComPtr<TestBag> bag) : m_fault(fault), m_bag(std::move(bag)) {}
    std::wstring failedOn;  ///< the key of the call that was due

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog* log) override {
        if (const HRESULT hr = DoIfDue(name); hr != S_OK) return hr;
        return m_bag->Read(name, value, log);
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override {
        if (const HRESULT hr = DoIfDue(name); hr != S_OK) return hr;
        return m_bag->Write(name, value);
    }

private:
    HRESULT DoIfDue(LPCOLESTR name) {
        if (!m_fault.Due()) return S_OK;
        failedOn = name;
        return m_fault.deed();
    }

    Fault& m_fault;
    comkit::ComPtr<TestBag> m_bag;
};

/// A log that does something of its own each time.
class FaultyLog final : public comkit::ComObject<FaultyLog, IErrorLog> {
public:
    explicit FaultyLog(std::function<HRESULT()> deed) : m_deed(std::move(deed)) {}
    int calls = 0;

    HRESULT STDMETHODCALLTYPE AddError(LPCOLESTR, EXCEPINFO*) override {
        ++calls;
        return m_deed();
    }

private:
    std::function<HRESULT()> m_deed;
};

}  // namespace component
