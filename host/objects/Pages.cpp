#include "host/objects/Pages.h"

#include "host/machine/Conversions.h"
#include "host/machine/GuidedTasks.h"
#include "host/machine/Records.h"
#include "host/objects/GuidePages.h"

#include <QtQml/QQmlContext>

namespace host {

namespace {

const QString kTestFunValid = QStringLiteral("TestFunValid");

QString englishOf(const Rejection& rejection)
{
    return rejection ? rejection->english() : QString();
}

} // namespace

PartitionManager::PartitionManager(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool PartitionManager::doFunFromAI(int functionIndex, QVariantMap params)
{
    core_.calls().restartIdleTimer();
    const QVariantList arguments{functionIndex, params};
    if (params.value(kTestFunValid).toBool()) {
        const Rejection rejection = core_.orders().rejection(functionIndex, params);
        core_.transcript().hostCall("partitionmanager", "doFunFromAI", arguments, !rejection.has_value(),
                                    englishOf(rejection));
        return !rejection;
    }
    core_.calls().recordCall("partitionmanager", "doFunFromAI", arguments);
    core_.orders().order(functionIndex, params);
    return true;
}

bool PartitionManager::isWin11CheckerEnable()
{
    core_.calls().restartIdleTimer();
    return core_.calls().recordCall("partitionmanager", "isWin11CheckerEnable", {},
                                    !core_.status().isClosing() && core_.machine()->win11CheckerEnabled);
}

bool PartitionManager::hasDiskSmartInfoError(int diskIndex) const
{
    return core_.calls().recordCall("partitionmanager", "hasDiskSmartInfoError", {diskIndex},
                                    core_.machine()->smartErrors.contains(diskIndex));
}

Toolbox::Toolbox(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool Toolbox::check4kAlign(QVariant disk) const
{
    return core_.calls().recordCall("toolbox", "check4kAlign", {disk}, isAlignedTo4k(disk.toMap()));
}

PartitionRecovery::PartitionRecovery(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool PartitionRecovery::isDiskIndexValid(QVariant task)
{
    core_.calls().restartIdleTimer();
    const auto machine = core_.machine();
    const Disk* disk = machine->disk(task.toMap().value(QStringLiteral("diskIndex"), -1).toInt());
    return core_.calls().recordCall("partitionrecovery", "isDiskIndexValid", {task},
                                    !core_.status().isClosing() && disk != nullptr && !disk->isOffline &&
                                        !disk->isBad);
}

bool PartitionRecovery::isRawPart(QVariant partition) const
{
    return core_.calls().recordCall("partitionrecovery", "isRawPart", {partition},
                                    isRawPartition(partition.toMap()));
}

BootableMedia::BootableMedia(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool BootableMedia::isAlreadyEnable()
{
    core_.calls().restartIdleTimer();
    return core_.calls().recordCall("bootablemedia", "isAlreadyEnable", {}, core_.machine()->preOsEnabled);
}

DeviceManager::DeviceManager(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

QVariantList DeviceManager::disks(int selector, bool flag) const
{
    return core_.calls().recordCall("deviceMgr", "disks", {selector, flag}, diskRecords(*core_.machine()));
}

QVariantList DeviceManager::bootDisks(int selector, bool flag) const
{
    return core_.calls().recordCall("deviceMgr", "bootDisks", {selector, flag},
                                    bootDiskRecords(*core_.machine()));
}

ClonePage::ClonePage(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

void ClonePage::setCloneType(int type)
{
    cloneType_ = type;
    core_.calls().recordCall("clone", "cloneType", {type});
}

QString ClonePage::invalidInfo(QVariantMap source, QVariantMap destination, int step, QVariantMap defBoot)
{
    core_.calls().restartIdleTimer();
    Rejection rejection = core_.status().closingRejection();
    if (!rejection)
        rejection = cloneRejection(*core_.machine(), source, destination, step);
    const std::optional<Function> function = cloneFunction(cloneType_);
    if (!rejection && function)
        rejection = core_.backend().functionRejection(static_cast<int>(*function));
    return core_.calls().recordCall("clone", "invalidInfo", {source, destination, step, defBoot},
                                    englishOf(rejection));
}

DiskConverter::DiskConverter(HostCore& core, QObject* parent) : QObject(parent), core_(core) {}

bool DiskConverter::isFunValid(int conversion, QVariantMap record)
{
    core_.calls().restartIdleTimer();
    return core_.calls().recordCall(
        "diskconverter", "isFunValid", {conversion, record},
        !core_.status().isClosing() &&
            !conversionRejection(core_.backend(), conversionOf(conversion), record));
}

QString DiskConverter::isGPT2MBRValid(QVariantMap record)
{
    core_.calls().restartIdleTimer();
    return core_.calls().recordCall(
        "diskconverter", "isGPT2MBRValid", {record},
        englishOf(conversionRejection(core_.backend(), Conversion::ToMbr, record)));
}

QString DiskConverter::isMBR2GPTValid(QVariantMap record)
{
    core_.calls().restartIdleTimer();
    return core_.calls().recordCall(
        "diskconverter", "isMBR2GPTValid", {record},
        englishOf(conversionRejection(core_.backend(), Conversion::ToGpt, record)));
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
