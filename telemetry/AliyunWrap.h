#pragma once


#include <array>
#include <functional>
#include <mutex>
#include <string>

/// How a library beside this module is found and opened; a test puts its own here.
struct ModuleAccess
{
    /// Full path of this module, empty if unknown.
    std::function<std::wstring()> moduleFileName;
    /// Opens a library for the rest of the process, null on failure.
    std::function<void*(const std::wstring& path)> load;
    /// Address of an entry point, null if the library lacks it.
    std::function<void*(void* module, const char* entryPoint)> resolve;

    /// The system's own. Where the closed telemetry library does not exist it finds nothing.
    static ModuleAccess system();
};

/// The closed telemetry library and its entry points. They are resolved and never called: what remains is
/// that the library is loaded into the process.
struct AliyunWrapTable
{
    static constexpr int entryPointCount = 16;
    static const std::array<const char*, entryPointCount> entryPointNames;

    void* module = nullptr;
    std::array<void*, entryPointCount> entryPoints{};
    std::mutex lock;
};

/// Finds the library beside this module, loads it and resolves the entry points; a gap stays null, and a
/// missing library leaves the table empty.
void bindAliyunWrap(AliyunWrapTable& table, const ModuleAccess& access = ModuleAccess::system());
