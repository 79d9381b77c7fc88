#pragma once

#include "host/machine/FileSystems.h"
#include "host/machine/Functions.h"
#include "host/machine/Layout.h"
#include "host/machine/Machine.h"
#include "host/machine/Spaces.h"

#include <QtCore/QVariantMap>

#include <map>

// What the files of the orders share; for these only.
namespace host {

/// How a function is carried out. @p bytes says how many bytes it moves, none if that is missing. @p
/// interrupt does to the machine what the function has done by that share of its way, which is more than 0;
/// where it is missing, an interrupted function leaves the machine as it was.
struct Operation
{
    using Work = void (*)(Machine&, const QVariantMap&);
    using Bytes = qint64 (*)(const Machine&, const QVariantMap&);
    using Interrupt = void (*)(Machine&, const QVariantMap&, double);

    Work work;
    Bytes bytes = nullptr;
    Interrupt interrupt = nullptr;
};

using Operations = std::map<Function, Operation>;
const Operations& diskOperations();
const Operations& partitionOperations();
const Operations& guidedOperations();

QString textOf(const QVariantMap& params, const char* key);
int numberOf(const QVariantMap& params, const char* key);
qint64 bytesOf(const QVariantMap& params, const char* key);

/// The order's partition, disk, and the partition's disk. They exist: the order was accepted.
Partition& target(Machine& machine, const QVariantMap& params);
const Partition& target(const Machine& machine, const QVariantMap& params);
Disk& targetDisk(Machine& machine, const QVariantMap& params);
const Disk& targetDisk(const Machine& machine, const QVariantMap& params);

/// Gives a partition an empty volume, not encrypted. A cluster of 0 bytes is the default one.
void giveFileSystem(Partition& partition, const QString& fileSystem, const QString& label, int clusterBytes);
/// Takes a partition's file system away, and with it all that it held.
void makeRaw(Partition& partition);
/// A new empty partition at that place: a letter, and on a GPT disk a GUID.
Partition newPartition(const Machine& machine, const Disk& disk, Span place, Kind kind);
/// The disk without its table.
void loseTable(Disk& disk);
/// The disk with an empty table.
void writeTable(Disk& disk, bool gpt);

} // namespace host
