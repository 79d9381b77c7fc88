#include "host/udisks/DeviceIdentity.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace host {

namespace {

QString identify(const DiskSnapshot& snapshot, DiskSource& source)
{
    const BlockDevice* device = snapshot.deviceFile(source.file);
    if (device == nullptr)
        return QStringLiteral("%1: the disk service does not know this disk").arg(source.file);
    if (device->partition)
        return QStringLiteral("%1: a partition; name its whole disk").arg(source.file);
    if (!device->encryptedDevice.isEmpty())
        return QStringLiteral("%1: the content of an encrypted volume, not a disk").arg(source.file);
    source.identity = identityOf(snapshot, *device);
    return QString();
}

// Two paths can lead to one disk: a loop device and its file, or two cables of one disk.
bool leadToSameDisk(const DiskSource& one, const DiskSource& other)
{
    if (one.file == other.file)
        return true;
    if (one.isImage != other.isImage) {
        const DiskSource& device = one.isImage ? other : one;
        return device.identity->backingFile == (one.isImage ? one : other).file;
    }
    return !one.isImage && !one.identity->id.isEmpty() && one.identity->id == other.identity->id;
}

} // namespace

DiskIdentity identityOf(const DiskSnapshot& snapshot, const BlockDevice& disk)
{
    DiskIdentity identity;
    identity.size = disk.size;
    identity.backingFile = disk.backingFile.value_or(QString());
    identity.id = identity.backingFile;
    if (const DriveInfo* drive = snapshot.drive(disk.drive)) {
        // Not every disk has each of them.
        QStringList numbers{drive->wwn, drive->serial, drive->id};
        numbers.removeAll(QString());
        identity.id = numbers.join(QLatin1Char('/'));
        identity.model = (drive->vendor + QLatin1Char(' ') + drive->model).trimmed();
    }
    return identity;
}

bool isSameDisk(const DiskIdentity& one, const DiskIdentity& other)
{
    return one.id == other.id && one.model == other.model && one.backingFile == other.backingFile &&
           one.size == other.size;
}

QString identifyDevices(const DiskSnapshot& snapshot, std::vector<DiskSource>& sources)
{
    for (DiskSource& source : sources) {
        const QString error = source.isImage ? QString() : identify(snapshot, source);
        if (!error.isEmpty())
            return error;
    }
    for (auto source = sources.begin(); source != sources.end(); ++source) {
        const auto same = std::find_if(sources.begin(), source, [&](const DiskSource& earlier) {
            return leadToSameDisk(earlier, *source);
        });
        if (same != source)
            return QStringLiteral("%1: the same disk as %2").arg(source->file, same->file);
    }
    return QString();
}

QString namesOf(const std::vector<DiskSource>& sources)
{
    QStringList names;
    for (const DiskSource& source : sources) {
        const bool hasModel = source.identity && !source.identity->model.isEmpty();
        names.append(hasModel ? source.identity->model : QFileInfo(source.file).fileName());
    }
    return names.join(QStringLiteral(", "));
}

} // namespace host
