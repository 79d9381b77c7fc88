// Exported members that delegate to a part.
#include "bridge/AIBridge.h"

#include <QtQml/QQmlApplicationEngine>

#include <utility>

void AIBridge::setDiskInfo(QVariantList info)
{
    inventory_.setDiskInfo(engine(), info);
}

void AIBridge::parsePartitionInfo(const QVariantList& partitions)
{
    inventory_.parsePartitionInfo(engine(), partitions);
}

void AIBridge::getDiskInfo(std::vector<DiskInfo>& out)
{
    inventory_.getDiskInfo(out);
}

void AIBridge::getPartitionInfo(std::vector<PartitionInfo>& out, int diskIndex)
{
    inventory_.getPartitionInfo(out, diskIndex);
}

void AIBridge::getAllPartitionInfo(std::vector<PartitionInfo>& out)
{
    inventory_.getAllPartitionInfo(out);
}

void AIBridge::getPartitionInfo(PartitionInfo& out, const std::string& driveLetter)
{
    inventory_.getPartitionInfo(out, driveLetter);
}

std::int64_t AIBridge::getPartitionSize(const std::string& driveLetter)
{
    return inventory_.getPartitionSize(driveLetter);
}

int AIBridge::findOneUnallocatedPartition(int diskIndex, std::int64_t size)
{
    return inventory_.findOneUnallocatedPartition(diskIndex, size);
}

void AIBridge::doFunFromAI(int functionIndex, QVariantMap params)
{
    pages_.doFunFromAI(functionIndex, params);
}

bool AIBridge::isFunValidForAI(int functionIndex, QVariantMap params)
{
    return pages_.isFunValidForAI(functionIndex, std::move(params));
}

bool AIBridge::doPrFunForAI(bool isPartRecov, QVariantMap info)
{
    return pages_.doPrFunForAI(isPartRecov, std::move(info));
}

bool AIBridge::openDiskHealth(int diskIndex)
{
    return pages_.openDiskHealth(diskIndex);
}

bool AIBridge::isBmFunValid(QVariantMap info)
{
    return pages_.isBmFunValid(info);
}

bool AIBridge::doBmFunForAI(QVariantMap info)
{
    return pages_.doBmFunForAI(info);
}

bool AIBridge::isAlreadyPreOS()
{
    return pages_.isAlreadyPreOS();
}
