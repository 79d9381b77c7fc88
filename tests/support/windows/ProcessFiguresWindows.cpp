#include "tests/support/ProcessFigures.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

namespace {

int threadsOfThisProcess()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    int count = 0;
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(snapshot, &entry); more != 0; more = Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID == GetCurrentProcessId())
            ++count;
    }
    CloseHandle(snapshot);
    return count;
}

} // namespace

ProcessFigures ProcessFigures::now()
{
    ProcessFigures figures;
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    figures.fileDescriptors = static_cast<int>(handles);
    figures.threads = threadsOfThisProcess();
    PROCESS_MEMORY_COUNTERS memory = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    figures.peakKilobytes = static_cast<long>(memory.PeakWorkingSetSize / 1024);
    return figures;
}
