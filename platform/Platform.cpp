#include "platform/Platform.h"

#include <algorithm>
#include <atomic>

namespace {
std::atomic<const Platform*> replacement{nullptr};
}

const Platform& Platform::instance()
{
    static const std::unique_ptr<Platform> system = makeSystemPlatform();
    const Platform* current = replacement.load();
    return current != nullptr ? *current : *system;
}

Platform::Scope::Scope(const Platform& platform) : previous_(replacement.exchange(&platform)) {}

Platform::Scope::~Scope()
{
    replacement.store(previous_);
}

QByteArray upperSystemDirectory()
{
    QByteArray directory = Platform::instance().systemDirectory();
    // ASCII only: the case of other letters depends on an unknown code page.
    std::transform(directory.begin(), directory.end(), directory.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return directory;
}

bool isArm64Machine()
{
    const std::optional<QString> processor = Platform::instance().registryString(
        QStringLiteral("SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment"),
        QStringLiteral("PROCESSOR_ARCHITECTURE"));
    return processor == QStringLiteral("ARM64");
}
