#pragma once

#include "host/machine/FileSystems.h"
#include "host/machine/Functions.h"
#include "host/machine/Layout.h"
#include "host/machine/Machine.h"
#include "host/machine/Spaces.h"

#include <QtCore/QVariantMap>

#include <map>

// Shared by the files of the orders.
namespace host {

/// The implementation of a function. @p bytes returns the number of bytes that it moves; null means 0. @p
/// interrupt applies the effect of a function that ends after a share above 0; null means that the machine is
/// unchanged.
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

/// The order's partition and disk. They exist because the order was accepted.
Partition& target(Machine& machine, const QVariantMap& params);
const Partition& target(const Machine& machine, const QVariantMap& params);
Disk& targetDisk(Machine& machine, const QVariantMap& params);
const Disk& targetDisk(const Machine& machine, const QVariantMap& params);

/// Gives a partition an empty unencrypted volume. A cluster of 0 bytes means the default.
void giveFileSystem(Partition& partition, const QString& fileSystem, const QString& label, int clusterBytes);
/// Removes a partition's file system and its data.
void makeRaw(Partition& partition);
/// A new empty partition with a letter and, on a GPT disk, a GUID.
Partition newPartition(const Machine& machine, const Disk& disk, Span span, Kind kind);
/// Removes the disk's partition table.
void loseTable(Disk& disk);
/// Writes an empty partition table.
void writeTable(Disk& disk, bool gpt);

} // namespace host
