#include "agent/RecordTable.h"

#include "agent/Text.h"
#include "agent/TextTable.h"

#include <cctype>
#include <ostream>

namespace zorcall {

namespace {

// The flags of both records and their names, in the order of the STATE column.
struct FlagWord
{
    const char* field;
    const char* word;
};

constexpr FlagWord kFlagWords[] = {
    {"isOffline", "offline"},
    {"isBadDisk", "faulty"},
    {"isBadPartition", "faulty"},
    {"isReadOnly", "read-only"},
    {"isWriteProtected", "write-protected"},
    {"isRawPartition", "unreadable"},
    {"isUnformatted", "unformatted"},
    {"isCurrentSystemPartition", "system"},
    {"isCurrentBootPartition", "Windows"},
    {"gptEfi", "EFI"},
    {"gptReserved", "reserved"},
    {"gptRecovery", "recovery"},
    {"isBitlockerEncrypted", "BitLocker"},
    {"existsBitLocker", "BitLocker"},
    {"isActive", "active"},
    {"isLogical", "logical"},
    {"isHidden", "hidden"},
    {"isDynamic", "dynamic"},
    {"isStorageSpace", "storage space"},
    {"isSsd", "SSD"},
    {"isUsb", "USB"},
    {"isRemovable", "removable"},
    {"isVhd", "VHD"},
    {"isVirtualDisk", "virtual"},
    {"isLowSpace", "low on space"},
    {"not4kAligned", "not aligned"},
};

struct Column
{
    const char* title;
    bool right;
    std::string (*cell)(const RecordView& view);
};

std::string number(const RecordView& view, const char* field)
{
    return std::to_string(view.integer(field));
}

constexpr Column kDiskColumns[] = {
    {"DISK", true, [](const RecordView& disk) { return number(disk, "diskIndex"); }},
    {"INTERFACE", false, [](const RecordView& disk) { return disk.text("diskLabel"); }},
    {"TABLE", false, [](const RecordView& disk) { return tableName(disk); }},
    {"SIZE", true, [](const RecordView& disk) { return disk.text("displayTotalCapacity"); }},
    {"USED", true, [](const RecordView& disk) { return disk.text("displayUsedSize"); }},
    {"FREE", true, [](const RecordView& disk) { return disk.text("displayAvailableSpace"); }},
    {"SERIAL", false, [](const RecordView& disk) { return disk.text("serialNumber"); }},
    {"STATE", false, [](const RecordView& disk) { return stateText(disk); }},
};

constexpr Column kPartitionColumns[] = {
    {"DISK", true, [](const RecordView& entry) { return number(entry, "diskIndex"); }},
    {"DRIVE", false, [](const RecordView& entry) { return driveName(entry); }},
    {"LABEL", false, [](const RecordView& entry) { return entry.text("label"); }},
    {"FILE SYSTEM", false,
     [](const RecordView& entry) {
         return entry.flag("isUnallocated") ? "(unallocated)" : entry.text("fileSystemType");
     }},
    {"SIZE", true, [](const RecordView& entry) { return entry.text("displayRawCapacity"); }},
    {"USED", true,
     [](const RecordView& entry) {
         return entry.flag("isUnallocated") ? std::string() : entry.text("displayUsedSize");
     }},
    {"FREE", true, [](const RecordView& entry) { return entry.text("displayFreeSize"); }},
    {"STATE", false, [](const RecordView& entry) { return stateText(entry); }},
};

template <class Columns>
void writeColumns(std::ostream& out, const Record& record, const Value& list, const Columns& columns,
                  const Display& display)
{
    std::vector<TextTable::Column> titles;
    for (const Column& column : columns)
        titles.push_back({column.title, column.right});
    TextTable table(titles);
    for (const Value& value : list.parts()) {
        const RecordView view(record, value);
        std::vector<std::string> cells;
        for (const Column& column : columns)
            cells.push_back(column.cell(view));
        table.add(cells, view.flag("isUnallocated") ? Style::Dim : Style::Plain);
    }
    table.write(out, display);
}

bool isDisplayField(const std::string& name)
{
    return name.rfind("display", 0) == 0;
}

std::string fieldText(const Field& field, const RecordView& view)
{
    const Value& value = view.field(field.name);
    switch (field.type.kind) {
    case Kind::Bool:
        return value.boolean() ? "true" : "false";
    case Kind::I32:
    case Kind::I64: {
        const std::string& words = view.text(displayField(field.name));
        return std::to_string(value.integer()) + (words.empty() ? words : " (" + words + ")");
    }
    default:
        return value.text();
    }
}

} // namespace

std::string displayField(const std::string& field)
{
    // Field names are ASCII and not empty.
    std::string name = field;
    name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
    return "display" + name;
}

std::string stateText(const RecordView& view)
{
    std::vector<std::string> words;
    for (const FlagWord& row : kFlagWords) {
        if (view.flag(row.field) && !view.flag("isUnallocated"))
            words.emplace_back(row.word);
    }
    return join(words, ", ");
}

std::string driveName(const RecordView& partition)
{
    const std::string& letter = partition.text("driveLetter");
    const bool hasLetter =
        !letter.empty() && ((letter[0] >= 'A' && letter[0] <= 'Z') || (letter[0] >= 'a' && letter[0] <= 'z'));
    return hasLetter ? letter.substr(0, 1) + ':' : std::string();
}

std::string tableName(const RecordView& disk)
{
    if (disk.flag("isUninitialized"))
        return std::string();
    return disk.flag("isGpt") ? "GPT" : "MBR";
}

void writeRecords(std::ostream& out, const Interface& service, const Type& entry, const Value& list,
                  const Display& display)
{
    const Record& record = service.record(entry.record);
    if (entry.record == "DiskInfo")
        writeColumns(out, record, list, kDiskColumns, display);
    else
        writeColumns(out, record, list, kPartitionColumns, display);
}

void writeRecord(std::ostream& out, const Record& record, const Value& value, const Display& display)
{
    const RecordView view(record, value);
    TextTable table({{"FIELD"}, {"VALUE"}});
    for (const Field& field : record.fields) {
        if (!isDisplayField(field.name))
            table.add({field.name, fieldText(field, view)});
    }
    table.write(out, display);
}

} // namespace zorcall
