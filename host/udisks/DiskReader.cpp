#include "host/udisks/DiskReader.h"

#include "host/udisks/DiskUse.h"
#include "host/udisks/KernelPartitions.h"
#include "host/udisks/UnreadPartitions.h"

#include <QtCore/QPointer>

#include <algorithm>

namespace host {

namespace {

constexpr int kQuietMs = 250;
constexpr int kLargestAttempts = 40;
constexpr int kAttemptsBeforeRescan = 4;
// A table that is being written is soon complete; a damaged one remains damaged.
constexpr int kUnreadableAttempts = 8;

bool areReadable(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources)
{
    return std::none_of(sources.begin(), sources.end(), [&](const DiskSource& source) {
        const BlockDevice* disk = source.find(snapshot);
        return disk != nullptr && contentRejection(*disk);
    });
}

// The partitions of the host's own disks.
std::vector<BlockDevice> partitionsOf(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources)
{
    std::vector<BlockDevice> partitions;
    for (const DiskSource& source : sources) {
        if (const BlockDevice* disk = source.find(snapshot)) {
            for (const BlockDevice* entry : snapshot.partitionsOf(disk->path))
                partitions.push_back(*entry);
        }
    }
    return partitions;
}

} // namespace

DiskReader::DiskReader(DiskService& service, const std::vector<DiskSource>& sources)
    : service_(service), sources_(sources), facts_(service)
{
    quietTimer_.setSingleShot(true);
    quietTimer_.setInterval(kQuietMs);
    connect(&quietTimer_, &QTimer::timeout, this, &DiskReader::start);
    connect(&service_, &DiskService::changed, this, &DiskReader::onChanged);
    connect(&service_, &DiskService::propertyChanged, &facts_, &DeviceFactsReader::forget);
}

void DiskReader::readSoon()
{
    restart();
}

void DiskReader::pause()
{
    isPaused_ = true;
    isReading_ = false;
    ++reading_;
    quietTimer_.stop();
    facts_.stop();
}

void DiskReader::resume()
{
    isPaused_ = false;
    attempts_ = 0;
    quietTimer_.start();
}

// The path of a partition starts with that of its disk.
void DiskReader::onChanged(const QString& path)
{
    const bool isOurs = std::any_of(paths_.begin(), paths_.end(),
                                    [&](const QString& known) { return path.startsWith(known); });
    if (isOurs || paths_.isEmpty())
        restart();
}

void DiskReader::restart()
{
    changed_ = true;
    if (!isPaused_ && !isReading_)
        quietTimer_.start();
}

// While a disk is missing, every new object can be that disk.
void DiskReader::remember(const DiskSnapshot& snapshot)
{
    paths_.clear();
    for (const DiskSource& source : sources_) {
        const BlockDevice* disk = source.find(snapshot);
        if (disk == nullptr)
            return paths_.clear();
        paths_.append(disk->path);
        if (snapshot.drive(disk->drive) != nullptr)
            paths_.append(disk->drive);
    }
}

void DiskReader::start()
{
    isReading_ = true;
    changed_ = false;
    service_.read([self = QPointer<DiskReader>(this), reading = ++reading_](const DiskSnapshot& snapshot,
                                                                            const QString& error) {
        if (self && self->reading_ == reading)
            self->onSnapshot(snapshot, error);
    });
}

void DiskReader::onSnapshot(const DiskSnapshot& snapshot, const QString& error)
{
    if (!error.isEmpty()) {
        isReading_ = false;
        attempts_ = 0;
        Q_EMIT failed(error);
        return;
    }
    remember(snapshot);
    const bool isCurrent = isSettled(snapshot, sources_) &&
                           std::all_of(sources_.begin(), sources_.end(), [&](const DiskSource& source) {
                               // A replaced disk is settled, and is not read.
                               const BlockDevice* disk = source.find(snapshot);
                               return disk == nullptr || matchesKernel(snapshot, *disk);
                           });
    const bool isWritten = areReadable(snapshot, sources_) || attempts_ >= kUnreadableAttempts;
    if (!(isCurrent && isWritten) && ++attempts_ < kLargestAttempts) {
        isReading_ = false;
        if (attempts_ % kAttemptsBeforeRescan == 0)
            rescan(snapshot);
        return quietTimer_.start();
    }
    facts_.read(partitionsOf(snapshot, sources_), [this, snapshot] { onComplete(snapshot); });
}

void DiskReader::rescan(const DiskSnapshot& snapshot)
{
    for (const DiskSource& source : sources_) {
        if (const BlockDevice* disk = source.find(snapshot))
            rescanUnread(service_, snapshot, *disk);
    }
}

void DiskReader::onComplete(const DiskSnapshot& snapshot)
{
    isReading_ = false;
    if (changed_ && ++attempts_ < kLargestAttempts)
        return quietTimer_.start();
    attempts_ = 0;
    if (changed_)
        quietTimer_.start();
    Q_EMIT read(snapshot);
}

} // namespace host
