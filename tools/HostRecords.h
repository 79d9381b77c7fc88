#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

class HostPages;
class QObject;

/// The host's own disk and partition records, as listed by its `deviceMgr`. Every function accepts null pages
/// and can be called on any thread; the host's method runs on the calling thread. A missing record is not an
/// error: the result contains only the keys that were searched for.

/// Selects the disks that `deviceMgr` lists. The host defines the meaning.
enum DiskSelector : int { SelectNone = -2, SelectForClone = 1, SelectForTask = 3 };

/// The host's `deviceMgr`; null if missing. Not owned.
QObject* hostDeviceManager(const HostPages* pages);

/// The host's disk records for @p selector, in the host's order.
QVariantList listHostDisks(const HostPages* pages, int selector);

/// The partition record whose drive letter equals the first character of @p letter, in either case. If
/// several disks match, the last one counts. Not found: `diskIndex` -1 and `driveLetter` with @p letter in
/// upper case.
QVariantMap findPartitionRecord(const HostPages* pages, const QString& letter, int selector);

/// The first disk record with that index. Not found: `diskIndex` alone.
QVariantMap findDiskRecord(const HostPages* pages, int selector, int diskIndex);

/// The default boot partition of the first disk that has that index or is a boot disk. With the index -2,
/// boot disks are not considered. Not found: `diskIndex` alone.
QVariantMap findDefaultBootPartition(const HostPages* pages, int selector, int diskIndex);

/// The record of the clone target on a disk: the first unallocated space after the first record, otherwise
/// the first record. Empty for an empty disk record.
QVariantMap pickTargetPartition(const HostPages* pages, const QVariantMap& diskRecord);

/// True if the host lists a disk with that index.
bool hostHasDisk(const HostPages* pages, int diskIndex, int selector);

/// The record of the disk that the running system starts from; empty if the host does not provide it.
QVariantMap getBootDisk(const HostPages* pages);

/// True if the boot disk is a GPT disk.
bool isBootDiskGpt(const HostPages* pages);
