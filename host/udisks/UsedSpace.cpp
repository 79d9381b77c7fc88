#include "host/udisks/UsedSpace.h"

#include <QtCore/QRegularExpression>

namespace host {

namespace {

const QString kInput = QStringLiteral("/dev/stdin");

std::optional<qint64> numberIn(const QString& text, const char* pattern)
{
    const QRegularExpression expression(QString::fromLatin1(pattern), QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = expression.match(text);
    return match.hasMatch() ? std::optional<qint64>(match.captured(1).toLongLong()) : std::nullopt;
}

std::optional<UsedSpace> spaceOf(std::optional<qint64> usedClusters, std::optional<qint64> clusterBytes)
{
    if (!usedClusters || !clusterBytes)
        return std::nullopt;
    return UsedSpace{*usedClusters * *clusterBytes, static_cast<int>(*clusterBytes)};
}

std::optional<UsedSpace> differenceOf(std::optional<qint64> allClusters, std::optional<qint64> freeClusters,
                                      std::optional<qint64> clusterBytes)
{
    if (!allClusters || !freeClusters)
        return std::nullopt;
    return spaceOf(*allClusters - *freeClusters, clusterBytes);
}

// The smallest possible size, which includes data that cannot be moved.
std::optional<UsedSpace> ofNtfsresize(const QString& output)
{
    const auto used = numberIn(output, "^You might resize at (\\d+) bytes");
    const auto cluster = numberIn(output, "^Cluster size\\s*: (\\d+) bytes$");
    if (!used || !cluster)
        return std::nullopt;
    return UsedSpace{*used, static_cast<int>(*cluster)};
}

std::optional<UsedSpace> ofDumpe2fs(const QString& output)
{
    return differenceOf(numberIn(output, "^Block count:\\s+(\\d+)$"),
                        numberIn(output, "^Free blocks:\\s+(\\d+)$"),
                        numberIn(output, "^Block size:\\s+(\\d+)$"));
}

std::optional<UsedSpace> ofFsckFat(const QString& output)
{
    return spaceOf(numberIn(output, "^/dev/stdin: \\d+ files, (\\d+)/\\d+ clusters$"),
                   numberIn(output, "^\\s*(\\d+) bytes per cluster$"));
}

std::optional<UsedSpace> ofDumpExfat(const QString& output)
{
    return differenceOf(numberIn(output, "^Total Clusters:\\s+(\\d+)$"),
                        numberIn(output, "^Free Clusters:\\s+(\\d+)$"),
                        numberIn(output, "^Cluster size:\\s+(\\d+)$"));
}

std::optional<UsedSpace> ofStat(const QString& output)
{
    return differenceOf(numberIn(output, "^\\d+ (\\d+) \\d+$"), numberIn(output, "^\\d+ \\d+ (\\d+)$"),
                        numberIn(output, "^(\\d+) \\d+ \\d+$"));
}

} // namespace

std::optional<UsedSpaceTool> usedSpaceTool(const BlockDevice& device)
{
    if (!device.mountPoints.isEmpty())
        return UsedSpaceTool{QStringLiteral("stat"),
                             {QStringLiteral("--file-system"), QStringLiteral("--format=%S %b %f"),
                              device.mountPoints.constFirst()},
                             ofStat,
                             false};
    if (device.type == QLatin1String("ntfs"))
        return UsedSpaceTool{QStringLiteral("ntfsresize"),
                             {QStringLiteral("--info"), QStringLiteral("--force"),
                              QStringLiteral("--no-progress-bar"), kInput},
                             ofNtfsresize};
    if (device.type == QLatin1String("vfat"))
        return UsedSpaceTool{
            QStringLiteral("fsck.fat"), {QStringLiteral("-n"), QStringLiteral("-v"), kInput}, ofFsckFat};
    if (device.type == QLatin1String("exfat"))
        return UsedSpaceTool{QStringLiteral("dump.exfat"), {kInput}, ofDumpExfat};
    const bool isExt = device.type == QLatin1String("ext2") || device.type == QLatin1String("ext3") ||
                       device.type == QLatin1String("ext4");
    if (isExt)
        return UsedSpaceTool{QStringLiteral("dumpe2fs"), {QStringLiteral("-h"), kInput}, ofDumpe2fs};
    return std::nullopt;
}

} // namespace host
