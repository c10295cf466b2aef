// TYPEATTR, FUNCDESC and VARDESC belong to the type information that handed them out: these give them back.
//
// Constructors throw comkit::ComError. The type information has to outlive what it handed out.
#pragma once

#include <oaidl.h>

#include "comkit/Errors.h"

namespace kiv::server {

class TypeAttributes {
public:
    explicit TypeAttributes(ITypeInfo& type) : m_type(type) { comkit::ThrowIfFailed(type.GetTypeAttr(&m_p)); }
    TypeAttributes(const TypeAttributes&) = delete;
    TypeAttributes& operator=(const TypeAttributes&) = delete;
    ~TypeAttributes() { m_type.ReleaseTypeAttr(m_p); }
    const TYPEATTR* operator->() const noexcept { return m_p; }

private:
    ITypeInfo& m_type;
    TYPEATTR* m_p = nullptr;
};

class FunctionDescription {
public:
    FunctionDescription(ITypeInfo& type, UINT index) : m_type(type) {
        comkit::ThrowIfFailed(type.GetFuncDesc(index, &m_p));
    }
    FunctionDescription(const FunctionDescription&) = delete;
    FunctionDescription& operator=(const FunctionDescription&) = delete;
    ~FunctionDescription() { m_type.ReleaseFuncDesc(m_p); }
    const FUNCDESC& operator*() const noexcept { return *m_p; }
    const FUNCDESC* operator->() const noexcept { return m_p; }

private:
    ITypeInfo& m_type;
    FUNCDESC* m_p = nullptr;
};

class VariableDescription {
public:
    VariableDescription(ITypeInfo& type, UINT index) : m_type(type) {
        comkit::ThrowIfFailed(type.GetVarDesc(index, &m_p));
    }
    VariableDescription(const VariableDescription&) = delete;
    VariableDescription& operator=(const VariableDescription&) = delete;
    ~VariableDescription() { m_type.ReleaseVarDesc(m_p); }
    const VARDESC* operator->() const noexcept { return m_p; }

private:
    ITypeInfo& m_type;
    VARDESC* m_p = nullptr;
};

}  // namespace kiv::server
