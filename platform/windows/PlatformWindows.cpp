#include "platform/windows/PlatformWindows.h"

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
    while (!text.empty() && text.back() == L'\0')
        text.pop_back();
    return QString::fromStdWString(text);
}

std::unique_ptr<Platform> makeSystemPlatform()
{
    return std::make_unique<PlatformWindows>();
}
