#include "platform/linux/PlatformLinux.h"

#include "platform/linux/MachineFiles.h"

#include <QtCore/QProcess>

#include <limits>
#include <utility>

#include <sys/statvfs.h>

namespace {

// A misspelt property is missing here as well, so the mistake is visible on every system.
QVariantMap selectProperties(const QVariantMap& row, const QStringList& properties)
{
    QVariantMap named;
    for (const QString& name : properties) {
        const auto found = row.constFind(name);
        if (found != row.constEnd())
            named.insert(name, found.value());
    }
    return named;
}

} // namespace

PlatformLinux::PlatformLinux(QString root) : root_(std::move(root)) {}

QByteArray PlatformLinux::systemDirectory() const
{
    return QByteArrayLiteral("C:\\Windows\\system32");
}

std::optional<QString> PlatformLinux::registryString(const QString&, const QString&) const
{
    return std::nullopt;
}

WindowsVersion PlatformLinux::windowsVersion() const
{
    // Any version from 6.2 on makes callers ask for the firmware type, which Linux reports.
    return {10, 0};
}

std::optional<quint32> PlatformLinux::firmwareType() const
{
    return startedByUefi(root_) ? 2u : 1u;
}

quint32 PlatformLinux::firmwareVariableError() const
{
    constexpr quint32 invalidFunction = 1;
    constexpr quint32 noSuchVariable = 998;
    return startedByUefi(root_) ? noSuchVariable : invalidFunction;
}

std::optional<quint64> PlatformLinux::installedMemoryKib() const
{
    return readInstalledMemoryKib(root_);
}

std::optional<VolumeGeometry> PlatformLinux::volumeGeometry(const QByteArray& root) const
{
    // The drive of the system directory corresponds to the root file system.
    struct statvfs volume = {};
    if (root != "C:" || statvfs("/", &volume) != 0)
        return std::nullopt;
    return VolumeGeometry{1, static_cast<quint64>(volume.f_frsize), static_cast<quint64>(volume.f_blocks)};
}

std::vector<QVariantMap> PlatformLinux::wmiQuery(const QString& nameSpace, const QString& query,
                                                 const QStringList& properties) const
{
    std::vector<QVariantMap> rows;
    for (const QVariantMap& allProperties : queryAllProperties(nameSpace, query))
        rows.push_back(selectProperties(allProperties, properties));
    return rows;
}

std::vector<QVariantMap> PlatformLinux::queryAllProperties(const QString& nameSpace,
                                                           const QString& query) const
{
    const bool tpm = nameSpace.endsWith(QLatin1String("MicrosoftTPM"));
    if (tpm)
        return query.contains(QLatin1String("Win32_TPM")) ? readTpmRows(root_) : std::vector<QVariantMap>();
    if (query.contains(QLatin1String("Win32_Processor")))
        return readProcessorRows(root_);
    if (query.contains(QLatin1String("Win32_ComputerSystem")))
        return {{{QStringLiteral("NumberOfProcessors"), static_cast<int>(readProcessorRows(root_).size())}}};
    if (query.contains(QLatin1String("Win32_OperatingSystem")))
        return {{{QStringLiteral("OSArchitecture"), runningSystemWidth()}}};
    return {};
}

void PlatformLinux::runHidden(const QString& command) const
{
    QStringList words = QProcess::splitCommand(command);
    if (words.isEmpty())
        return;
    QProcess process;
    const QString program = words.takeFirst();
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, words);
    process.waitForFinished(std::numeric_limits<int>::max());
}

std::unique_ptr<Platform> makeSystemPlatform()
{
    return std::make_unique<PlatformLinux>();
}
