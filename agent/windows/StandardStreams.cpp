#include "agent/StandardStreams.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <initializer_list>

void zorcall::useBinaryStreams()
{
    for (FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}

// _isatty is also true for the null device.
bool zorcall::isTerminal()
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}

bool zorcall::enableTerminalColour()
{
    // Missing in the headers of older toolchains.
    constexpr DWORD kVirtualTerminal = 0x0004;
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(output, &mode) != 0 && SetConsoleMode(output, mode | kVirtualTerminal) != 0;
}
