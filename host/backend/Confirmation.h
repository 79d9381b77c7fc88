#pragma once

#include "host/machine/DataLoss.h"

namespace host {

/// A question to a person before an order destroys data on a disk.
struct Confirmation
{
    DataLoss loss;
    QString device; ///< "/dev/sdb"
    QString model;  ///< can be empty
    qint64 size = 0;
};

/// False if the disk or the data differ, so that an answer to one does not apply to the other.
bool isSameQuestion(const Confirmation& one, const Confirmation& other);

} // namespace host
