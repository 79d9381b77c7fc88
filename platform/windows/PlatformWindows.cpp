#include "platform/windows/PlatformWindows.h"

#include "platform/RegistryText.h"
#include "platform/windows/HiddenCommand.h"
#include "platform/windows/WmiQuery.h"

#include <windows.h>

#include <string>

QByteArray PlatformWindows::systemDirectory() const
{
    char buffer[260] = {};
    GetSystemDirectoryA(buffer, sizeof(buffer));
    return QByteArray(buffer);
}

std::optional<QString> PlatformWindows::registryString(const QString& key, const QString& value) const
{
    const std::wstring keyText = key.toStdWString();
    const std::wstring valueText = value.toStdWString();
    DWORD size = 0;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, keyText.c_str(), valueText.c_str(), RRF_RT_REG_SZ, nullptr, nullptr,
                     &size) != ERROR_SUCCESS)
        return std::nullopt;
    std::wstring text(size / sizeof(wchar_t), L'\0');
    if (RegGetValueW(HKEY_LOCAL_MACHINE, keyText.c_str(), valueText.c_str(), RRF_RT_REG_SZ, nullptr, &text[0],
                     &size) != ERROR_SUCCESS)
        return std::nullopt;
    text.resize(size / sizeof(wchar_t));
    return registryText(text);
}

WindowsVersion PlatformWindows::windowsVersion() const
{
#if defined(_MSC_VER)
#pragma warning(suppress : 4996)
#endif
    const DWORD version = GetVersion();
    return {static_cast<int>(version & 0xff), static_cast<int>((version >> 8) & 0xff)};
}

std::optional<quint32> PlatformWindows::firmwareType() const
{
    // Resolved by name, because older systems do not export it and would fail to load this library.
    using GetFirmwareTypeCall = BOOL(WINAPI*)(quint32*);
    const HMODULE kernel = GetModuleHandleW(L"kernel32");
    const FARPROC found = kernel == nullptr ? nullptr : GetProcAddress(kernel, "GetFirmwareType");
    quint32 type = 0;
    if (found == nullptr || reinterpret_cast<GetFirmwareTypeCall>(reinterpret_cast<void*>(found))(&type) == 0)
        return std::nullopt;
    return type;
}

quint32 PlatformWindows::firmwareVariableError() const
{
    SetLastError(0);
    GetFirmwareEnvironmentVariableA("", "{00000000-0000-0000-0000-000000000000}", nullptr, 0);
    return GetLastError();
}

std::optional<quint64> PlatformWindows::installedMemoryKib() const
{
    ULONGLONG kib = 0;
    if (GetPhysicallyInstalledSystemMemory(&kib) == 0)
        return std::nullopt;
    return kib;
}

std::optional<VolumeGeometry> PlatformWindows::volumeGeometry(const QByteArray& root) const
{
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD clusters = 0;
    if (GetDiskFreeSpaceA(root.constData(), &sectorsPerCluster, &bytesPerSector, &freeClusters, &clusters) ==
        0)
        return std::nullopt;
    return VolumeGeometry{sectorsPerCluster, bytesPerSector, clusters};
}

std::vector<QVariantMap> PlatformWindows::wmiQuery(const QString& nameSpace, const QString& query,
                                                   const QStringList& properties) const
{
    return runWmiQuery(nameSpace, query, properties);
}

void PlatformWindows::runHidden(const QString& command) const
{
    runHiddenProcess(command);
}

std::unique_ptr<Platform> makeSystemPlatform()
{
    return std::make_unique<PlatformWindows>();
}
