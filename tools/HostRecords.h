#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

class AIBridge;
class QObject;

/// The host's own disk and partition records, as its `deviceMgr` lists them. Every function accepts a null
/// bridge and may be called from any thread; the host's method runs on the calling thread. A target that is
/// not found gives a bare map and no error.

/// What `deviceMgr` lists depends on a selector, whose meaning is the host's.
enum DiskSelector : int { SelectNone = -2, SelectForClone = 1, SelectForTask = 3 };

/// The host's `deviceMgr`, null if it has none. Not owned.
QObject* hostDeviceManager(const AIBridge* bridge);

/// The host's disk records for @p selector, in its order.
QVariantList listHostDisks(const AIBridge* bridge, int selector);

/// The partition record with the first character of @p letter as its drive letter, in either case; of several
/// disks the last one that has it. Not found: `diskIndex` -1 and `driveLetter` with the text in upper case.
QVariantMap findPartitionRecord(const AIBridge* bridge, const QString& letter, int selector);

/// The first disk record of that index. Not found: `diskIndex` alone.
QVariantMap findDiskRecord(const AIBridge* bridge, int selector, int diskIndex);

/// The default boot partition of the disk of that index or, unless the index is -2, of the first boot disk
/// before it. Not found: `diskIndex` alone.
QVariantMap findDefaultBootPartition(const AIBridge* bridge, int selector, int diskIndex);

/// The record on a disk that a partition is cloned to: the first free space behind the first record, else the
/// first record, whatever it is. Empty for an empty disk record.
QVariantMap pickTargetPartition(const AIBridge* bridge, const QVariantMap& diskRecord);

/// True if the host lists a disk of that index.
bool hostHasDisk(const AIBridge* bridge, int diskIndex, int selector);
