#include "host/machine/Functions.h"

#include <QtCore/QMap>

namespace host {

QString functionName(int number)
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
    };
    return names.value(number);
}

} // namespace host
