#include "host/udisks/ReadTestExecution.h"

#include "host/machine/OrderParts.h"
#include "host/udisks/SurfaceTest.h"

#include <QtCore/QPointer>

#include <utility>

namespace host {

namespace {

// @p firstSector: position of the range on the disk.
Rejection rejectionOf(const BadSectors& bad, qint64 firstSector)
{
    if (bad.count == 0)
        return kAccepted;
    return Text(QT_TRANSLATE_NOOP(
                    "Sandbox", "Unreadable sectors: %1. The first one is sector %2 of the disk, the last one "
                               "is sector %3."),
                {QString::number(bad.count), QString::number(firstSector + bad.first),
                 QString::number(firstSector + bad.last)});
}

} // namespace

ReadTest readTest(const Machine& machine, const std::vector<DiskSource>& sources, const QVariantMap& params)
{
    ReadTest test;
    int diskIndex = numberOf(params, "diskIndex");
    if (params.contains(QStringLiteral("driveLetter"))) {
        const Partition& partition = target(machine, params);
        diskIndex = partition.diskIndex;
        test.target = OrderTarget{partition.startOffset(), partition.size, partition.partGUID};
    }
    test.source = sources.at(static_cast<std::size_t>(diskIndex));
    test.sectorSize = sectorSizeOf(*machine.disk(diskIndex));
    return test;
}

ReadTestExecution::ReadTestExecution(DiskService& service, Plan plan, Refresh refresh)
    : service_(service), plan_(std::move(plan)), refresh_(std::move(refresh))
{
}

void ReadTestExecution::start()
{
    auto plan = plan_();
    if (const Text* error = std::get_if<Text>(&plan)) {
        Q_EMIT ended(Outcome::Failed, *error);
        return;
    }
    test_ = std::move(std::get<ReadTest>(plan));
    OpenRequest request;
    request.source = test_.source;
    request.target = test_.target;
    request.checksKernel = true;
    request.method = QStringLiteral("OpenDevice");
    request.arguments = {QStringLiteral("r"), QVariantMap()};
    DeviceOpener::open(
        service_, request, [this](const auto& opened) { onOpened(opened); }, this);
}

void ReadTestExecution::cancel()
{
    cancelled_ = true;
    if (worker_)
        worker_->cancel();
}

void ReadTestExecution::onOpened(const std::variant<OpenedDevice, Text>& opened)
{
    if (const Text* error = std::get_if<Text>(&opened))
        return end(*error);
    if (cancelled_)
        return end(kAccepted);
    device_ = std::get<OpenedDevice>(opened);
    const int descriptor = device_->descriptor.fileDescriptor();
    const OrderTarget range = device_->target;
    worker_ = std::make_unique<BlockWorker>([=, sectorSize = test_.sectorSize](WorkControl& control) {
        DescriptorIo device(descriptor, descriptor);
        const BadSectors bad = findBadSectors(device, range.size, sectorSize, control);
        return control.cancelled ? kAccepted : rejectionOf(bad, range.offset / sectorSize);
    });
    connect(worker_.get(), &BlockWorker::progressed, this, [this, range] {
        progress_ = static_cast<double>(worker_->doneBytes()) / static_cast<double>(range.size);
        Q_EMIT progressed();
    });
    connect(worker_.get(), &BlockWorker::finished, this, &ReadTestExecution::end);
    worker_->start();
}

void ReadTestExecution::end(const Rejection& error)
{
    device_.reset();
    const Outcome outcome = error ? Outcome::Failed : cancelled_ ? Outcome::Cancelled : Outcome::Done;
    refresh_(outcome, [self = QPointer<ReadTestExecution>(this), outcome, text = error.value_or(Text())] {
        if (!self)
            return;
        self->progress_ = outcome == Outcome::Done ? 1 : self->progress_;
        Q_EMIT self->ended(outcome, text);
    });
}

} // namespace host
