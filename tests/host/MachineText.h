#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"
#include "host/simulation/Simulation.h"

#include <QtCore/QByteArray>

#include <memory>

/// A small machine for tests. Disk 0: GPT with an EFI partition, the system on C, data on D and 10 GiB free.
/// Disk 1: MBR of 3 TiB with E and two free regions of 1 GiB and about 2 TiB, the second extending beyond 2
/// TiB. Disk 2: a USB stick with F, FAT32. Disk 3: without a table. Disk 4: offline. Disk 5: too small for
/// most operations.
QByteArray machineText();

/// machineText() as a machine.
host::Machine testMachine();

/// A simulation of a machine.
std::unique_ptr<host::Simulation> simulated(host::Machine machine);

/// Reads a description; an error fails the test.
host::Machine machineOf(const QByteArray& json);

/// The error of a description; empty if it is valid.
QString errorOf(const QByteArray& json);

constexpr qint64 kMiB = 1024 * 1024;
constexpr qint64 kGiB = 1024 * kMiB;

/// The reason of a rejection; empty if the host accepts.
QString reasonOf(const host::Rejection& rejection);
