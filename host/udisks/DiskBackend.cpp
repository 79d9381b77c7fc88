#include "host/udisks/DiskBackend.h"

#include "host/machine/Functions.h"
#include "host/machine/OrderParts.h"
#include "host/machine/Rules.h"
#include "host/simulation/TimedExecution.h"
#include "host/udisks/DeviceFactsReader.h"
#include "host/udisks/DiskUse.h"
#include "host/udisks/OrderExecution.h"
#include "host/udisks/OrderRules.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <algorithm>
#include <utility>

namespace host {

namespace {

// The service reports one change of a partition table in several signals.
constexpr int kQuietMs = 250;
constexpr int kLargestReadings = 40;
const QString kManager = QStringLiteral("/org/freedesktop/UDisks2/Manager");

Machine emptyMachine()
{
    Machine machine;
    machine.name = QStringLiteral("disks");
    machine.bootMediaEnabled = false;
    return machine;
}

// Letters belong to the host, so the service does not take part.
bool isLetterChange(int function)
{
    return function == static_cast<int>(Function::ChangePartitionDriveLetter);
}

} // namespace

DiskBackend::DiskBackend(const QDBusConnection& bus, std::vector<DiskSource> sources)
    : Backend(emptyMachine()), service_(bus), sources_(std::move(sources))
{
    quietTimer_.setSingleShot(true);
    quietTimer_.setInterval(kQuietMs);
    connect(&quietTimer_, &QTimer::timeout, this, &DiskBackend::readWhenQuiet);
    connect(&service_, &DiskService::changed, &quietTimer_, QOverload<>::of(&QTimer::start));
    connect(&service_, &DiskService::availabilityChanged, &quietTimer_, QOverload<>::of(&QTimer::start));
}

std::variant<std::unique_ptr<DiskBackend>, QString> DiskBackend::open(const QDBusConnection& bus,
                                                                      const std::vector<DiskSource>& sources)
{
    std::unique_ptr<DiskBackend> backend(new DiskBackend(bus, sources));
    if (!backend->service_.isAvailable())
        return QStringLiteral("the disk service UDisks2 is not running");
    backend->capabilities_ = Capabilities::read(backend->service_);
    QString error = backend->attachImages();
    if (error.isEmpty())
        error = backend->readMachineNow();
    if (!error.isEmpty())
        return error;
    return backend;
}

DiskBackend::~DiskBackend()
{
    const auto snapshot = service_.readNow();
    if (!std::holds_alternative<DiskSnapshot>(snapshot))
        return;
    for (const DiskSource& source : attached_) {
        if (const BlockDevice* device = source.find(std::get<DiskSnapshot>(snapshot)))
            service_.callNow(
                {device->path, QStringLiteral("Loop"), QStringLiteral("Delete"), {QVariantMap()}});
    }
}

QString DiskBackend::attachImages()
{
    const auto read = service_.readNow();
    if (const QString* error = std::get_if<QString>(&read))
        return *error;
    for (const DiskSource& source : sources_) {
        if (!source.isImage || source.find(std::get<DiskSnapshot>(read)) != nullptr)
            continue;
        QFile file(source.file);
        if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
            return QStringLiteral("%1: %2").arg(source.file, file.errorString());
        const QDBusUnixFileDescriptor descriptor(file.handle());
        const QDBusMessage reply = service_.callNow({kManager,
                                                     QStringLiteral("Manager"),
                                                     QStringLiteral("LoopSetup"),
                                                     {QVariant::fromValue(descriptor), QVariantMap()}});
        if (!errorOf(reply).isEmpty())
            return QStringLiteral("%1: %2").arg(source.file, errorOf(reply));
        attached_.push_back(source);
    }
    return QString();
}

QString DiskBackend::readMachineNow()
{
    const auto read = service_.readNow();
    if (const QString* error = std::get_if<QString>(&read))
        return *error;
    const auto& snapshot = std::get<DiskSnapshot>(read);
    for (const DiskSource& source : sources_) {
        const BlockDevice* disk = source.find(snapshot);
        if (disk == nullptr)
            return QStringLiteral("%1: the disk service does not know this disk").arg(source.file);
        if (const Rejection rejection = useRejection(snapshot, *disk))
            return rejection->english();
        if (const Rejection rejection = contentRejection(*disk))
            return QStringLiteral("%1: %2").arg(source.file, rejection->english());
        const QString error = errorOf(service_.callNow(exclusiveOpenCall(*disk)));
        if (!error.isEmpty())
            return QStringLiteral("%1 is in use: %2").arg(source.file, error);
    }
    publish(snapshot);
    return QString();
}

void DiskBackend::publish(const DiskSnapshot& snapshot)
{
    Machine next = *machine();
    next.disks = disksOf(snapshot, sources_, letters_, readDeviceFacts);
    change(std::move(next));
}

Rejection DiskBackend::functionRejection(int function) const
{
    return unavailableRejection(function);
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
    if (!service_.isAvailable())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk service is not running."));
    if (const Rejection rejection = functionRejection(function))
        return rejection;
    const auto now = machine();
    if (const Rejection rejection = rules(*now, function, params))
        return rejection;
    return realOrderRejection(capabilities_, *now, function, params);
}

std::unique_ptr<Execution> DiskBackend::execute(int function, const QVariantMap& params)
{
    if (isLetterChange(function))
        return changeLetter(function, params);
    auto plan = [this, function, params]() -> std::variant<OrderPlan, Text> {
        // An earlier task may have changed the machine since the order was accepted.
        if (const Rejection rejection = taskRejection(function, params))
            return *rejection;
        isOrderRunning_ = true;
        return orderPlan(*machine(), sources_, function, params);
    };
    return std::make_unique<OrderExecution>(service_, plan,
                                            [this](std::function<void()> done) { refresh(std::move(done)); });
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
        change(std::move(next));
        return kAccepted;
    };
    work.interrupt = [](double) {};
    return std::make_unique<TimedExecution>(std::move(work));
}

// Called at the end of an order.
void DiskBackend::refresh(std::function<void()> done)
{
    isOrderRunning_ = false;
    waiting_.push_back(std::move(done));
    quietTimer_.start();
}

void DiskBackend::readWhenQuiet()
{
    if (isOrderRunning_)
        return;
    service_.read([this](const DiskSnapshot& snapshot, const QString& error) { onRead(snapshot, error); });
}

void DiskBackend::onRead(const DiskSnapshot& snapshot, const QString& error)
{
    if (error.isEmpty() && !isSettled(snapshot, sources_) && ++readings_ < kLargestReadings)
        return quietTimer_.start();
    readings_ = 0;
    if (error.isEmpty())
        publish(snapshot);
    const auto waiting = std::exchange(waiting_, {});
    for (const auto& done : waiting)
        done();
}

} // namespace host
