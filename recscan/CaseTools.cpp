#include "recscan/CaseTools.h"

#include "platform/Platform.h"

#include <algorithm>

const char kBitLockerLocked[] = "encryption not unlocked";

std::optional<SystemDrive> findSystemDrive(const ScanSubject& subject)
{
    const QByteArray directory = upperSystemDirectory();
    if (directory.isEmpty())
        return std::nullopt;
    const auto found = subject.partitionsByLetter.find(directory.at(0));
    if (found == subject.partitionsByLetter.end())
        return std::nullopt;
    const QString text = QString::fromLocal8Bit(directory);
    return SystemDrive{text, directory.at(0), text.left(1), &found->second};
}

bool hasDriveLetter(const PartitionInfo& partition)
{
    return !partition.driveLetter.empty() && partition.driveLetter != "*";
}

const std::vector<PartitionInfo>* partitionsOf(const ScanSubject& subject, int diskIndex)
{
    const auto found = subject.partitionsByDisk.find(diskIndex);
    return found == subject.partitionsByDisk.end() ? nullptr : &found->second;
}

const PartitionInfo* firstOnLastDisk(const ScanSubject& subject, const PartitionTest& test)
{
    const PartitionInfo* last = nullptr;
    for (const auto& [diskIndex, partitions] : subject.partitionsByDisk) {
        const auto found = std::find_if(partitions.begin(), partitions.end(), test);
        if (found != partitions.end())
            last = &*found;
    }
    return last;
}

Recommendation recommend(int actionIndex, const QString& message, const QVariantMap& actionParams)
{
    Recommendation result;
    result.record = makePlainRecord(message);
    result.actionIndex = actionIndex;
    result.actionParams = actionParams;
    return result;
}

Recommendation recommendForDisk(int actionIndex, const QString& message, int diskIndex)
{
    return recommend(actionIndex, message, {{QStringLiteral("diskIndex"), diskIndex}});
}

Recommendation recommendForDrive(int actionIndex, const QString& message, const QString& driveLetter)
{
    return recommend(actionIndex, message, {{QStringLiteral("driveLetter"), driveLetter}});
}
