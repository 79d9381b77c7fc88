// The tools that read the inventory, and the three calls of the gate.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"

namespace {

QString yesNo(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString places(const std::vector<PartitionInfo>& records)
{
    QStringList texts;
    for (const PartitionInfo& record : records)
        texts << QStringLiteral("%1/%2/%3%4")
                     .arg(record.diskIndex)
                     .arg(QString::fromStdString(record.driveLetter))
                     .arg(record.rawCapacity)
                     .arg(record.isRawPartition ? "/raw" : "");
    return texts.join(' ');
}

QString listDisks(CZorHandle& tools)
{
    std::vector<DiskInfo> disks;
    tools.ListAllDisks(disks);
    QStringList texts;
    for (const DiskInfo& disk : disks)
        texts << QStringLiteral("%1/%2%3")
                     .arg(disk.diskIndex)
                     .arg(disk.partitionCount)
                     .arg(disk.not4kAligned ? "/unaligned" : "");
    return texts.join(' ');
}

QString listPartitions(CZorHandle& tools)
{
    std::vector<PartitionInfo> records;
    tools.ListPartitionsOnDisk(records, 1);
    return places(records);
}

QString allPartitions(CZorHandle& tools)
{
    std::vector<PartitionInfo> records;
    tools.GetAllPartitionInfo(records);
    return places(records);
}

QString onePartition(CZorHandle& tools)
{
    PartitionInfo record;
    tools.GetPartitionInfo(record, "e");
    return places({record});
}

QString preProcessing(CZorHandle& tools)
{
    TaskInfo answer;
    tools.PreProcessing(answer, "RebuildMbr(1)");
    return yesNo(answer.allow) + ' ' + QString::fromStdString(answer.reasons);
}

} // namespace

std::vector<ToolRow> readAndGateRows()
{
    return {
        {"Init", [](CZorHandle& tools) { return yesNo(tools.Init()); }, "true", {}},
        {"PreProcessing",
         preProcessing,
         "true ",
         {"__qml_executer.sendUserInfo@app? list[QString:\"AIPixie\",QString:\"Info_SpriteCalling\","
          "map{function=QString:\"RebuildMbr(1)\"},invalid]",
          "aibridge.sigAbout2CallFun@caller list[QString:\"RebuildMbr(1)\"]"}},
        {"PostProcessing",
         [](CZorHandle& tools) { return yesNo(tools.PostProcessing(answers::queued)); },
         "true",
         {"aibridge.sigAfterCallFun@caller list[QString:\"" + answers::queued.text() + "\",bool:true]"}},
        {"ListAllDisks", listDisks, "0/1 1/3", {}},
        {"ListPartitionsOnDisk", listPartitions, "1/E:/100 1//1000 1//9000", {}},
        {"GetPartitionInfo", onePartition, "1/E:/100", {}},
        {"GetAllPartitionInfo", allPartitions, "0/C:/5000 1/E:/100 1//1000 1//9000", {}},
    };
}
