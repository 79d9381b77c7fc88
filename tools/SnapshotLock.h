#pragma once

#include "plugin/HandOver.h"

#include <QtCore/QReadWriteLock>

/// The guards of the inventory. The lock lets a waiting writer go before further readers: the writer is the
/// application thread, which a stream of readers must not hold up.
class SnapshotReadLock
{
public:
    explicit SnapshotReadLock(QReadWriteLock& lock) : lock_(&lock) { handover::take(); }
    ~SnapshotReadLock() { handover::give(); }
    SnapshotReadLock(const SnapshotReadLock&) = delete;
    SnapshotReadLock& operator=(const SnapshotReadLock&) = delete;

private:
    QReadLocker lock_;
};

/// As SnapshotReadLock, for the one who changes the inventory.
class SnapshotWriteLock
{
public:
    explicit SnapshotWriteLock(QReadWriteLock& lock) : lock_(&lock) { handover::take(); }
    ~SnapshotWriteLock() { handover::give(); }
    SnapshotWriteLock(const SnapshotWriteLock&) = delete;
    SnapshotWriteLock& operator=(const SnapshotWriteLock&) = delete;

private:
    QWriteLocker lock_;
};
