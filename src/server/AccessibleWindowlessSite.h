// IAccessibleWindowlessSite, which the tool chain's headers do not have: how a container helps a control that lives in
// its window to be accessible. Declared as Windows documents it.
#pragma once

#include <windows.h>

#include <oleacc.h>

#ifndef __IAccessibleWindowlessSite_INTERFACE_DEFINED__
// Where a tool chain has it after all, that one counts.

struct IAccessibleHandler;

struct IAccessibleWindowlessSite : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE AcquireObjectIdRange(long size, IAccessibleHandler* owner, long* base) = 0;
    virtual HRESULT STDMETHODCALLTYPE ReleaseObjectIdRange(long base, IAccessibleHandler* owner) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryObjectIdRanges(IAccessibleHandler* owner, SAFEARRAY** ranges) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetParentAccessible(IAccessible** parent) = 0;
};
__CRT_UUID_DECL(IAccessibleWindowlessSite, 0xBF3ABD9C, 0x76DA, 0x4389, 0x9E, 0xB6, 0x14, 0x27, 0xD2, 0x5A, 0xBA, 0xB7)

#endif
