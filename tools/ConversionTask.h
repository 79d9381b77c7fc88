#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

struct ToolBridge;

/// Conversions, by the host's numbers.
enum ConversionIndex : int {
    ConvertToGpt = 0,
    ConvertToMbr = 1,
    ConvertToBasic = 2,
    ConvertToDynamic = 3,
    ConvertToNtfs = 4,
    ConvertToFat = 5,
    ConvertToExfat = 6
};

/// Closes the guide, even with a null bridge, and sends the disk's record to the conversion guide. Returns
/// false for a null bridge. Any thread; off the application thread, waits until the guide is closed.
bool queueDiskConversion(const ToolBridge* bridge, int funIdx, int diskIndex);

/// Sends the partition's record to the conversion guide; an open guide stays open. Returns false for a null
/// bridge.
bool queuePartitionConversion(const ToolBridge* bridge, int funIdx, const QString& letter);

/// Emits the conversion result on the calling thread. Returns false for a null bridge.
bool emitConvertTask(const ToolBridge* bridge, int funIdx, const QVariantMap& info);

/// Asks the host's converter whether a task is valid; true if the converter is missing. The tools do not call
/// it, because the conversion guide checks the task.
bool isConvertTaskValid(const ToolBridge* bridge, const QVariantMap& task);
