#include "tests/host/udisks/Parity.h"

#include "host/machine/Records.h"
#include "host/simulation/Simulation.h"
#include "tests/support/Printing.h"
#include "tests/support/Threads.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr qint64 kMiB = 1024 * 1024;
// Rounding of a start and an end to mebibytes, and the table entry of a logical drive.
constexpr qint64 kPlaceTolerance = 3 * kMiB;

using Records = QList<QVariantMap>;
using Agree = bool (*)(const QVariant& simulated, const QVariant& real);

bool anything(const QVariant&, const QVariant&)
{
    return true;
}

bool bytesNear(const QVariant& simulated, const QVariant& real)
{
    return std::llabs(simulated.toLongLong() - real.toLongLong()) <= kPlaceTolerance;
}

bool sectorsNear(const QVariant& simulated, const QVariant& real)
{
    return std::llabs(simulated.toLongLong() - real.toLongLong()) <= kPlaceTolerance / 512;
}

bool bothOrNeither(const QVariant& simulated, const QVariant& real)
{
    return simulated.toString().isEmpty() == real.toString().isEmpty();
}

bool sameFileSystem(const QVariant& simulated, const QVariant& real)
{
    const QString name = simulated.toString();
    return (name == "FAT16" ? "FAT" : name) == real.toString();
}

bool sameLetters(const QVariant& simulated, const QVariant& real)
{
    return simulated.toString().compare(real.toString(), Qt::CaseInsensitive) == 0;
}

// The keys whose values may differ.
const QMap<QString, Agree>& exceptions()
{
    static const QMap<QString, Agree> table = {
        // The service rounds to mebibytes, and logical drives need space for their table entries.
        {"size", bytesNear},
        {"startSector", sectorsNear},
        {"endSector", sectorsNear},
        // In the simulation, a new file system is empty and has the default cluster size of its type.
        {"usedSize", anything},
        {"emptyPartitionCount", anything},
        {"clusterSize", anything},
        // The service generates GUIDs.
        {"partGUID", bothOrNeither},
        // The inventory does not distinguish FAT12 and FAT16.
        {"fsString", sameFileSystem},
        // FAT stores labels in upper case.
        {"label", sameLetters},
        // Inside an extended partition, the service creates logical drives only. The simulation prefers
        // primary
        // partitions as long as the table has a free entry.
        {"isPrimary", [](const QVariant& simulated, const QVariant& real) {
             return simulated == real || !real.toBool();
         }}};
    return table;
}

// Free regions next to each other count as one. The table entries of logical drives separate them in the
// inventory of a real disk only.
Records joined(const QVariantList& entries)
{
    Records records;
    for (const QVariant& entry : entries) {
        const QVariantMap record = entry.toMap();
        const bool isFree = record["unallocated"].toBool();
        if (isFree && record["size"].toLongLong() <= kPlaceTolerance)
            continue;
        if (isFree && !records.isEmpty() && records.back()["unallocated"].toBool()) {
            const qint64 sectorSize = record["sectorSize"].toLongLong();
            const qint64 first = records.back()["startSector"].toLongLong();
            records.back()["endSector"] = record["endSector"];
            records.back()["size"] = (record["endSector"].toLongLong() - first + 1) * sectorSize;
            continue;
        }
        records.append(record);
    }
    for (int i = 0; i < records.size(); ++i)
        records[i]["partitionIndex"] = i;
    return records;
}

void compare(const QString& place, const QVariantMap& simulated, const QVariantMap& real, QStringList& lines)
{
    for (auto it = simulated.begin(); it != simulated.end(); ++it) {
        const QVariant other = real.value(it.key());
        const Agree agree = exceptions().value(it.key());
        if (it.key() == "partitions" || (agree != nullptr ? agree(*it, other) : *it == other))
            continue;
        lines.append(
            QString("%1 %2: simulated %3, real %4").arg(place, it.key(), it->toString(), other.toString()));
    }
}

} // namespace

host::Machine simulated(const host::Machine& before, int function, const QVariantMap& params)
{
    host::Simulation simulation(before);
    simulation.setPace({true, 1});
    const auto execution = simulation.execute(function, params);
    QString result = "not ended";
    QObject::connect(execution.get(), &host::Execution::ended, execution.get(),
                     [&](host::Execution::Outcome, const host::Text& error) { result = error.english(); });
    execution->start();
    EXPECT_TRUE(pumpUntil([&] { return result != "not ended"; }));
    EXPECT_EQ(result, "") << "The simulation rejects the order.";
    return *simulation.machine();
}

QString differences(const host::Machine& simulated, const host::Machine& real)
{
    const QVariantList expected = host::diskRecords(simulated);
    const QVariantList actual = host::diskRecords(real);
    QStringList lines;
    if (expected.size() != actual.size())
        lines.append(QString("disks: simulated %1, real %2").arg(expected.size()).arg(actual.size()));
    for (int i = 0; i < std::min(expected.size(), actual.size()); ++i) {
        const QVariantMap one = expected[i].toMap();
        const QVariantMap other = actual[i].toMap();
        compare(QString("disk %1").arg(i), one, other, lines);
        const Records oneEntries = joined(one["partitions"].toList());
        const Records otherEntries = joined(other["partitions"].toList());
        if (oneEntries.size() != otherEntries.size())
            lines.append(QString("disk %1 entries: simulated %2, real %3")
                             .arg(i)
                             .arg(oneEntries.size())
                             .arg(otherEntries.size()));
        for (int j = 0; j < std::min(oneEntries.size(), otherEntries.size()); ++j)
            compare(QString("disk %1 entry %2").arg(i).arg(j), oneEntries[j], otherEntries[j], lines);
    }
    return lines.join("\n");
}
