#pragma once

#include "agent/Display.h"
#include "agent/RecordView.h"

#include <iosfwd>
#include <string>

namespace zorcall {

/// Writes a list of records as a table: one row per record, its most important fields as columns.
void writeRecords(std::ostream& out, const Interface& service, const Type& entry, const Value& list,
                  const Display& display);

/// Writes one record: one line per field. A size in bytes is followed by the host's display string.
void writeRecord(std::ostream& out, const Record& record, const Value& value, const Display& display);

/// Names of the flags that are set on a disk or partition: "SSD, removable".
std::string stateText(const RecordView& view);

/// The drive letter with a colon, empty for a partition without a letter.
std::string driveName(const RecordView& partition);

/// "GPT", "MBR", or empty for a disk without a partition table.
std::string tableName(const RecordView& disk);

/// The field that displays a size: "displayUsedSize" for "usedSize".
std::string displayField(const std::string& field);

} // namespace zorcall
