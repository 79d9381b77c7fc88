#include "closed/LLFProc/windows/FirmwareWindows.h"

FirmwareCalls firmwareCallsOf(HMODULE module)
{
    using GetFirmwareTypeCall = BOOL(WINAPI*)(quint32*);
    FirmwareCalls calls;
    // Resolved by name, because systems before Windows 8 do not export it and would fail to load a library
    // that imports it.
    if (const FARPROC found = GetProcAddress(module, "GetFirmwareType")) {
        const auto call = reinterpret_cast<GetFirmwareTypeCall>(reinterpret_cast<void*>(found));
        calls.type = [call](quint32* type) { return call(type) != 0; };
    }
    calls.variableError = [] {
        SetLastError(0);
        GetFirmwareEnvironmentVariableA("", "{00000000-0000-0000-0000-000000000000}", nullptr, 0);
        return static_cast<quint32>(GetLastError());
    };
    return calls;
}

FirmwareCalls systemFirmwareCalls()
{
    return firmwareCallsOf(GetModuleHandleW(L"kernel32"));
}
