#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QVariantMap>

#include <map>
#include <utility>
#include <vector>

namespace host {

/// An order that waits or runs.
struct OpenOrder
{
    int taskId = 0;
    int function = 0;
    QVariantMap params;
};

/// A part of an entry's place that a new or larger partition will take.
struct Ghost
{
    double begin = 0; ///< share of the entry, 0 to 1
    double end = 0;
    Partition partition;

    bool operator==(const Ghost& other) const;
};

/// The effect of the open orders on one entry.
struct PendingChange
{
    bool isLost = false;    ///< its data will be lost, or is at risk
    bool isRunning = false; ///< the running order changes it
    std::vector<Ghost> ghosts;

    bool operator==(const PendingChange& other) const;
};

/// Disk index and start sector of each entry that an open order changes.
using PendingChanges = std::map<std::pair<int, qint64>, PendingChange>;

/// The effect of the orders on the entries of the machine, one order after another. An order that the result
/// of the earlier ones rejects has no effect. @p runningTask: 0 if no task runs.
PendingChanges pendingChanges(const Machine& machine, const std::vector<OpenOrder>& orders, int runningTask);

} // namespace host
