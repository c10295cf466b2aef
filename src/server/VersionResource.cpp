#include "server/VersionResource.h"

#include <windows.h>

#include <winver.h>

#include <vector>

#include "comkit/Errors.h"
#include "server/Module.h"

namespace kiv::server {

VersionNumbers OwnVersion() {
    const HINSTANCE module = Module::Instance();
    const HRSRC place = FindResourceW(module, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
    const HGLOBAL block = place ? LoadResource(module, place) : nullptr;
    const void* const data = block ? LockResource(block) : nullptr;
    if (!data) throw comkit::ComError(comkit::LastErrorResult());
    // A copy: the function that reads it may write into it.
    const auto* const first = static_cast<const BYTE*>(data);
    std::vector<BYTE> copy(first, first + SizeofResource(module, place));
    void* found = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(copy.data(), L"\\", &found, &length) || length < sizeof(VS_FIXEDFILEINFO))
        throw comkit::ComError(HRESULT_FROM_WIN32(ERROR_RESOURCE_DATA_NOT_FOUND));
    const auto& version = *static_cast<const VS_FIXEDFILEINFO*>(found);
    return {HIWORD(version.dwFileVersionMS), LOWORD(version.dwFileVersionMS), HIWORD(version.dwFileVersionLS)};
}

}  // namespace kiv::server
