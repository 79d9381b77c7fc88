#include "agent/Watch.h"

#include "agent/JsonWriter.h"
#include "agent/RecordTable.h"
#include "agent/Report.h"
#include "agent/Snapshot.h"
#include "agent/Text.h"

#include <QtCore/QDateTime>

#include <ostream>
#include <thread>

namespace zorcall {

namespace {

const char* changeName(const Difference& difference)
{
    if (difference.was == nullptr)
        return "new";
    return difference.now == nullptr ? "gone" : "changed";
}

Style styleOf(const Difference& difference)
{
    if (difference.was == nullptr)
        return Style::Green;
    return difference.now == nullptr ? Style::Red : Style::Yellow;
}

const char* itemName(Item item)
{
    switch (item) {
    case Item::Disk:
        return "disk";
    case Item::Partition:
        return "partition";
    case Item::Region:
        return "region";
    }
    return "";
}

/// Output at a terminal: one line of plain text per difference.
class TextWriter
{
public:
    TextWriter(const Interface& service, const Display& display) : service_(service), display_(display) {}

    std::string start(const Snapshot& snapshot) const
    {
        return "Watching the disks (" + std::to_string(snapshot.disks.parts().size()) +
               ") and their partitions and unallocated regions (" +
               std::to_string(snapshot.entries.parts().size()) + "). Press Ctrl-C to end.";
    }

    std::string line(const Difference& difference) const
    {
        const std::string change = changeName(difference);
        const std::string time =
            QDateTime::currentDateTime().toString(QStringLiteral("HH:mm:ss")).toStdString();
        const std::string gap(sizeof("changed") + 1 - change.size(), ' ');
        const std::string facts = difference.fields.empty() ? details(difference) : changes(difference);
        return time + "  " + styled(change, styleOf(difference), display_) + gap +
               oneLine(name(difference) + facts);
    }

private:
    RecordView view(const Difference& difference, const Value* value) const
    {
        return {recordOf(service_, difference.item), *value};
    }

    // The name before the change, which the user already knows.
    std::string name(const Difference& difference) const
    {
        const RecordView record =
            view(difference, difference.was != nullptr ? difference.was : difference.now);
        const std::string disk = "disk " + std::to_string(record.integer("diskIndex"));
        if (difference.item == Item::Disk)
            return disk;
        const std::string drive = driveName(record);
        const std::string place =
            " (" + disk + ", byte " + std::to_string(record.integer("startingOffset")) + ")";
        if (difference.item == Item::Region)
            return "unallocated region" + place;
        return drive.empty() ? "partition without a letter" + place : drive + " (" + disk + ")";
    }

    std::string details(const Difference& difference) const
    {
        const RecordView record =
            view(difference, difference.was != nullptr ? difference.was : difference.now);
        if (difference.item == Item::Disk)
            return ", " + record.text("diskLabel") + ", " + record.text("displayTotalCapacity");
        std::string words;
        for (const char* field : {"label", "fileSystemType", "displayRawCapacity"}) {
            if (!record.text(field).empty())
                words += ", " + record.text(field);
        }
        return words;
    }

    std::string changes(const Difference& difference) const
    {
        const RecordView was = view(difference, difference.was);
        const RecordView now = view(difference, difference.now);
        std::vector<std::string> words;
        for (const Field* field : difference.fields) {
            // Two sizes with the same display string are printed in bytes.
            const std::string display = displayField(field->name);
            const bool shown = was.text(display) != now.text(display);
            words.push_back(field->name + ' ' + (shown ? was.text(display) : json(was, *field)) + " -> " +
                            (shown ? now.text(display) : json(now, *field)));
        }
        return ": " + join(words, ", ");
    }

    std::string json(const RecordView& record, const Field& field) const
    {
        return toJson(service_, field.type, record.field(field.name));
    }

    const Interface& service_;
    const Display& display_;
};

/// Output for programs: one JSON object per difference.
class JsonLines
{
public:
    JsonLines(const Interface& service, std::ostream& out) : service_(service), out_(out) {}

    void start(const Snapshot& snapshot)
    {
        begin("initial");
        list("disks", "DiskInfo", snapshot.disks);
        list("partitions", "PartitionInfo", snapshot.entries);
        out_ << "}\n";
    }

    void line(const Difference& difference)
    {
        begin(changeName(difference));
        out_ << ", \"item\": \"" << itemName(difference.item) << "\", \"fields\": [";
        for (const Field* field : difference.fields)
            out_ << (field == difference.fields.front() ? "\"" : ", \"") << field->name << '"';
        out_ << ']';
        record("was", difference.item, difference.was);
        record("now", difference.item, difference.now);
        out_ << "}\n";
    }

private:
    void begin(const char* change)
    {
        const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
        out_ << "{\"time\": \"" << time.toStdString() << "\", \"change\": \"" << change << '"';
    }

    void list(const char* key, const char* record, const Value& value)
    {
        out_ << ", \"" << key << "\": ";
        writeJson(out_, service_, Type{Kind::List, record, Kind::Record}, value);
    }

    void record(const char* key, Item item, const Value* value)
    {
        out_ << ", \"" << key << "\": ";
        if (value == nullptr)
            out_ << "null";
        else
            writeJson(out_, service_, Type{Kind::Record, recordOf(service_, item).name, {}}, *value);
    }

    const Interface& service_;
    std::ostream& out_;
};

void writeStart(const Interface& service, const Snapshot& snapshot, const Display& display, std::ostream& out)
{
    if (!display.table)
        JsonLines(service, out).start(snapshot);
    else if (display.headers)
        out << TextWriter(service, display).start(snapshot) << '\n';
    requireWritten(out);
}

void writeDifference(const Interface& service, const Difference& difference, const Display& display,
                     std::ostream& out)
{
    if (display.table)
        out << TextWriter(service, display).line(difference) << '\n';
    else
        JsonLines(service, out).line(difference);
    requireWritten(out);
}

Snapshot readOnce(const Interface& service, const Address& address)
{
    Client client(service, address);
    return readSnapshot(client);
}

} // namespace

void watchInventory(const Interface& service, const Address& address, std::chrono::milliseconds interval,
                    const Display& display, std::ostream& out)
{
    Snapshot last = readOnce(service, address);
    writeStart(service, last, display, out);
    for (;;) {
        std::this_thread::sleep_for(interval);
        Snapshot now = readOnce(service, address);
        const std::vector<Difference> found = differences(service, last, now);
        for (const Difference& difference : found)
            writeDifference(service, difference, display, out);
        // Small changes of the used space add up until they are reported.
        if (!found.empty())
            last = std::move(now);
    }
}

} // namespace zorcall
