#include "server/Module.h"

#include <mutex>
#include <utility>
#include <vector>

#include "comkit/DecimalText.h"
#include "comkit/Errors.h"
#include "comkit/Registration.h"
#include "comkit/SlimLock.h"
#include "server/DispatchInfo.h"
#include "server/ResourceNumbers.h"

namespace kiv::server {

namespace {

struct CachedDispatch {
    IID iid;
    std::shared_ptr<const DispatchInfo> info;
};

struct Caches {
    comkit::ComPtr<ITypeLib> library;
    comkit::ComPtr<ITypeLib> frameworkLibrary;
    std::vector<CachedDispatch> dispatch;
};

HINSTANCE g_instance = nullptr;
// Several apartments may create controls at the same time.
comkit::SlimLock g_cacheLock;
std::unique_ptr<Caches> g_caches;

comkit::ComPtr<ITypeLib> LoadLibraryFrom(const std::wstring& file) {
    comkit::ComPtr<ITypeLib> library;
    comkit::ThrowIfFailed(LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.Put()));
    return library;
}

/// To be called with the lock held.
Caches& OpenCaches() {
    if (!g_caches) {
        auto caches = std::make_unique<Caches>();
        const std::wstring file = Module::FileName();
        caches->library = LoadLibraryFrom(file);
        // A type library that is not the first one is asked for by its resource's number.
        caches->frameworkLibrary = LoadLibraryFrom(file + L"\\" + comkit::DecimalText(TypeLibraryFramework));
        g_caches = std::move(caches);
    }
    return *g_caches;
}

}  // namespace

void Module::Attach(HINSTANCE instance) noexcept {
    g_instance = instance;
}

HINSTANCE Module::Instance() noexcept {
    return g_instance;
}

std::wstring Module::FileName() {
    return comkit::ModulePath(g_instance);
}

comkit::ComPtr<ITypeLib> Module::TypeLibrary() {
    const std::lock_guard lock(g_cacheLock);
    return OpenCaches().library;
}

comkit::ComPtr<ITypeInfo> Module::TypeInfo(REFGUID id) {
    comkit::ComPtr<ITypeInfo> info;
    comkit::ThrowIfFailed(TypeLibrary()->GetTypeInfoOfGuid(id, info.Put()));
    return info;
}

std::shared_ptr<const DispatchInfo> Module::Dispatch(REFIID dualInterface) {
    const std::lock_guard lock(g_cacheLock);
    Caches& caches = OpenCaches();
    for (const CachedDispatch& entry : caches.dispatch)
        if (IsEqualIID(entry.iid, dualInterface)) return entry.info;
    comkit::ComPtr<ITypeInfo> type;
    if (FAILED(caches.library->GetTypeInfoOfGuid(dualInterface, type.Put())))
        comkit::ThrowIfFailed(caches.frameworkLibrary->GetTypeInfoOfGuid(dualInterface, type.Put()));
    auto info = std::make_shared<const DispatchInfo>(std::move(type));
    caches.dispatch.push_back({dualInterface, info});
    return info;
}

void Module::DropCaches() noexcept {
    std::unique_ptr<Caches> dropped;
    {
        const std::lock_guard lock(g_cacheLock);
        dropped = std::move(g_caches);
    }
}

void Module::AbandonCaches() noexcept {
    static_cast<void>(g_caches.release());
}

}  // namespace kiv::server
