#include "telemetry/AliyunWrap.h"

namespace {

constexpr std::size_t kPathLimit = 260;
const std::wstring kLibrary = L"AliyunWrap.DLL";

// The path of the library in the folder of this module; empty if the folder is unknown or the path is too
// long.
std::wstring libraryPath(const std::wstring& moduleFile)
{
    // A longer path would be truncated and name another folder, from which nothing may be loaded.
    if (moduleFile.size() >= kPathLimit)
        return std::wstring();
    const std::size_t backslash = moduleFile.rfind(L'\\');
    if (backslash == std::wstring::npos)
        return std::wstring();
    const std::wstring folder = moduleFile.substr(0, backslash + 1);
    return folder.size() + kLibrary.size() < kPathLimit ? folder + kLibrary : std::wstring();
}

// Bound when the module is loaded.
struct BoundTable : AliyunWrapTable
{
    BoundTable()
    {
        const std::lock_guard<std::mutex> guard(lock);
        bindAliyunWrap(*this);
    }
} boundTable;

} // namespace

const std::array<const char*, AliyunWrapTable::entryPointCount> AliyunWrapTable::entryPointNames = {
    "AliyunOpenSession",
    "AliyunCloseSession",
    "AliyunAddParamToSessionA",
    "AliyunAddParamToSessionW",
    "AliyunSendInfo",
    "AliyunEnableUserInfoCollect",
    "AliyunInstallConfigFilePath",
    "AliyunInstallInitUid",
    "AliyunUninstallStart",
    "AliyunUninstallEnd",
    "AliyunIsEnableUserInfoCollect",
    "AliyunEndCache",
    "AliyunGetUserUid",
    "AliyunStopProcess",
    "AliyunGetKeyValue",
    "AliyunSetKeyValue",
};

void bindAliyunWrap(AliyunWrapTable& table, const ModuleAccess& access)
{
    const std::wstring path = libraryPath(access.moduleFileName());
    if (path.empty() || table.module != nullptr)
        return;
    table.module = access.load(path);
    if (table.module == nullptr)
        return;
    for (std::size_t i = 0; i < table.entryPoints.size(); ++i)
        table.entryPoints[i] = access.resolve(table.module, AliyunWrapTable::entryPointNames[i]);
}
