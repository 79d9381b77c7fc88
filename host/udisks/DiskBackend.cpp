#include "host/udisks/DiskBackend.h"

#include "host/machine/Functions.h"
#include "host/machine/MachineWriter.h"
#include "host/machine/OrderParts.h"
#include "host/machine/Rules.h"
#include "host/simulation/TimedExecution.h"
#include "host/udisks/CloneExecution.h"
#include "host/udisks/DeletedPartitions.h"
#include "host/udisks/DeviceIdentity.h"
#include "host/udisks/DiskUse.h"
#include "host/udisks/OrderExecution.h"
#include "host/udisks/OrderRules.h"
#include "host/udisks/ReadTestExecution.h"

#include <QtCore/QEventLoop>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <utility>

namespace host {

namespace {

Machine emptyMachine()
{
    Machine machine;
    machine.bootMediaEnabled = false;
    return machine;
}

} // namespace

DiskBackend::DiskBackend(const QDBusConnection& bus, std::vector<DiskSource> sources,
                         const ConnectToBus& connect)
    : Backend(emptyMachine()),
      service_(bus, connect),
      sources_(std::move(sources)),
      images_(service_),
      reader_(service_, sources_),
      inUse_(sources_.size())
{
}

std::variant<std::unique_ptr<DiskBackend>, QString> DiskBackend::open(const QDBusConnection& bus,
                                                                      const std::vector<DiskSource>& sources,
                                                                      const ConnectToBus& connect)
{
    std::unique_ptr<DiskBackend> backend(new DiskBackend(bus, sources, connect));
    if (!backend->service_.isAvailable())
        return QStringLiteral("the disk service UDisks2 is not running");
    QString error = backend->images_.attach(sources);
    if (error.isEmpty())
        error = backend->readMachineNow();
    if (error.isEmpty())
        return backend;
    backend->images_.leaveTakenOver();
    return error;
}

// Later readings take the same way, without the waiting.
QString DiskBackend::readMachineNow()
{
    const auto read = service_.readNow();
    const auto* first = std::get_if<DiskSnapshot>(&read);
    QString error = first == nullptr ? std::get<QString>(read) : identifyDevices(*first, sources_);
    if (!error.isEmpty())
        return error;
    Machine named = emptyMachine();
    named.name = namesOf(sources_);
    change(std::move(named));
    readCapabilities();
    QEventLoop loop;
    connect(&reader_, &DiskReader::read, &loop, [&](const DiskSnapshot& snapshot) {
        error = problemOf(snapshot);
        if (error.isEmpty())
            publish(snapshot);
        loop.quit();
    });
    connect(&reader_, &DiskReader::failed, &loop, [&](const QString& reason) {
        error = reason;
        loop.quit();
    });
    reader_.readSoon();
    loop.exec();
    connect(&reader_, &DiskReader::read, this, &DiskBackend::onRead);
    connect(&reader_, &DiskReader::failed, this, &DiskBackend::finishWaiting);
    connect(&service_, &DiskService::availabilityChanged, this, &DiskBackend::onAvailabilityChanged);
    reportImages();
    return error;
}

// Why the disks cannot be opened.
QString DiskBackend::problemOf(const DiskSnapshot& snapshot)
{
    for (const DiskSource& source : sources_) {
        const BlockDevice* disk = source.find(snapshot);
        if (disk == nullptr)
            return QStringLiteral("%1: the disk service does not know this disk").arg(source.file);
        if (const Rejection rejection = useRejection(snapshot, *disk))
            return rejection->english();
        if (const Rejection rejection = contentRejection(*disk))
            return QStringLiteral("%1: %2").arg(source.file, rejection->english());
        const QDBusMessage reply = service_.callNow(exclusiveOpenCall(*disk));
        const QString error = errorOf(reply);
        if (!error.isEmpty())
            return QStringLiteral("%1 is in use: %2").arg(source.file, error);
        const auto descriptor = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
        // The wrong file, such as a document, must not be offered as an empty disk.
        if (source.isImage && !disk->table && holdsData(descriptor.fileDescriptor(), disk->size))
            return QStringLiteral("%1: the file holds data, but no partition table; an image without a table "
                                  "must begin and end with a mebibyte of zeros")
                .arg(source.file);
    }
    return QString();
}

void DiskBackend::publish(const DiskSnapshot& snapshot)
{
    for (std::size_t i = 0; i < sources_.size(); ++i) {
        const BlockDevice* disk = sources_[i].find(snapshot);
        inUse_[i] = disk == nullptr ? kAccepted : useRejection(snapshot, *disk);
    }
    Machine next = *machine();
    next.disks = disksOf(snapshot, sources_, letters_,
                         [this](const BlockDevice& device) { return reader_.factsOf(device); });
    next.smartErrors = disksWithHealthErrors(snapshot, sources_);
    reportLetters();
    // Other disks cause readings as well. An agent waits for a push that shows the result of its order.
    if (!waiting_.empty() || machine()->disks.empty() || writeMachine(next) != writeMachine(*machine()))
        change(std::move(next));
}

void DiskBackend::reportLetters()
{
    if (const Rejection problem = letters_.takeProblem())
        addNotice(*problem);
}

void DiskBackend::reportImages()
{
    for (const Text& notice : images_.takeNotices())
        addNotice(notice);
}

Rejection DiskBackend::functionRejection(int function) const
{
    return unavailableRejection(function);
}

Rejection DiskBackend::unavailability() const
{
    return rejectIf(!service_.isAvailable(),
                    QT_TRANSLATE_NOOP("Sandbox", "The disk service is not running."));
}

void DiskBackend::release()
{
    images_.detach();
    reportImages();
}

Rejection DiskBackend::orderRejection(int function, const QVariantMap& params) const
{
    return rejectionBy(host::orderRejection, function, params);
}

Rejection DiskBackend::taskRejection(int function, const QVariantMap& params) const
{
    return rejectionBy(host::taskRejection, function, params);
}

Rejection DiskBackend::rejectionBy(MachineRules rules, int function, const QVariantMap& params) const
{
    if (const Rejection rejection = unavailability())
        return rejection;
    if (const Rejection rejection = functionRejection(function))
        return rejection;
    const auto now = machine();
    if (const Rejection rejection = rules(*now, function, params))
        return rejection;
    if (const Rejection rejection = realOrderRejection(capabilities_, *now, function, params))
        return rejection;
    return hasOrderPlan(function) ? inUse_.at(static_cast<std::size_t>(changedDisk(*now, params)))
                                  : kAccepted;
}

std::optional<Confirmation> DiskBackend::confirmation(int function, const QVariantMap& params) const
{
    const auto now = machine();
    const std::optional<DataLoss> loss = dataLoss(*now, function, params);
    const Disk* disk = loss ? now->disk(loss->diskIndex) : nullptr;
    if (disk == nullptr)
        return std::nullopt;
    const DiskSource& source = sources_.at(static_cast<std::size_t>(disk->diskIndex));
    if (!source.identity)
        return std::nullopt;
    return Confirmation{*loss, source.file, source.identity->model, disk->size};
}

std::unique_ptr<Execution> DiskBackend::execute(int function, const QVariantMap& params)
{
    // Letters belong to the host, so the service does not take part.
    if (function == static_cast<int>(Function::ChangePartitionDriveLetter))
        return changeLetter(function, params);
    if (isClone(function))
        return clone(function, params);
    if (function == static_cast<int>(Function::ScanBadSectors))
        return testReading(function, params);
    auto plan = [this, function, params]() -> std::variant<OrderPlan, Text> {
        if (const Rejection rejection = beginOrder(function, params))
            return *rejection;
        return orderPlan(*machine(), sources_, function, params);
    };
    return std::make_unique<OrderExecution>(service_, plan, endOfOrder());
}

Rejection DiskBackend::beginOrder(int function, const QVariantMap& params)
{
    // An earlier task may have changed the machine since the order was accepted.
    if (const Rejection rejection = taskRejection(function, params))
        return rejection;
    reader_.pause();
    deleted_ = deletedPartitions(*machine(), sources_, function, params);
    return kAccepted;
}

OrderExecution::Refresh DiskBackend::endOfOrder()
{
    return
        [this](Execution::Outcome outcome, std::function<void()> done) { refresh(outcome, std::move(done)); };
}

std::unique_ptr<Execution> DiskBackend::clone(int function, const QVariantMap& params)
{
    const auto begin = [=] { return beginOrder(function, params); };
    const auto plan = [=](const DiskSnapshot& snapshot) {
        return clonePlan(*machine(), snapshot, sources_, function, params);
    };
    return std::make_unique<CloneExecution>(service_, begin, plan, endOfOrder());
}

std::unique_ptr<Execution> DiskBackend::testReading(int function, const QVariantMap& params)
{
    auto plan = [=]() -> std::variant<ReadTest, Text> {
        if (const Rejection rejection = beginOrder(function, params))
            return *rejection;
        return readTest(*machine(), sources_, params);
    };
    return std::make_unique<ReadTestExecution>(service_, plan, endOfOrder());
}

std::unique_ptr<Execution> DiskBackend::changeLetter(int function, const QVariantMap& params)
{
    TimedWork work;
    work.plan = [=] {
        TaskPlan plan;
        plan.rejection = taskRejection(function, params);
        return plan;
    };
    work.finish = [=]() -> Rejection {
        Machine next = *machine();
        Partition& partition = target(next, params);
        const DiskSource& source = sources_.at(static_cast<std::size_t>(partition.diskIndex));
        partition.driveLetter = host::letterOf(textOf(params, "newDriveLetter"));
        letters_.change(letterKey(source, partition), partition.driveLetter);
        reportLetters();
        change(std::move(next));
        return kAccepted;
    };
    work.interrupt = [](double) {};
    return std::make_unique<TimedExecution>(std::move(work));
}

// Called at the end of an order.
void DiskBackend::refresh(Execution::Outcome outcome, std::function<void()> done)
{
    if (outcome == Execution::Outcome::Done)
        letters_.release(deleted_);
    waiting_.push_back(std::move(done));
    reader_.resume();
}

void DiskBackend::onRead(const DiskSnapshot& snapshot)
{
    publish(snapshot);
    finishWaiting();
}

void DiskBackend::finishWaiting()
{
    const auto waiting = std::exchange(waiting_, {});
    for (const auto& done : waiting)
        done();
}

// A restarted service can have other tools.
void DiskBackend::onAvailabilityChanged()
{
    if (service_.isAvailable()) {
        readCapabilities();
        reader_.readSoon();
    }
    Q_EMIT availabilityChanged();
}

void DiskBackend::readCapabilities()
{
    Capabilities::read(service_, [this](const Capabilities& capabilities) { capabilities_ = capabilities; });
}

} // namespace host
