#include "telemetry/AliyunWrap.h"

#include <windows.h>

namespace {

std::wstring ownFileName()
{
    wchar_t buffer[260] = {};
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ownFileName), &self);
    // A path that fills the buffer was truncated and is invalid.
    const DWORD length = GetModuleFileNameW(self, buffer, 260);
    return length < 260 ? std::wstring(buffer, length) : std::wstring();
}

} // namespace

ModuleAccess ModuleAccess::system()
{
    return {ownFileName,
            [](const std::wstring& path) { return reinterpret_cast<void*>(LoadLibraryW(path.c_str())); },
            [](void* module, const char* name) {
                return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
            }};
}
