// The tools that open a guide by a signal: the clone and the conversion tools.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"

#include <QtCore/QDir>

namespace {

const QString kCloseGuide = "window.closeGuide@app? list[invalid]";
const QString kNoDefault = "map{diskIndex=int:-2}";

QString lookUp(int selector)
{
    return QStringLiteral("deviceMgr.disks@caller? list[int:%1,bool:false]").arg(selector);
}

QString withType(const QString& record, int type)
{
    // The key sorts before all other keys of the records.
    return QString(record).replace(0, 4, QStringLiteral("map{cloneType=int:%1,").arg(type));
}

QString complaint(const QString& source, const QString& destination, int step)
{
    return QStringLiteral("clone.invalidInfo@app? list[%1,%2,int:%3,%4]")
        .arg(source, destination)
        .arg(step)
        .arg(kNoDefault);
}

QString result(int type, const QString& source, const QString& destination, int page)
{
    return QStringLiteral(
               "aibridge.sigCloneResult@caller list[map{cloneType=int:%1,defBoot=%2,destination=%3,"
               "errMsg=QString:\"\",goToPageIndex=int:%4,source=%5}]")
        .arg(type)
        .arg(kNoDefault, destination)
        .arg(page)
        .arg(source);
}

// A clone without an objection of the host's page. @p selector is that of the default boot partition.
ToolRow clone(const char* method, std::function<QString(CZorHandle&)> call, int type, const QString& source,
              const QString& target, int selector)
{
    const QString destination = withType(target, type);
    return {method,
            std::move(call),
            answers::queued,
            {lookUp(1), lookUp(1), kCloseGuide, lookUp(selector),
             QStringLiteral("clone.cloneType@caller list[int:%1]").arg(type), lookUp(1),
             complaint(source, "map{}", 1), lookUp(1), complaint(source, destination, 2),
             result(type, source, destination, 3)}};
}

// Only on Windows does the machine of these tests have the letter of the running system.
ToolRow cloneFromCurrent()
{
    const auto call = tool(&CZorHandle::CloneOSDataFromCurrent, 1);
    const QString letter = QDir::rootPath().left(1).toUpper();
    if (letter == "C")
        return clone("CloneOSDataFromCurrent", call, 0, machine::partitionC, machine::disk1, -2);
    const QString source = "map{diskIndex=int:-1,driveLetter=QString:\"" + letter + "\"}";
    return {"CloneOSDataFromCurrent",
            call,
            answers::queued,
            {lookUp(1), lookUp(1), kCloseGuide, lookUp(-2), "clone.cloneType@caller list[int:0]",
             result(0, source, withType(machine::disk1, 0), 1)}};
}

QString convertResult(int function, const QString& record)
{
    return QStringLiteral("aibridge.sigConvertResult@caller list[map{funIdx=int:%1,info=%2}]")
        .arg(function)
        .arg(record);
}

ToolRow convertDisk(const char* method, void (CZorHandle::*member)(std::string&, int32_t), int function)
{
    return {method,
            tool(member, 1),
            answers::queued,
            {kCloseGuide, lookUp(3), convertResult(function, machine::disk1)}};
}

ToolRow convertPartition(const char* method, void (CZorHandle::*member)(std::string&, const std::string&),
                         int function)
{
    return {method,
            tool(member, "e"),
            answers::queued,
            {lookUp(3), convertResult(function, machine::partitionE)}};
}

} // namespace

std::vector<ToolRow> guidedRows()
{
    return {
        cloneFromCurrent(),
        clone("CloneOSDataFromDisk", tool(&CZorHandle::CloneOSDataFromDisk, 1, 0), 1, machine::disk0,
              machine::disk1, -2),
        clone("CloneOSDataFromPartition", tool(&CZorHandle::CloneOSDataFromPartition, 1, "c"), 0,
              machine::partitionC, machine::disk1, -2),
        clone("CloneDiskToDisk", tool(&CZorHandle::CloneDiskToDisk, 0, 1), 2, machine::disk0, machine::disk1,
              0),
        clone("ClonePartitionToPartition", tool(&CZorHandle::ClonePartitionToPartition, "C:", "e"), 3,
              machine::partitionC, machine::partitionE, -2),
        clone("ClonePartitionToDisk", tool(&CZorHandle::ClonePartitionToDisk, "E", 1), 3, machine::partitionE,
              machine::freeSpace, -2),
        convertDisk("ConvertDiskToGpt", &CZorHandle::ConvertDiskToGpt, 0),
        convertDisk("ConvertDiskToMbr", &CZorHandle::ConvertDiskToMbr, 1),
        convertDisk("ConvertDiskToBasic", &CZorHandle::ConvertDiskToBasic, 2),
        convertDisk("ConvertDiskToDynamic", &CZorHandle::ConvertDiskToDynamic, 3),
        convertPartition("ConvertPartitionToNtfs", &CZorHandle::ConvertPartitionToNtfs, 4),
        convertPartition("ConvertPartitionToFat", &CZorHandle::ConvertPartitionToFat, 5),
        convertPartition("ConvertPartitionToExfat", &CZorHandle::ConvertPartitionToExfat, 6),
    };
}
