#include "host/udisks/DeviceFactsReader.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QStorageInfo>

namespace host {

namespace {

constexpr int kLimitMs = 10000;
constexpr int kUsualSector = 512;

int sectorSizeOf(const BlockDevice& device)
{
    const QString name = device.device.mid(device.device.lastIndexOf(QLatin1Char('/')) + 1);
    QFile file(QStringLiteral("/sys/class/block/%1/queue/logical_block_size").arg(name));
    // A partition has no queue of its own.
    if (!file.open(QIODevice::ReadOnly))
        file.setFileName(QStringLiteral("/sys/class/block/%1/../queue/logical_block_size").arg(name));
    const bool isOpen = file.isOpen() || file.open(QIODevice::ReadOnly);
    const int size = isOpen ? file.readAll().trimmed().toInt() : 0;
    return size > 0 ? size : kUsualSector;
}

// The output of a tool in English; empty if it fails.
QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/sbin:/sbin:/usr/bin:/bin"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("env"), QStringList{program} + arguments, QIODevice::ReadOnly);
    const bool isDone = process.waitForFinished(kLimitMs) && process.exitStatus() == QProcess::NormalExit &&
                        process.exitCode() == 0;
    return isDone ? QString::fromLocal8Bit(process.readAllStandardOutput()) : QString();
}

std::optional<qint64> numberIn(const QString& text, const QString& pattern)
{
    const QRegularExpressionMatch match =
        QRegularExpression(pattern, QRegularExpression::MultilineOption).match(text);
    return match.hasMatch() ? std::optional<qint64>(match.captured(1).toLongLong()) : std::nullopt;
}

} // namespace

std::optional<qint64> usedOfNtfsresize(const QString& output)
{
    // The smallest possible size, which includes data that cannot be moved.
    return numberIn(output, QStringLiteral("^You might resize at (\\d+) bytes"));
}

std::optional<qint64> usedOfDumpe2fs(const QString& output)
{
    const auto blocks = numberIn(output, QStringLiteral("^Block count:\\s+(\\d+)$"));
    const auto free = numberIn(output, QStringLiteral("^Free blocks:\\s+(\\d+)$"));
    const auto size = numberIn(output, QStringLiteral("^Block size:\\s+(\\d+)$"));
    if (!blocks || !free || !size)
        return std::nullopt;
    return (*blocks - *free) * *size;
}

DeviceFacts readDeviceFacts(const BlockDevice& device)
{
    DeviceFacts facts;
    facts.sectorSize = sectorSizeOf(device);
    if (!device.mountPoints.isEmpty()) {
        const QStorageInfo mount(device.mountPoints.constFirst());
        facts.usedBytes = mount.bytesTotal() - mount.bytesFree();
        facts.clusterBytes = mount.blockSize();
    } else if (device.type == QLatin1String("ntfs")) {
        const QString output =
            outputOf(QStringLiteral("ntfsresize"), {QStringLiteral("--info"), QStringLiteral("--force"),
                                                    QStringLiteral("--no-progress-bar"), device.device});
        facts.usedBytes = usedOfNtfsresize(output);
        facts.clusterBytes = static_cast<int>(
            numberIn(output, QStringLiteral("^Cluster size\\s*: (\\d+) bytes$")).value_or(0));
    } else if (device.type.startsWith(QLatin1String("ext"))) {
        const QString output = outputOf(QStringLiteral("dumpe2fs"), {QStringLiteral("-h"), device.device});
        facts.usedBytes = usedOfDumpe2fs(output);
        facts.clusterBytes =
            static_cast<int>(numberIn(output, QStringLiteral("^Block size:\\s+(\\d+)$")).value_or(0));
    }
    return facts;
}

} // namespace host
