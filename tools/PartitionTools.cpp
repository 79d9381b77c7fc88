// Tools of the partition page that act on a partition or on unallocated space. The host defines the keys,
// which can differ from the names of the arguments. Sizes are in bytes and are sent unchanged.
#include "tools/ZorHandle.h"

#include "inventory/Inventory.h"
#include "tools/ToolBridge.h"

namespace {

const QString kDriveLetter = QStringLiteral("driveLetter");
const QString kTargetDriveLetter = QStringLiteral("targetDriveLetter");
const QString kPartitionCapacity = QStringLiteral("partitionCapacity");
const QString kFileSystem = QStringLiteral("fileSystem");
const QString kLabel = QStringLiteral("label");

QVariant bytes(int64_t size)
{
    return QVariant(static_cast<qlonglong>(size));
}

} // namespace

void CZorHandle::DeletePartition(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunDeletePartition, driveLetter);
}

void CZorHandle::FormatPartition(std::string& answer, const std::string& driveLetter,
                                 const std::string& fileSystem, const std::string& label, int32_t clusterSize,
                                 bool quickFormat)
{
    ResetParams();
    setParam(kDriveLetter, driveLetter);
    setParam(kFileSystem, fileSystem);
    setParam(kLabel, label);
    setParam(QStringLiteral("clusterSize"), QVariant(clusterSize));
    setParam(QStringLiteral("quickFormat"), QVariant(quickFormat));
    RunDriveTask(answer, FunFormatPartition);
}

void CZorHandle::SplitPartition(std::string& answer, const std::string& driveLetter,
                                int64_t newPartitionCapacity, const std::string& newPartitionFileSystem,
                                const std::string& newPartitionLabel)
{
    ResetParams();
    setParam(kDriveLetter, driveLetter);
    setParam(QStringLiteral("newPartitionCapacity"), bytes(newPartitionCapacity));
    setParam(QStringLiteral("newPartitionFileSystem"), newPartitionFileSystem);
    setParam(QStringLiteral("newPartitionLabel"), newPartitionLabel);
    RunDriveTask(answer, FunSplitPartition);
}

void CZorHandle::ResizePartition(std::string& answer, const std::string& driveLetter,
                                 int64_t newPartitionCapacity)
{
    ResetParams();
    setParam(kDriveLetter, driveLetter);
    setParam(QStringLiteral("size"), bytes(newPartitionCapacity));
    RunDriveTask(answer, FunResizePartition);
}

void CZorHandle::ResizePartitionRelative(std::string& answer, const std::string& driveLetter,
                                         int64_t sizeAdjustment)
{
    // The size of an unknown letter is 0, so only the adjustment is sent. Unsigned arithmetic wraps without
    // undefined behaviour.
    const int64_t size = bridge == nullptr ? 0 : bridge->inventory.getPartitionSize(driveLetter);
    ResizePartition(
        answer, driveLetter,
        static_cast<int64_t>(static_cast<uint64_t>(size) + static_cast<uint64_t>(sizeAdjustment)));
}

void CZorHandle::WipePartition(std::string& answer, const std::string& driveLetter, int32_t eraseCount)
{
    ResetParams();
    setParam(kDriveLetter, driveLetter);
    setParam(QStringLiteral("eraseCount"), QVariant(eraseCount));
    RunDriveTask(answer, FunWipePartition);
}

void CZorHandle::ChangePartitionClusterSize(std::string& answer, const std::string& driveLetter,
                                            int32_t newClusterSize)
{
    ResetParams();
    setParam(kDriveLetter, driveLetter);
    setParam(QStringLiteral("newClusterSize"), QVariant(newClusterSize));
    RunDriveTask(answer, FunChangePartitionClusterSize);
}

void CZorHandle::ChangePartitionDriveLetter(std::string& answer, const std::string& driveLetter,
                                            const std::string& newDriveLetter)
{
    ResetParams();
    setParam(kDriveLetter, driveLetter);
    setParam(QStringLiteral("newDriveLetter"), QVariant(normalisedLetter(newDriveLetter) + QLatin1Char(':')));
    RunDriveTask(answer, FunChangePartitionDriveLetter);
}

void CZorHandle::ChangePartitionLabel(std::string& answer, const std::string& driveLetter,
                                      const std::string& newLabel)
{
    ResetParams();
    setParam(kDriveLetter, driveLetter);
    setParam(QStringLiteral("newLabel"), newLabel);
    RunDriveTask(answer, FunChangePartitionLabel);
}

void CZorHandle::SetPartitionHidden(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunSetPartitionHidden, driveLetter);
}

void CZorHandle::SetPartitionActive(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunSetPartitionActive, driveLetter);
}

void CZorHandle::ConvertPartitionToPrimary(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunConvertPartitionToPrimary, driveLetter);
}

void CZorHandle::ConvertPartitionToLogical(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunConvertPartitionToLogical, driveLetter);
}

void CZorHandle::CreatePartition(std::string& answer, int32_t diskIndex, int64_t capacity,
                                 const std::string& fileSystem, const std::string& label,
                                 int32_t unallocatedIndex)
{
    ResetParams();
    setParam(QStringLiteral("diskIndex"), QVariant(diskIndex));
    setParam(QStringLiteral("capacity"), bytes(capacity));
    setParam(kFileSystem, fileSystem);
    setParam(kLabel, label);
    setParam(QStringLiteral("unallocatedIndex"), QVariant(unallocatedIndex));
    if (unallocatedIndex == -1 && bridge != nullptr)
        setParam(QStringLiteral("unallocatedIndex"),
                 QVariant(bridge->inventory.findOneUnallocatedPartition(diskIndex, capacity)));
    // A new partition has no letter yet; any word that starts with a letter passes the letter check.
    setParam(kDriveLetter, QVariant(QStringLiteral("dummy")));
    RunDriveTask(answer, FunCreatePartition);
}

void CZorHandle::MergePartitions(std::string& answer, const std::string& driveLetter1,
                                 const std::string& driveLetter2)
{
    ResetParams();
    // Only the second letter is normalised; the host receives the first one unchanged.
    setParam(kDriveLetter, driveLetter1);
    setParam(QStringLiteral("driveLetter2"), QVariant(normalisedLetter(driveLetter2)));
    RunDriveTask(answer, FunMergePartitions);
}

void CZorHandle::AllocateSpaceFromPartitionToPartition(std::string& answer,
                                                       const std::string& sourceDriveLetter,
                                                       const std::string& targetDriveLetter,
                                                       int64_t newPartitionCapacity)
{
    ResetParams();
    setParam(kDriveLetter, QVariant(normalisedLetter(sourceDriveLetter)));
    setParam(kTargetDriveLetter, QVariant(normalisedLetter(targetDriveLetter)));
    setParam(kPartitionCapacity, bytes(newPartitionCapacity));
    RunDriveTask(answer, FunAllocateSpace);
}

void CZorHandle::AllocateSpaceFromPartitionToNewPartition(std::string& answer,
                                                          const std::string& sourceDriveLetter,
                                                          int64_t partitionCapacity,
                                                          const std::string& fileSystem,
                                                          const std::string& label)
{
    ResetParams();
    setParam(kDriveLetter, QVariant(normalisedLetter(sourceDriveLetter)));
    // With this word instead of a letter, the host creates a partition.
    setParam(kTargetDriveLetter, QVariant(QStringLiteral("CreateNew")));
    setParam(kPartitionCapacity, bytes(partitionCapacity));
    setParam(kFileSystem, fileSystem);
    setParam(kLabel, label);
    RunDriveTask(answer, FunAllocateSpace);
}
