#include "platform/linux/PlatformLinux.h"

QByteArray PlatformLinux::systemDirectory() const
{
    return QByteArrayLiteral("C:\\Windows\\system32");
}

std::optional<QString> PlatformLinux::registryString(const QString&, const QString&) const
{
    return std::nullopt;
}

std::unique_ptr<Platform> makeSystemPlatform()
{
    return std::make_unique<PlatformLinux>();
}
