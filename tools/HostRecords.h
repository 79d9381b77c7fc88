#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

class HostPages;
class QObject;

/// The host's own disk and partition records, as its `deviceMgr` lists them. Every function accepts null pages and may be
/// called from any thread; the host's method runs on the calling thread. A missing target gives a bare map and no error.

/// Selects the disks that `deviceMgr` lists. The host defines the meaning.
enum DiskSelector : int { SelectNone = -2, SelectForClone = 1, SelectForTask = 3 };

/// The host's `deviceMgr`, null if missing. Not owned.
QObject* hostDeviceManager(const HostPages* pages);

/// The host's disk records for @p selector, in its order.
QVariantList listHostDisks(const HostPages* pages, int selector);

/// The partition record with the first character of @p letter as its drive letter, in either case; of several
/// disks the last match. Not found: `diskIndex` -1 and `driveLetter` with the text in upper case.
QVariantMap findPartitionRecord(const HostPages* pages, const QString& letter, int selector);

/// The first disk record of that index. Not found: `diskIndex` alone.
QVariantMap findDiskRecord(const HostPages* pages, int selector, int diskIndex);

/// The default boot partition of the disk of that index or, unless the index is -2, of the first boot disk
/// before it. Not found: `diskIndex` alone.
QVariantMap findDefaultBootPartition(const HostPages* pages, int selector, int diskIndex);

/// The record on a disk that a partition is cloned to: the first unallocated space after the first record, otherwise
/// the first record. Empty for an empty disk record.
QVariantMap pickTargetPartition(const HostPages* pages, const QVariantMap& diskRecord);

/// True if the host lists a disk of that index.
bool hostHasDisk(const HostPages* pages, int diskIndex, int selector);

/// The record of the disk that the running system starts from; empty if the host does not provide it.
QVariantMap getBootDisk(const HostPages* pages);

/// True if that disk is a GPT disk.
bool isBootDiskGpt(const HostPages* pages);
