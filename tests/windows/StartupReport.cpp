// StartupReport FILE MILLISECONDS: waits, then writes its startup information and command line to the file.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

std::string narrow(const wchar_t* text)
{
    return text == nullptr ? std::string() : std::string(text, text + wcslen(text));
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    if (count < 3)
        return 2;
    Sleep(static_cast<DWORD>(wcstoul(arguments[2], nullptr, 10)));
    STARTUPINFOW start = {};
    GetStartupInfoW(&start);
    FILE* file = _wfopen(arguments[1], L"wb");
    if (file == nullptr)
        return 3;
    std::fprintf(file, "flags=%lu\nshow=%u\nx=%lu\ny=%lu\nwidth=%lu\nheight=%lu\ncolumns=%lu\nrows=%lu\n",
                 start.dwFlags, static_cast<unsigned>(start.wShowWindow), start.dwX, start.dwY, start.dwXSize,
                 start.dwYSize, start.dwXCountChars, start.dwYCountChars);
    std::fprintf(file, "console=%d\nreserved=%u\n", GetConsoleWindow() != nullptr ? 1 : 0,
                 static_cast<unsigned>(start.cbReserved2));
    std::fprintf(file, "line=%s\n", narrow(GetCommandLineW()).c_str());
    std::fclose(file);
    return 0;
}
