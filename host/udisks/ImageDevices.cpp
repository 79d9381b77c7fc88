#include "host/udisks/ImageDevices.h"

#include "host/machine/Layout.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QThread>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <utility>

namespace host {

namespace {

const QString kManager = QStringLiteral("/org/freedesktop/UDisks2/Manager");
// Room for a partition table and one partition.
constexpr qint64 kSmallestImage = 4 * kMebibyte;
constexpr qint64 kSector = 512;
constexpr int kDetachMs = 2000;
constexpr int kPollMs = 20;
constexpr int kSetUpAttempts = 5;
const QString kFailed = QStringLiteral("org.freedesktop.UDisks2.Error.Failed");

QString contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()).trimmed() : QString();
}

// The kernel's answer. The service notices a new or detached device a moment later.
QString backingFileOf(const QString& objectPath)
{
    const QString name = objectPath.mid(objectPath.lastIndexOf(QLatin1Char('/')) + 1);
    return contentOf(QStringLiteral("/sys/class/block/%1/loop/backing_file").arg(name));
}

// The name of the loop device of a file; empty if the file is not attached.
QString loopDeviceOf(const QString& file)
{
    const QStringList names =
        QDir(QStringLiteral("/sys/block")).entryList({QStringLiteral("loop*")}, QDir::AllEntries);
    const auto found = std::find_if(names.begin(), names.end(), [&](const QString& name) {
        return backingFileOf(QLatin1Char('/') + name) == file;
    });
    return found == names.end() ? QString() : *found;
}

// Loop devices do not survive a restart of the computer.
QString bootId()
{
    return contentOf(QStringLiteral("/proc/sys/kernel/random/boot_id"));
}

QString sizeProblem(qint64 size)
{
    if (size < kSmallestImage)
        return QStringLiteral("the image is smaller than 4 MiB");
    return size % kSector == 0 ? QString() : QStringLiteral("the image is not a multiple of 512 bytes");
}

// Locks that other programs, such as virtual machines, hold on the file.
bool hasRecordLock(const QFile& file)
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return fcntl(file.handle(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

} // namespace

ImageDevices::~ImageDevices()
{
    detach();
}

QString ImageDevices::attach(const std::vector<DiskSource>& sources)
{
    const auto read = service_.readNow();
    if (const QString* error = std::get_if<QString>(&read))
        return *error;
    for (const DiskSource& source : sources) {
        if (!source.isImage)
            continue;
        Image image;
        image.source = source;
        QString error = lock(image);
        if (error.isEmpty())
            error = attachImage(image, std::get<DiskSnapshot>(read));
        if (!error.isEmpty())
            return QStringLiteral("%1: %2").arg(source.file, error);
        images_.push_back(std::move(image));
    }
    return QString();
}

// The lock belongs to the open file, so it vanishes with the process.
QString ImageDevices::lock(Image& image)
{
    image.lock = std::make_unique<QFile>(image.source.file);
    image.isReadOnly = !image.lock->open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
    if (image.isReadOnly && !image.lock->open(QIODevice::ReadOnly | QIODevice::ExistingOnly))
        return image.lock->errorString();
    const QString problem = sizeProblem(image.lock->size());
    if (!problem.isEmpty())
        return problem;
    if (flock(image.lock->handle(), LOCK_EX | LOCK_NB) != 0)
        return QStringLiteral("the image is already open in another host or program");
    return hasRecordLock(*image.lock) ? QStringLiteral("another program has locked the image") : QString();
}

QString ImageDevices::attachImage(Image& image, const DiskSnapshot& snapshot)
{
    const QString name = loopDeviceOf(image.source.file);
    if (name.isEmpty())
        return setUp(image);
    const QString path = QStringLiteral("/org/freedesktop/UDisks2/block_devices/") + name;
    const BlockDevice* known = snapshot.device(path);
    BlockDevice device = known == nullptr ? BlockDevice() : *known;
    device.path = path;
    device.device = QStringLiteral("/dev/") + name;
    return takeOver(image, device);
}

QString ImageDevices::takeOver(Image& image, const BlockDevice& device)
{
    Rejection problem;
    if (state_.read(problem).value(image.source.file) != bootId())
        return QStringLiteral(
                   "another program has attached the image as %1; detach it with losetup --detach %1")
            .arg(device.device);
    image.path = device.path;
    image.isTakenOver = true;
    notices_.push_back(
        Text(QT_TRANSLATE_NOOP("Sandbox", "The image %1 was still attached as %2 by a host that "
                                          "ended unexpectedly. The device is used again."),
             {image.source.file, device.device}));
    return QString();
}

QString ImageDevices::setUp(Image& image)
{
    QFile file(image.source.file);
    const auto mode = image.isReadOnly ? QIODevice::ReadOnly : QIODevice::ReadWrite;
    if (!file.open(mode | QIODevice::ExistingOnly))
        return file.errorString();
    QVariantMap options;
    if (image.isReadOnly)
        options.insert(QStringLiteral("read-only"), true);
    // Recorded first: the process can end at any time.
    record(image, true);
    const DiskServiceCall call{kManager,
                               QStringLiteral("Manager"),
                               QStringLiteral("LoopSetup"),
                               {QVariant::fromValue(QDBusUnixFileDescriptor(file.handle())), options}};
    QDBusMessage reply = service_.callNow(call);
    // Another program can take the loop device that the service has chosen.
    for (int i = 1; i < kSetUpAttempts && reply.errorName() == kFailed; ++i) {
        QThread::msleep(kPollMs);
        reply = service_.callNow(call);
    }
    if (!errorOf(reply).isEmpty()) {
        record(image, false);
        return errorOf(reply);
    }
    image.path = reply.arguments().value(0).value<QDBusObjectPath>().path();
    return QString();
}

void ImageDevices::record(const Image& image, bool isAttached)
{
    if (const Rejection problem = state_.write({{image.source.file, isAttached ? bootId() : QString()}}))
        notices_.push_back(*problem);
}

void ImageDevices::detach()
{
    for (const Image& image : std::exchange(images_, {})) {
        // Another program can have detached the image, and the device can have another file.
        if (backingFileOf(image.path) == image.source.file)
            remove(image);
        if (backingFileOf(image.path) != image.source.file)
            record(image, false);
    }
}

void ImageDevices::leaveTakenOver()
{
    images_.erase(
        std::remove_if(images_.begin(), images_.end(), [](const Image& image) { return image.isTakenOver; }),
        images_.end());
}

// A device that is still open disappears when it is closed.
void ImageDevices::remove(const Image& image)
{
    const DiskServiceCall call{image.path, QStringLiteral("Loop"), QStringLiteral("Delete"), {QVariantMap()}};
    const QString error = errorOf(service_.callNow(call));
    if (!error.isEmpty()) {
        const QString device =
            QStringLiteral("/dev/") + image.path.mid(image.path.lastIndexOf(QLatin1Char('/')) + 1);
        notices_.push_back(Text(QT_TRANSLATE_NOOP("Sandbox", "The image %1 stays attached as %2: %3"),
                                {image.source.file, device, error}));
        return;
    }
    for (int waited = 0; waited < kDetachMs && !backingFileOf(image.path).isEmpty(); waited += kPollMs)
        QThread::msleep(kPollMs);
}

} // namespace host
