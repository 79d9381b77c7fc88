// A stand-in for a command that writes a file: copies `<own path>.out` to the file named by the last
// argument, and writes its command line to `<own path>.line`.
#include <windows.h>

#include <string>
#include <vector>

int wmain(int count, wchar_t** arguments)
{
    std::vector<wchar_t> own(32768);
    GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size()));
    const std::wstring path = own.data();
    const std::wstring line = GetCommandLineW();
    const HANDLE file = CreateFileW((path + L".line").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)), &written, nullptr);
    CloseHandle(file);
    return count > 1 && CopyFileW((path + L".out").c_str(), arguments[count - 1], FALSE) != 0 ? 0 : 1;
}
