#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

struct ToolBridge;

/// The conversions, by the numbers that the host knows.
enum ConversionIndex : int {
    ConvertToGpt = 0,
    ConvertToMbr = 1,
    ConvertToBasic = 2,
    ConvertToDynamic = 3,
    ConvertToNtfs = 4,
    ConvertToFat = 5,
    ConvertToExfat = 6
};

/// Closes the guide, whatever the bridge, and hands the disk's record to the conversion guide. False for a
/// null bridge. Any thread; off the application thread it waits for the guide to be closed.
bool queueDiskConversion(const ToolBridge* bridge, int funIdx, int diskIndex);

/// Hands the partition's record to the conversion guide; an open guide stays open. False for a null bridge.
bool queuePartitionConversion(const ToolBridge* bridge, int funIdx, const QString& letter);

/// Emits the conversion result on the calling thread. False for a null bridge.
bool emitConvertTask(const ToolBridge* bridge, int funIdx, const QVariantMap& info);

/// What the host's converter thinks of a task; true where it cannot be asked. No tool asks: the guide judges.
bool isConvertTaskValid(const ToolBridge* bridge, const QVariantMap& task);
