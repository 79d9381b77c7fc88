#include "host/udisks/DeviceFactsReader.h"

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <utility>

namespace host {

namespace {

constexpr int kLimitMs = 10000;
constexpr int kUsualSector = 512;
constexpr int kTools = 4;

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

// A path, an offset or a size can return with another file system, so all of them are compared.
QString stateOf(const BlockDevice& device)
{
    const qint64 offset = device.partition ? device.partition->offset : 0;
    const QString partition = device.partition ? device.partition->uuid : QString();
    return QStringList{device.path,
                       QString::number(offset),
                       QString::number(device.size),
                       partition,
                       device.type,
                       device.version,
                       device.uuid,
                       device.mountPoints.join(QLatin1Char(' '))}
        .join(QLatin1Char('|'));
}

} // namespace

void DeviceFactsReader::read(const std::vector<BlockDevice>& devices, std::function<void()> done)
{
    stop();
    done_ = std::move(done);
    for (const BlockDevice& device : devices) {
        // The used space of a mounted file system changes without a signal.
        if (!device.mountPoints.isEmpty())
            forget(device.path);
        if (usedSpaceTool(device) && !known_.contains(stateOf(device)))
            queue_.push_back(device);
    }
    startNext();
}

void DeviceFactsReader::stop()
{
    ++reading_;
    queue_.clear();
    tools_.clear();
    unfinished_ = 0;
    done_ = nullptr;
}

void DeviceFactsReader::forget(const QString& path)
{
    for (auto it = known_.begin(); it != known_.end();)
        it = it->path == path ? known_.erase(it) : std::next(it);
}

DeviceFacts DeviceFactsReader::factsOf(const BlockDevice& device) const
{
    DeviceFacts facts;
    facts.sectorSize = sectorSizeOf(device);
    if (const auto space = known_.value(stateOf(device)).space) {
        facts.usedBytes = space->usedBytes;
        facts.clusterBytes = space->clusterBytes;
    }
    return facts;
}

void DeviceFactsReader::startNext()
{
    while (unfinished_ < kTools && !queue_.empty()) {
        const BlockDevice device = queue_.back();
        queue_.pop_back();
        const UsedSpaceTool tool = *usedSpaceTool(device);
        ++unfinished_;
        if (tool.readsDevice)
            open(device, tool);
        else
            run(device, tool, QDBusUnixFileDescriptor());
    }
    finishIfDone();
}

void DeviceFactsReader::open(const BlockDevice& device, const UsedSpaceTool& tool)
{
    const QVariantMap options{{QStringLiteral("auth.no_user_interaction"), true}};
    const DiskServiceCall call{
        device.path, QStringLiteral("Block"), QStringLiteral("OpenDevice"), {QStringLiteral("r"), options}};
    const int reading = reading_;
    service_.call(
        call, [self = QPointer<DeviceFactsReader>(this), reading, device, tool](const QDBusMessage& reply) {
            if (!self || self->reading_ != reading)
                return;
            const auto descriptor = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
            if (errorOf(reply).isEmpty() && descriptor.isValid())
                self->run(device, tool, descriptor);
            else
                self->finishDevice(device, std::nullopt);
        });
}

void DeviceFactsReader::run(const BlockDevice& device, const UsedSpaceTool& tool,
                            const QDBusUnixFileDescriptor& descriptor)
{
    tools_.push_back(std::make_unique<ToolProcess>(
        tool, descriptor, [this, device](std::optional<UsedSpace> space) { finishDevice(device, space); }));
    Q_EMIT toolStarted(device.device);
    tools_.back()->run(kLimitMs);
}

void DeviceFactsReader::finishDevice(const BlockDevice& device, std::optional<UsedSpace> space)
{
    known_.insert(stateOf(device), {device.path, space});
    --unfinished_;
    startNext();
}

void DeviceFactsReader::finishIfDone()
{
    if (unfinished_ > 0 || !queue_.empty())
        return;
    // A tool that is emitting a signal must not be destroyed.
    QTimer::singleShot(0, this, [this, reading = reading_] {
        if (reading != reading_)
            return;
        tools_.clear();
        if (const auto done = std::exchange(done_, nullptr))
            done();
    });
}

} // namespace host
