#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QVariantMap>

#include <random>

/// Random machines and orders. The same seed gives the same sequence.
class RandomMachine
{
public:
    explicit RandomMachine(unsigned seed) : engine_(seed) {}

    /// A valid machine: up to five disks of all kinds, the first with the running system. The entries of a
    /// disk are in order, without gaps.
    host::Machine machine();

    /// A function of the page or of a guide.
    int function();
    /// Parameters that often name existing objects and often request the impossible.
    QVariantMap params(const host::Machine& machine, int function);
    /// 0 to 1.
    double share() { return std::uniform_real_distribution<double>(0, 1)(engine_); }
    bool chance(int percent) { return below(100) < percent; }

private:
    qint64 below(qint64 bound) { return std::uniform_int_distribution<qint64>(0, bound - 1)(engine_); }
    host::Disk disk(int index, bool system);
    void fill(host::Disk& disk, bool system);
    static host::Partition entryOf(const host::Disk& disk, int sector, qint64 begin, qint64 size);
    static void makeSystem(host::Partition& partition);
    void giveVolume(host::Partition& partition);
    void giveKinds(host::Disk& disk);
    void giveLetters(host::Machine& machine);
    QString letter(const host::Machine& machine);
    int diskIndex(const host::Machine& machine);
    qint64 size(const host::Machine& machine, const QString& letter);
    QString fileSystem();
    QString label();
    int cluster();
    QVariantMap record(const host::Machine& machine);

    std::mt19937_64 engine_;
};
