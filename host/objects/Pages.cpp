#include "host/objects/Pages.h"

#include "host/machine/GuidedTasks.h"
#include "host/machine/Records.h"

#include <QtQml/QQmlContext>

namespace host {

namespace {

const QString kTestFunValid = QStringLiteral("TestFunValid");
const Text kClosing(QT_TRANSLATE_NOOP("Sandbox", "The host is closing."));
constexpr int kToGpt = 0;
constexpr int kToMbr = 1;

} // namespace

PartitionManager::PartitionManager(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool PartitionManager::doFunFromAI(int functionIndex, QVariantMap params)
{
    const QVariantList arguments{functionIndex, params};
    if (params.value(kTestFunValid).toBool()) {
        const Text objection = core_.objection(functionIndex, params);
        core_.transcript().hostCall("partitionmanager", "doFunFromAI", arguments, objection.isEmpty(),
                                    objection.english());
        return objection.isEmpty();
    }
    core_.transcript().hostCall("partitionmanager", "doFunFromAI", arguments);
    core_.order(functionIndex, params);
    return true;
}

bool PartitionManager::isWin11CheckerEnable()
{
    core_.noteCall();
    return core_.told("partitionmanager", "isWin11CheckerEnable", {},
                      !core_.isClosing() && core_.machine()->win11CheckerEnabled);
}

bool PartitionManager::hasDiskSmartInfoError(int diskIndex) const
{
    return core_.told("partitionmanager", "hasDiskSmartInfoError", {diskIndex},
                      core_.machine()->smartErrors.contains(diskIndex));
}

Toolbox::Toolbox(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool Toolbox::check4kAlign(QVariant disk) const
{
    return core_.told("toolbox", "check4kAlign", {disk}, isAlignedTo4k(disk.toMap()));
}

PartitionRecovery::PartitionRecovery(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool PartitionRecovery::isDiskIndexValid(QVariant task)
{
    core_.noteCall();
    const auto machine = core_.machine();
    const Disk* disk = machine->disk(task.toMap().value(QStringLiteral("diskIndex"), -1).toInt());
    return core_.told("partitionrecovery", "isDiskIndexValid", {task},
                      !core_.isClosing() && disk != nullptr && !disk->isOffline && !disk->isBad);
}

bool PartitionRecovery::isRawPart(QVariant partition) const
{
    return core_.told("partitionrecovery", "isRawPart", {partition}, isRawPartition(partition.toMap()));
}

BootableMedia::BootableMedia(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool BootableMedia::isAlreadyEnable()
{
    core_.noteCall();
    return core_.told("bootablemedia", "isAlreadyEnable", {}, core_.machine()->preOsEnabled);
}

DeviceManager::DeviceManager(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

QVariantList DeviceManager::disks(int selector, bool flag) const
{
    return core_.told("deviceMgr", "disks", {selector, flag}, diskRecords(*core_.machine()));
}

QVariantList DeviceManager::bootDisks(int selector, bool flag) const
{
    return core_.told("deviceMgr", "bootDisks", {selector, flag}, bootDiskRecords(*core_.machine()));
}

ClonePage::ClonePage(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

void ClonePage::setCloneType(int type)
{
    cloneType_ = type;
    core_.transcript().hostCall("clone", "cloneType", {type});
}

QString ClonePage::invalidInfo(QVariantMap source, QVariantMap destination, int step, QVariantMap defBoot)
{
    core_.noteCall();
    return core_.told(
        "clone", "invalidInfo", {source, destination, step, defBoot},
        (core_.isClosing() ? kClosing : cloneObjection(*core_.machine(), source, destination, step))
            .english());
}

DiskConverter::DiskConverter(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool DiskConverter::isFunValid(int conversion, QVariantMap record)
{
    core_.noteCall();
    return core_.told("diskconverter", "isFunValid", {conversion, record},
                      !core_.isClosing() &&
                          conversionObjection(*core_.machine(), conversion, record).isEmpty());
}

QString DiskConverter::isGPT2MBRValid(QVariantMap record)
{
    core_.noteCall();
    return core_.told("diskconverter", "isGPT2MBRValid", {record},
                      conversionObjection(*core_.machine(), kToMbr, record).english());
}

QString DiskConverter::isMBR2GPTValid(QVariantMap record)
{
    core_.noteCall();
    return core_.told("diskconverter", "isMBR2GPTValid", {record},
                      conversionObjection(*core_.machine(), kToGpt, record).english());
}

void publishPages(HostCore& core, QQmlContext& context)
{
    context.setContextProperty(QStringLiteral("partitionmanager"), new PartitionManager(core, &core));
    context.setContextProperty(QStringLiteral("toolbox"), new Toolbox(core, &core));
    context.setContextProperty(QStringLiteral("partitionrecovery"), new PartitionRecovery(core, &core));
    context.setContextProperty(QStringLiteral("bootablemedia"), new BootableMedia(core, &core));
    context.setContextProperty(QStringLiteral("deviceMgr"), new DeviceManager(core, &core));
    context.setContextProperty(QStringLiteral("clone"), new ClonePage(core, &core));
    context.setContextProperty(QStringLiteral("diskconverter"), new DiskConverter(core, &core));
}

} // namespace host
