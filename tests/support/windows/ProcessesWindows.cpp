#include "tests/support/Processes.h"

#include <windows.h>

namespace {

// Opens the process with that number. Null if it is not running.
HANDLE opened(const QByteArray& number)
{
    return OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, number.trimmed().toULong());
}

} // namespace

bool processRuns(const QByteArray& number)
{
    const HANDLE process = opened(number);
    const bool runs = process != nullptr && WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return runs;
}

bool endProcess(const QByteArray& number)
{
    const HANDLE process = opened(number);
    const bool ended = process != nullptr && TerminateProcess(process, 1) != 0;
    CloseHandle(process);
    return ended;
}
