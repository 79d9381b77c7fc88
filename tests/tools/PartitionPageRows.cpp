// The tools of the host's partition page: the question, the closing of the guide, the order.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"

#include <algorithm>

namespace {

QString pageCall(const QString& mark, int function, QStringList keys)
{
    std::sort(keys.begin(), keys.end(),
              [](const QString& a, const QString& b) { return a.section('=', 0, 0) < b.section('=', 0, 0); });
    return QStringLiteral("partitionmanager.doFunFromAI@app%1 list[int:%2,map{%3}]")
        .arg(mark)
        .arg(function)
        .arg(keys.join(','));
}

// @p keys are the entries of the map in the format of typed(), in any order.
ToolRow page(const char* method, std::function<QString(CZorHandle&)> call, int function,
             const QStringList& keys)
{
    return {method,
            std::move(call),
            answers::queued,
            {pageCall("?", function, QStringList(keys) << "TestFunValid=bool:true"),
             "window.closeGuide@app? list[invalid]", pageCall("", function, keys)}};
}

std::vector<ToolRow> byDisk()
{
    return {
        page("OpenDiskLayoutEditor", tool(&CZorHandle::OpenDiskLayoutEditor, 1), 0, {"diskIndex=int:1"}),
        page("DeleteAllPartitions", tool(&CZorHandle::DeleteAllPartitions, -5), 2, {"diskIndex=int:-5"}),
        page("InitializeDiskToMbr", tool(&CZorHandle::InitializeDiskToMbr, 2), 5, {"diskIndex=int:2"}),
        page("InitializeDiskToGpt", tool(&CZorHandle::InitializeDiskToGpt, 3), 6, {"diskIndex=int:3"}),
        page("WipeDisk", tool(&CZorHandle::WipeDisk, 4, 7), 7, {"diskIndex=int:4", "eraseCount=int:7"}),
        page("AutoCreatePartitions", tool(&CZorHandle::AutoCreatePartitions, 5, -2, "gPt "), 43,
             {"diskIndex=int:5", "partitionCount=int:-2", "GptOrMbr=QString:\"gPt \""}),
        page("DiskBringOnline", tool(&CZorHandle::DiskBringOnline, 6), 45, {"diskIndex=int:6"}),
        page("LowLevelFormat", tool(&CZorHandle::LowLevelFormat, 8), 47, {"diskIndex=int:8"}),
    };
}

std::vector<ToolRow> byLetter()
{
    const QString d = "driveLetter=QString:\"d:x\"";
    return {
        page("SmartSpaceAdjustment", tool(&CZorHandle::SmartSpaceAdjustment, "d:x"), 1, {d}),
        page("ShowBitLockerStatus", tool(&CZorHandle::ShowBitLockerStatus, "d:x"), 19, {d}),
        page("OpenPartitionLayoutEditor", tool(&CZorHandle::OpenPartitionLayoutEditor, "d:x"), 21, {d}),
        page("MigrateSystemDriveData", tool(&CZorHandle::MigrateSystemDriveData), 39,
             {"driveLetter=QString:\"C:\\WINDOWS\\SYSTEM32\""}),
        page("EjectUsb", tool(&CZorHandle::EjectUsb, "d:x"), 46, {d}),
        page("DeletePartition", tool(&CZorHandle::DeletePartition, "d:x"), 16, {d}),
        page("ConvertPartitionToPrimary", tool(&CZorHandle::ConvertPartitionToPrimary, "d:x"), 24, {d}),
        page("ConvertPartitionToLogical", tool(&CZorHandle::ConvertPartitionToLogical, "d:x"), 25, {d}),
        page("SetPartitionActive", tool(&CZorHandle::SetPartitionActive, "d:x"), 33, {d}),
        page("SetPartitionHidden", tool(&CZorHandle::SetPartitionHidden, "d:x"), 34, {d}),
    };
}

std::vector<ToolRow> withMoreKeys()
{
    const QString d = "driveLetter=QString:\"d:x\"";
    return {
        page("ResizePartition", tool(&CZorHandle::ResizePartition, "d:x", 5000000000), 14,
             {d, "size=qlonglong:5000000000"}),
        page("FormatPartition", tool(&CZorHandle::FormatPartition, "d:x", "nTfs", "Füll", 4096, true), 15,
             {d, "fileSystem=QString:\"nTfs\"", "label=QString:\"Füll\"", "clusterSize=int:4096",
              "quickFormat=bool:true"}),
        page("SplitPartition", tool(&CZorHandle::SplitPartition, "d:x", 12, "FAT32", "new"), 17,
             {d, "newPartitionCapacity=qlonglong:12", "newPartitionFileSystem=QString:\"FAT32\"",
              "newPartitionLabel=QString:\"new\""}),
        page("WipePartition", tool(&CZorHandle::WipePartition, "d:x", 3), 23, {d, "eraseCount=int:3"}),
        page("ChangePartitionClusterSize", tool(&CZorHandle::ChangePartitionClusterSize, "d:x", 8192), 29,
             {d, "newClusterSize=int:8192"}),
        page("ChangePartitionDriveLetter", tool(&CZorHandle::ChangePartitionDriveLetter, "d:x", "g:\\"), 30,
             {d, "newDriveLetter=QString:\"G:\""}),
        page("ChangePartitionLabel", tool(&CZorHandle::ChangePartitionLabel, "d:x", " label "), 31,
             {d, "newLabel=QString:\" label \""}),
        // In the inventory, E has 100 bytes.
        page("ResizePartitionRelative", tool(&CZorHandle::ResizePartitionRelative, "e:x", -30), 14,
             {"driveLetter=QString:\"e:x\"", "size=qlonglong:70"}),
        page("CreatePartition", tool(&CZorHandle::CreatePartition, 1, 2000, "exFAT", "data", -1), 18,
             {"diskIndex=int:1", "capacity=qlonglong:2000", "fileSystem=QString:\"exFAT\"",
              "label=QString:\"data\"", "unallocatedIndex=int:1", "driveLetter=QString:\"dummy\""}),
        page("MergePartitions", tool(&CZorHandle::MergePartitions, "d:x", "e:x"), 20,
             {d, "driveLetter2=QString:\"E\""}),
        page("AllocateSpaceFromPartitionToPartition",
             tool(&CZorHandle::AllocateSpaceFromPartitionToPartition, "d:x", "e:x", 77), 22,
             {"driveLetter=QString:\"D\"", "targetDriveLetter=QString:\"E\"",
              "partitionCapacity=qlonglong:77"}),
        page("AllocateSpaceFromPartitionToNewPartition",
             tool(&CZorHandle::AllocateSpaceFromPartitionToNewPartition, "d:x", 78, "NTFS", "more"), 22,
             {"driveLetter=QString:\"D\"", "targetDriveLetter=QString:\"CreateNew\"",
              "partitionCapacity=qlonglong:78", "fileSystem=QString:\"NTFS\"", "label=QString:\"more\""}),
    };
}

} // namespace

std::vector<ToolRow> partitionPageRows()
{
    std::vector<ToolRow> rows = byDisk();
    for (const auto& group : {byLetter(), withMoreKeys()})
        rows.insert(rows.end(), group.begin(), group.end());
    return rows;
}
