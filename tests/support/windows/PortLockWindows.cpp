#include "tests/support/PortLock.h"

#include <string>

#include <windows.h>

namespace {

// Handles have 32 significant bits.
HANDLE handleOf(int lock)
{
    return reinterpret_cast<HANDLE>(static_cast<INT_PTR>(lock));
}

} // namespace

// A mutex with a machine-wide name.
int lockPort(int port)
{
    const std::wstring name = L"aibridge-test-port-" + std::to_wstring(port);
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, name.c_str());
    if (mutex == nullptr)
        return -1;
    if (GetLastError() != ERROR_ALREADY_EXISTS)
        return static_cast<int>(reinterpret_cast<INT_PTR>(mutex));
    CloseHandle(mutex);
    return -1;
}

void unlockPort(int lock)
{
    if (lock != -1)
        CloseHandle(handleOf(lock));
}
