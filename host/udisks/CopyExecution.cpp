#include "host/udisks/CopyExecution.h"

#include "host/udisks/BlockCopy.h"
#include "host/udisks/VolumeIdentity.h"

#include <QtCore/QPointer>

#include <utility>

namespace host {

namespace {

OpenRequest requestOf(const DiskSource& source, const OrderTarget& target, const char* method)
{
    OpenRequest request;
    request.source = source;
    request.target = target;
    request.method = QString::fromLatin1(method);
    request.arguments = {QVariantMap()};
    return request;
}

} // namespace

CopyExecution::CopyExecution(DiskService& service, PartitionCopy copy, std::shared_ptr<OrderTarget> found)
    : service_(service), copy_(std::move(copy)), found_(std::move(found))
{
    connect(&service_, &DiskService::availabilityChanged, this, &CopyExecution::onAvailabilityChanged);
}

void CopyExecution::start()
{
    OpenRequest request = requestOf(copy_.source, copy_.from, "OpenForBackup");
    request.checksKernel = true;
    open(request, &CopyExecution::onSourceOpened);
}

void CopyExecution::cancel()
{
    cancelled_ = true;
    if (worker_)
        worker_->cancel();
}

double CopyExecution::progress() const
{
    return progress_;
}

void CopyExecution::open(const OpenRequest& request, void (CopyExecution::*next)(const OpenedDevice&))
{
    const auto onReply = [this, next](const Opened& opened) {
        if (const Text* error = std::get_if<Text>(&opened))
            return end(*error);
        if (cancelled_ || isLost_)
            return end(kAccepted);
        (this->*next)(std::get<OpenedDevice>(opened));
    };
    DeviceOpener::open(service_, request, onReply, this);
}

void CopyExecution::onSourceOpened(const OpenedDevice& device)
{
    source_ = device;
    if (device.type != copy_.type)
        return end(
            Text(QT_TRANSLATE_NOOP("Sandbox", "The partition has changed since the order was accepted.")));
    OpenRequest request = requestOf(copy_.destination, copy_.to, "OpenForRestore");
    request.isNew = copy_.isNew;
    open(request, &CopyExecution::onTargetOpened);
}

// Both descriptors are exclusive, so that neither partition can be mounted during the copy.
void CopyExecution::onTargetOpened(const OpenedDevice& device)
{
    target_ = device;
    *found_ = device.target;
    if (device.target.size < copy_.from.size)
        return end(Text(QT_TRANSLATE_NOOP("Sandbox", "The destination is too small.")));
    OpenRequest request = requestOf(copy_.destination, *found_, "OpenDevice");
    request.arguments.prepend(QStringLiteral("rw"));
    open(request, &CopyExecution::onSharedOpened);
}

// The descriptor of OpenForRestore cannot be read. The tools that change the identifier open the device
// exclusively themselves. Their descriptor is opened before the copy, so that a copy can always be discarded.
void CopyExecution::onSharedOpened(const OpenedDevice& device)
{
    shared_ = device;
    const int source = source_->descriptor.fileDescriptor();
    const int writer = target_->descriptor.fileDescriptor();
    const int reader = shared_->descriptor.fileDescriptor();
    run(
        [source, reader, writer, size = copy_.from.size](WorkControl& control) {
            DescriptorIo from(source, source);
            DescriptorIo to(reader, writer);
            return copyBlocks(from, to, size, control);
        },
        &CopyExecution::onCopied);
}

void CopyExecution::onCopied(const Rejection& error)
{
    source_.reset();
    target_.reset();
    if (error)
        return closeTarget(error);
    const int descriptor = shared_->descriptor.fileDescriptor();
    run(
        [descriptor, type = copy_.type, size = copy_.from.size](WorkControl& control) {
            control.doneBytes = 2 * size;
            const Rejection failure = renewIdentity(type, descriptor, control);
            DescriptorIo target(descriptor, descriptor);
            if (failure || control.cancelled)
                discardCopy(target, size);
            return failure;
        },
        &CopyExecution::closeTarget);
}

void CopyExecution::closeTarget(const Rejection& error)
{
    // The service reads a device again after it has been closed, but can miss that on a busy computer.
    const DiskServiceCall rescan{
        shared_->path, QStringLiteral("Block"), QStringLiteral("Rescan"), {QVariantMap()}};
    shared_.reset();
    service_.call(rescan, [self = QPointer<CopyExecution>(this), error](const QDBusMessage&) {
        if (self)
            self->end(error);
    });
}

void CopyExecution::run(BlockWorker::Work work, void (CopyExecution::*next)(const Rejection&))
{
    previousWorker_ = std::exchange(worker_, std::make_unique<BlockWorker>(std::move(work)));
    connect(worker_.get(), &BlockWorker::progressed, this, [this] {
        progress_ = static_cast<double>(worker_->doneBytes()) / static_cast<double>(2 * copy_.from.size);
        Q_EMIT progressed();
    });
    connect(worker_.get(), &BlockWorker::finished, this, next);
    if (cancelled_ || isLost_)
        worker_->cancel();
    worker_->start();
}

void CopyExecution::onAvailabilityChanged()
{
    if (service_.isAvailable())
        return;
    isLost_ = true;
    if (worker_)
        worker_->cancel();
}

void CopyExecution::end(const Rejection& error)
{
    if (std::exchange(ended_, true))
        return;
    if (error)
        Q_EMIT ended(Outcome::Failed, *error);
    else if (isLost_)
        Q_EMIT ended(Outcome::Failed, QT_TRANSLATE_NOOP("Sandbox", "The disk service is not running."));
    else
        Q_EMIT ended(cancelled_ ? Outcome::Cancelled : Outcome::Done, Text());
}

} // namespace host
