#include "platform/windows/HiddenCommand.h"

#include <windows.h>

#include <string>

namespace {

STARTUPINFOW hiddenStart()
{
    STARTUPINFOW start = {};
    GetStartupInfoW(&start);
    start.lpReserved = nullptr;
    start.lpReserved2 = nullptr;
    start.cbReserved2 = 0;
    start.lpDesktop = nullptr;
    start.lpTitle = nullptr;
    start.dwX = 0;
    start.dwY = 0;
    start.dwXSize = 0;
    start.dwYSize = 0;
    start.dwXCountChars = 500;
    start.dwYCountChars = 500;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_HIDE;
    return start;
}

} // namespace

void runHiddenProcess(const QString& command)
{
    constexpr DWORD limitMs = 2147483647;
    STARTUPINFOW start = hiddenStart();
    PROCESS_INFORMATION process = {};
    // CreateProcessW can modify the command line, so it needs a writable copy.
    std::wstring line = command.toStdWString();
    if (CreateProcessW(nullptr, &line[0], nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr, &start,
                       &process) == 0)
        return;
    WaitForSingleObject(process.hProcess, limitMs);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}
