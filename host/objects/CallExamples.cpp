#include "host/objects/CallExamples.h"

namespace host {

QStringList callExamples(const Partition& entry)
{
    const QString index = QString::number(entry.diskIndex);
    QStringList calls{QStringLiteral("zorcall ListPartitionsOnDisk diskIndex=") + index};
    const QString letter = letterOf(entry.driveLetter);
    if (entry.unallocated || letter.isEmpty())
        return calls;
    for (const char* call :
         {"zorcall GetPartitionInfo driveLetter=", "zorcall --gated --patient FormatPartition driveLetter=",
          "zorcall --gated --patient ResizePartition driveLetter=",
          "zorcall --gated --patient ChangePartitionLabel driveLetter="})
        calls.append(QLatin1String(call) + letter);
    return calls;
}

} // namespace host
