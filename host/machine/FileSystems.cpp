#include "host/machine/FileSystems.h"

#include <algorithm>
#include <iterator>

namespace host {

namespace {

constexpr qint64 kKiB = 1024;
constexpr qint64 kMiB = 1024 * kKiB;
constexpr qint64 kGiB = 1024 * kMiB;
constexpr qint64 kTiB = 1024 * kGiB;
constexpr qint64 kFourBytes = (qint64(1) << 32) - 1;
constexpr qint64 kTwentyEightBits = (qint64(1) << 28) - 12;
const char* const kBadInFatLabel = "*?/\\|.,;:+=<>[]\"";

const FileSystem kFileSystems[] = {
    {"NTFS", 8 * kMiB, 256 * kTiB, 256 * kTiB, 32, 512, 2 * kMiB, kFourBytes, ""},
    {"FAT", 4 * kMiB, 4 * kGiB, 4 * kGiB, 11, 512, 64 * kKiB, 65524, kBadInFatLabel},
    {"FAT16", 4 * kMiB, 4 * kGiB, 4 * kGiB, 11, 512, 64 * kKiB, 65524, kBadInFatLabel},
    {"FAT32", 33 * kMiB, 32 * kGiB, 2 * kTiB, 11, 512, 64 * kKiB, kTwentyEightBits, kBadInFatLabel},
    {"exFAT", 4 * kMiB, 256 * kTiB, 256 * kTiB, 11, 512, 2 * kMiB, kFourBytes, ""},
    {"EXT2", 4 * kMiB, 16 * kTiB, 16 * kTiB, 16, 1024, 64 * kKiB, kFourBytes, ""},
    {"EXT3", 4 * kMiB, 16 * kTiB, 16 * kTiB, 16, 1024, 64 * kKiB, kFourBytes, ""},
    {"EXT4", 4 * kMiB, 16 * kTiB, 16 * kTiB, 16, 1024, 64 * kKiB, kFourBytes, ""},
};

bool isFat(const FileSystem& kind)
{
    return QLatin1String(kind.name).startsWith(QLatin1String("FAT"));
}

Text nameOf(const FileSystem& kind)
{
    return QString::fromLatin1(kind.name);
}

} // namespace

const FileSystem* fileSystem(const QString& name)
{
    const auto found =
        std::find_if(std::begin(kFileSystems), std::end(kFileSystems), [&](const FileSystem& kind) {
            return name.compare(QLatin1String(kind.name), Qt::CaseInsensitive) == 0;
        });
    return found == std::end(kFileSystems) ? nullptr : found;
}

// The size steps of common systems; after the last step the cluster grows with the volume.
int defaultCluster(const FileSystem& kind, qint64 size)
{
    qint64 cluster = 4 * kKiB;
    if (isFat(kind))
        cluster = size <= 8 * kGiB    ? 4 * kKiB
                  : size <= 16 * kGiB ? 8 * kKiB
                  : size <= 32 * kGiB ? 16 * kKiB
                                      : 32 * kKiB;
    else if (QLatin1String(kind.name) == QLatin1String("exFAT"))
        cluster = size <= 256 * kMiB ? 4 * kKiB : size <= 32 * kGiB ? 32 * kKiB : 128 * kKiB;
    while (cluster < kind.largestCluster && size / cluster > kind.clusters)
        cluster *= 2;
    return static_cast<int>(cluster);
}

Rejection clusterRejection(const FileSystem& kind, qint64 size, int cluster)
{
    const bool powerOfTwo = cluster > 0 && (cluster & (cluster - 1)) == 0;
    if (!powerOfTwo || cluster < kind.smallestCluster || cluster > kind.largestCluster)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The cluster size is not supported."));
    return rejectIf(size / cluster > kind.clusters,
                    QT_TRANSLATE_NOOP("Sandbox", "The clusters are too small for that size."));
}

Rejection newVolumeRejection(const FileSystem& kind, qint64 size, int cluster, const QString& label)
{
    if (size < kind.smallest || size > kind.largestMade)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "%1 cannot be created in that size."), {nameOf(kind)});
    if (const Rejection rejection =
            clusterRejection(kind, size, cluster == 0 ? defaultCluster(kind, size) : cluster))
        return rejection;
    return labelRejection(kind, label);
}

Rejection labelRejection(const FileSystem& kind, const QString& label)
{
    if (label.size() > kind.label)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The label is too long."));
    const QLatin1String bad(kind.badInLabel);
    const bool isBad = std::any_of(label.begin(), label.end(),
                                   [&](QChar c) { return c < QLatin1Char(' ') || bad.contains(c); });
    return rejectIf(isBad, QT_TRANSLATE_NOOP("Sandbox", "The label contains an invalid character."));
}

Rejection sizeRejection(const FileSystem& kind, qint64 size, int cluster)
{
    if (size < kind.smallest || size > kind.largest)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "%1 does not support that size."), {nameOf(kind)});
    return rejectIf(cluster > 0 && size / cluster > kind.clusters,
                    QT_TRANSLATE_NOOP("Sandbox", "The clusters are too small for that size."));
}

} // namespace host
