#include "host/machine/Functions.h"

#include <QtCore/QMap>

namespace host {

namespace {

const QMap<int, QString>& functionNames()
{
    static const QMap<int, QString> names = {
        {0, QStringLiteral("OpenDiskLayoutEditor")},
        {1, QStringLiteral("SmartSpaceAdjustment")},
        {2, QStringLiteral("DeleteAllPartitions")},
        {5, QStringLiteral("InitializeDiskToMbr")},
        {6, QStringLiteral("InitializeDiskToGpt")},
        {7, QStringLiteral("WipeDisk")},
        {14, QStringLiteral("ResizePartition")},
        {15, QStringLiteral("FormatPartition")},
        {16, QStringLiteral("DeletePartition")},
        {17, QStringLiteral("SplitPartition")},
        {18, QStringLiteral("CreatePartition")},
        {19, QStringLiteral("ShowBitLockerStatus")},
        {20, QStringLiteral("MergePartitions")},
        {21, QStringLiteral("OpenPartitionLayoutEditor")},
        {22, QStringLiteral("AllocateSpace")},
        {23, QStringLiteral("WipePartition")},
        {24, QStringLiteral("ConvertPartitionToPrimary")},
        {25, QStringLiteral("ConvertPartitionToLogical")},
        {29, QStringLiteral("ChangePartitionClusterSize")},
        {30, QStringLiteral("ChangePartitionDriveLetter")},
        {31, QStringLiteral("ChangePartitionLabel")},
        {33, QStringLiteral("SetPartitionActive")},
        {34, QStringLiteral("SetPartitionHidden")},
        {39, QStringLiteral("MigrateSystemDriveData")},
        {43, QStringLiteral("AutoCreatePartitions")},
        {45, QStringLiteral("DiskBringOnline")},
        {46, QStringLiteral("EjectUsb")},
        {47, QStringLiteral("LowLevelFormat")},
        {1000, QStringLiteral("CloneDisk")},
        {1001, QStringLiteral("CloneSystem")},
        {1002, QStringLiteral("ClonePartition")},
        {1003, QStringLiteral("ConvertDiskToGpt")},
        {1004, QStringLiteral("ConvertDiskToMbr")},
        {1005, QStringLiteral("ConvertDiskToBasic")},
        {1006, QStringLiteral("ConvertDiskToDynamic")},
        {1007, QStringLiteral("ConvertPartitionToNtfs")},
        {1008, QStringLiteral("ConvertPartitionToFat")},
        {1009, QStringLiteral("ConvertPartitionToExfat")},
        {1010, QStringLiteral("CreateBootMedia")},
        {1011, QStringLiteral("InstallPreOs")},
        {1012, QStringLiteral("DisablePreOs")},
        {1013, QStringLiteral("RecoverLostPartition")},
        {1014, QStringLiteral("ToggleWriteProtection")},
        {1015, QStringLiteral("RebuildMbr")},
        {1016, QStringLiteral("AlignDiskTo4k")},
        {1017, QStringLiteral("ScanBadSectors")},
        {1018, QStringLiteral("CheckFileSystem")},
    };
    return names;
}

} // namespace

QString functionName(int number)
{
    return functionNames().value(number);
}

int functionNumber(const QString& name)
{
    for (auto it = functionNames().begin(); it != functionNames().end(); ++it) {
        if (it.value().compare(name, Qt::CaseInsensitive) == 0)
            return it.key();
    }
    return -1;
}

} // namespace host
