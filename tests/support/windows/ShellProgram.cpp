// A stand-in for a program under any name: it runs the shell script next to it, `<own path>.sh`, and exits
// with the exit code of the script. Under Wine alone, where the system's own shell can be reached; a
// program started that way has neither pipes nor an exit code, so both go through files.
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shlwapi.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr DWORD kPollMs = 5;
constexpr int kNoExitCode = 127;

// Arguments reach the script as they are, so a file that one of them names has to be found when it is read.
const char* const kReader = "cat() {\n"
                            "    for f in \"$@\"; do\n"
                            "        command cat \"$(printf %s \"$f\" | "
                            "sed 's|^\\([CZ]\\):/|'\"$WINEPREFIX\"'/dosdevices/\\L\\1:/|')\"\n"
                            "    done\n"
                            "}\n";

// The file's name on the host system, which only Wine can report.
std::string unixName(const std::wstring& path)
{
    using Translate = char*(__cdecl*)(const wchar_t*);
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name");
    if (found == nullptr)
        return std::string();
    char* name = reinterpret_cast<Translate>(reinterpret_cast<void*>(found))(path.c_str());
    const std::string result = name == nullptr ? std::string() : name;
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

std::string utf8(const std::wstring& text)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, &bytes[0], size, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::wstring ownPath()
{
    std::vector<wchar_t> buffer(32768);
    GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    return buffer.data();
}

std::wstring scratchFolder()
{
    wchar_t temp[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH, temp);
    const std::wstring folder = temp + std::wstring(L"shell") + std::to_wstring(GetCurrentProcessId()) +
                                L"_" + std::to_wstring(GetTickCount64());
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

void write(const std::wstring& path, const std::string& text)
{
    FILE* file = _wfopen(path.c_str(), L"wb");
    if (file == nullptr)
        return;
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
}

// Copies what the file has got since the last time.
void follow(const std::wstring& path, long long& position, FILE* target)
{
    FILE* file = _wfopen(path.c_str(), L"rb");
    if (file == nullptr)
        return;
    _fseeki64(file, position, SEEK_SET);
    char buffer[4096];
    for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
        std::fwrite(buffer, 1, count, target);
        position += static_cast<long long>(count);
    }
    std::fflush(target);
    std::fclose(file);
}

// What runs the script with its output in files and its exit code in a third, which comes last. Windows paths
// in the script are turned into what they are to the system's own shell.
std::string launcher(const std::string& program, const std::string& folder, int count, wchar_t** arguments)
{
    // The script finds its caller's name for itself in $0, as a program does.
    std::string call = "sh -c '. \"$at/script\"' " + quoted(program);
    for (int i = 1; i < count; ++i)
        call += ' ' + quoted(utf8(arguments[i]));
    const std::string unixNames = "s|\\b\\([CZ]\\):/|'\"$WINEPREFIX\"'/dosdevices/\\L\\1:/|g";
    return "export at=" + quoted(folder) + " STAND_IN_PROCESS=" + std::to_string(GetCurrentProcessId()) +
           "\nprintf '%s' " + quoted(kReader) + " >\"$at/script\"\nsed '" + unixNames + "' " +
           quoted(program + ".sh") + " >>\"$at/script\"\n" + call +
           " >\"$at/out\" 2>\"$at/err\"\necho $? >\"$at/part\"\nmv \"$at/part\" \"$at/code\"\n";
}

int exitCode(const std::wstring& path)
{
    int code = kNoExitCode;
    if (FILE* file = _wfopen(path.c_str(), L"rb")) {
        if (std::fscanf(file, "%d", &code) != 1)
            code = kNoExitCode;
        std::fclose(file);
    }
    return code;
}

bool start(const std::wstring& script)
{
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    const std::string name = unixName(script);
    std::wstring line = L"sh " + std::wstring(name.begin(), name.end());
    return CreateProcessW(L"Z:\\bin\\sh", &line[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                          &process) != 0;
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    const std::wstring folder = scratchFolder();
    write(folder + L"\\run", launcher(unixName(ownPath()), unixName(folder), count, arguments));
    if (!start(folder + L"\\run"))
        return kNoExitCode;
    long long out = 0;
    long long err = 0;
    for (bool ended = false; !ended;) {
        Sleep(kPollMs);
        ended = PathFileExistsW((folder + L"\\code").c_str()) != 0;
        follow(folder + L"\\out", out, stdout);
        follow(folder + L"\\err", err, stderr);
    }
    return exitCode(folder + L"\\code");
}
