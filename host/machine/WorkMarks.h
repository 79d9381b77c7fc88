#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QVariantMap>

#include <map>
#include <utility>

namespace host {

/// What a guide's work does with an entry of a disk.
enum class WorkMark { None, Source, Target };

/// Disk index and start sector of each marked entry.
using WorkMarks = std::map<std::pair<int, qint64>, WorkMark>;

/// The entries that the work reads or overwrites. Without a destination in @p params, the targets are the
/// partitions of dataLoss(). A whole disk marks its free regions as well.
WorkMarks workMarks(const Machine& machine, int function, const QVariantMap& params);

} // namespace host
