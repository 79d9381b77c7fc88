#include "recscan/RecScanThread.h"

#include "plugin/AIBridge.h"

RecScanThread::RecScanThread(AIBridge* parent) : QThread(parent), scanOwner(parent) {}

void RecScanThread::setScanEngine(QQmlEngine* engine)
{
    scanEngine = engine;
}

void RecScanThread::setScanData(const std::vector<DiskInfo>& diskList,
                                const std::map<int, std::vector<PartitionInfo>>& partitionsByDisk,
                                const std::map<char, PartitionInfo>& partitionsByLetter)
{
    scanDiskList = diskList;
    scanPartitionsByDisk = partitionsByDisk;
    scanPartitionsByLetter = partitionsByLetter;
}

void RecScanThread::run() {}

void RecScanThread::requestStop()
{
    stopRequested = true;
}

bool RecScanThread::hasResult() const
{
    return found;
}

QVariant RecScanThread::result() const
{
    return resultRecord;
}

void AIBridge::onRecScanFinished()
{
    if (recScanThread != nullptr && recScanThread->hasResult())
        Q_EMIT sigRecScanResult(QVariant(recScanThread->result().toMap()));
}
