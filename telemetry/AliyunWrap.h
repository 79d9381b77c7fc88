#pragma once

#include <array>
#include <functional>
#include <mutex>
#include <string>

/// Finds and opens a library next to this module; tests replace it.
struct ModuleAccess
{
    /// Returns the full path of this module; empty if unknown.
    std::function<std::wstring()> moduleFileName;
    /// Opens a library, which stays loaded until the process ends; null on failure.
    std::function<void*(const std::wstring& path)> load;
    /// Returns the address of an entry point; null if the library lacks it.
    std::function<void*(void* module, const char* entryPoint)> resolve;

    /// The system's implementation. It finds nothing on systems for which the closed telemetry library does
    /// not exist.
    static ModuleAccess system();
};

/// Entry points of the closed telemetry library. They are resolved but never called: the only effect is that
/// the library is loaded into the process.
struct AliyunWrapTable
{
    static constexpr int entryPointCount = 16;
    static const std::array<const char*, entryPointCount> entryPointNames;

    void* module = nullptr;
    std::array<void*, entryPointCount> entryPoints{};
    std::mutex lock;
};

/// Finds the library next to this module, loads it and resolves the entry points. A missing entry point stays
/// null; a missing library leaves the table empty.
void bindAliyunWrap(AliyunWrapTable& table, const ModuleAccess& access = ModuleAccess::system());
