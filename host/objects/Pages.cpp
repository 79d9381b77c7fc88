#include "host/objects/Pages.h"

#include "host/machine/GuidedTasks.h"
#include "host/machine/Records.h"

#include <QtQml/QQmlContext>

namespace host {

namespace {

const QString kTestFunValid = QStringLiteral("TestFunValid");
const QString kClosing = QStringLiteral("The host is closing.");
constexpr int kToGpt = 0;
constexpr int kToMbr = 1;

} // namespace

PartitionManager::PartitionManager(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool PartitionManager::doFunFromAI(int functionIndex, QVariantMap params)
{
    if (params.value(kTestFunValid).toBool())
        return core_.accepts(functionIndex, params);
    core_.order(functionIndex, params);
    return true;
}

bool PartitionManager::isWin11CheckerEnable()
{
    core_.noteCall();
    return !core_.isClosing() && core_.machine()->win11CheckerEnabled;
}

bool PartitionManager::hasDiskSmartInfoError(int diskIndex) const
{
    return core_.machine()->smartErrors.contains(diskIndex);
}

bool Toolbox::check4kAlign(QVariant disk) const
{
    return isAlignedTo4k(disk.toMap());
}

PartitionRecovery::PartitionRecovery(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool PartitionRecovery::isDiskIndexValid(QVariant task)
{
    core_.noteCall();
    const auto machine = core_.machine();
    const Disk* disk = machine->disk(task.toMap().value(QStringLiteral("diskIndex"), -1).toInt());
    return !core_.isClosing() && disk != nullptr && !disk->isOffline && !disk->isBad;
}

bool PartitionRecovery::isRawPart(QVariant partition) const
{
    return isRawPartition(partition.toMap());
}

BootableMedia::BootableMedia(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool BootableMedia::isAlreadyEnable()
{
    core_.noteCall();
    return core_.machine()->preOsEnabled;
}

DeviceManager::DeviceManager(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

QVariantList DeviceManager::disks(int selector, bool flag) const
{
    Q_UNUSED(selector)
    Q_UNUSED(flag)
    return diskRecords(*core_.machine());
}

QVariantList DeviceManager::bootDisks(int selector, bool flag) const
{
    Q_UNUSED(selector)
    Q_UNUSED(flag)
    return bootDiskRecords(*core_.machine());
}

ClonePage::ClonePage(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

QString ClonePage::invalidInfo(QVariantMap source, QVariantMap destination, int step, QVariantMap defBoot)
{
    Q_UNUSED(defBoot)
    core_.noteCall();
    return core_.isClosing() ? kClosing : cloneObjection(*core_.machine(), source, destination, step);
}

DiskConverter::DiskConverter(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool DiskConverter::isFunValid(int conversion, QVariantMap record)
{
    core_.noteCall();
    return !core_.isClosing() && conversionObjection(*core_.machine(), conversion, record).isEmpty();
}

QString DiskConverter::isGPT2MBRValid(QVariantMap record)
{
    core_.noteCall();
    return conversionObjection(*core_.machine(), kToMbr, record);
}

QString DiskConverter::isMBR2GPTValid(QVariantMap record)
{
    core_.noteCall();
    return conversionObjection(*core_.machine(), kToGpt, record);
}

void publishPages(HostCore& core, QQmlContext& context)
{
    context.setContextProperty(QStringLiteral("partitionmanager"), new PartitionManager(core, &core));
    context.setContextProperty(QStringLiteral("toolbox"), new Toolbox(&core));
    context.setContextProperty(QStringLiteral("partitionrecovery"), new PartitionRecovery(core, &core));
    context.setContextProperty(QStringLiteral("bootablemedia"), new BootableMedia(core, &core));
    context.setContextProperty(QStringLiteral("deviceMgr"), new DeviceManager(core, &core));
    context.setContextProperty(QStringLiteral("clone"), new ClonePage(core, &core));
    context.setContextProperty(QStringLiteral("diskconverter"), new DiskConverter(core, &core));
    context.setContextProperty(QStringLiteral("multilanguage"), new MultiLanguage(&core));
}

} // namespace host
