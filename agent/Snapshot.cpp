#include "agent/Snapshot.h"

#include "agent/Client.h"
#include "agent/Match.h"
#include "agent/RecordTable.h"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace zorcall {

namespace {

// Fields that are derived from others, or from the position in the list.
const char* const kDerived[] = {
    "availableSpace", "dbrStartSector", "dynamicVolumeSize", "emptyPartitionCount", "endSector",  "freeSize",
    "isMbr",          "isPrimary",      "partitionCount",    "partitionIndex",      "startSector"};

bool isReported(const Field& field, Item item)
{
    if (field.name.rfind("display", 0) == 0)
        return false;
    // The partitions report the used space of their disk; the disk reports the partition table.
    if (field.name == (item == Item::Disk ? "usedSize" : "isGpt"))
        return false;
    return std::none_of(std::begin(kDerived), std::end(kDerived),
                        [&](const char* name) { return field.name == name; });
}

bool isDifferent(const Field& field, const RecordView& was, const RecordView& now)
{
    const Value& before = was.field(field.name);
    const Value& after = now.field(field.name);
    if (field.name == "usedSize")
        return std::abs(after.integer() - before.integer()) > now.integer("rawCapacity") / 100;
    return before.boolean() != after.boolean() || before.integer() != after.integer() ||
           before.text() != after.text();
}

/// Compares two snapshots. Each entry is assigned to a pair of disks, because a disk's number can change.
class Comparison
{
public:
    Comparison(const Interface& service, const Snapshot& before, const Snapshot& after)
        : service_(service), before_(before), after_(after)
    {
    }

    std::vector<Difference> run()
    {
        const std::vector<Pair> disks = pairDisks();
        for (std::size_t i = 0; i < disks.size(); ++i) {
            setPosition(before_.entries, disks[i].first, i);
            setPosition(after_.entries, disks[i].second, i);
        }
        add(Item::Disk, disks);
        add(Item::Partition, pairPartitions());
        add(Item::Region, pairRegions());
        return std::move(differences_);
    }

private:
    RecordView view(Item item, const Value& value) const { return {recordOf(service_, item), value}; }

    std::vector<Pair> pairDisks() const
    {
        const auto serial = [this](const Value& disk) { return view(Item::Disk, disk).text("serialNumber"); };
        const auto number = [this](const Value& disk) {
            return std::to_string(view(Item::Disk, disk).integer("diskIndex"));
        };
        return pairItems(
            items(before_.disks), items(after_.disks),
            {[=](const Value& disk) { return serial(disk) + '\n' + number(disk); }, serial,
             [=](const Value& disk) { return serial(disk).empty() ? number(disk) : std::string(); }});
    }

    // An order changes some of the properties, so several keys are tried. A letter can be assigned to another
    // partition, so it is not the first key.
    std::vector<Pair> pairPartitions() const
    {
        const auto key = [this](const std::vector<const char*>& fields) {
            return [this, fields](const Value& entry) { return positionKey(entry, fields); };
        };
        return pairItems(
            entries(before_, false), entries(after_, false),
            {[this](const Value& entry) { return view(Item::Partition, entry).text("partitionGuid"); },
             key({"startSector", "rawCapacity", "label"}),
             [this](const Value& entry) {
                 const std::string drive = driveName(view(Item::Partition, entry));
                 return drive.empty() ? drive : positionKey(entry, {}) + drive;
             },
             key({"startSector"}), key({"rawCapacity", "label", "fileSystemType"})});
    }

    std::vector<Pair> pairRegions() const
    {
        const auto key = [this](const char* field) {
            return [this, field](const Value& entry) { return positionKey(entry, {field}); };
        };
        return pairItems(entries(before_, true), entries(after_, true),
                         {key("startSector"), key("endSector"),
                          [this](const Value& entry) { return positionKey(entry, {}); }});
    }

    std::string positionKey(const Value& entry, const std::vector<const char*>& fields) const
    {
        const RecordView record = view(Item::Partition, entry);
        const auto position = positions_.find(&entry);
        std::string key = position == positions_.end() ? std::string("?") : std::to_string(position->second);
        for (const char* field : fields)
            key += '\n' + record.text(field) + std::to_string(record.integer(field));
        return key + '\n';
    }

    void setPosition(const Value& list, const Value* disk, std::size_t position)
    {
        if (disk == nullptr)
            return;
        const std::int64_t number = view(Item::Disk, *disk).integer("diskIndex");
        for (const Value& entry : list.parts()) {
            if (view(Item::Partition, entry).integer("diskIndex") == number)
                positions_[&entry] = position;
        }
    }

    static std::vector<const Value*> items(const Value& list)
    {
        std::vector<const Value*> items;
        for (const Value& value : list.parts())
            items.push_back(&value);
        return items;
    }

    std::vector<const Value*> entries(const Snapshot& snapshot, bool unallocated) const
    {
        std::vector<const Value*> found = items(snapshot.entries);
        const auto isOther = [&](const Value* entry) {
            return view(Item::Partition, *entry).flag("isUnallocated") != unallocated;
        };
        found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
        return found;
    }

    void add(Item item, const std::vector<Pair>& pairs)
    {
        for (const auto& [was, now] : pairs) {
            Difference difference{item, was, now, {}};
            if (was != nullptr && now != nullptr)
                difference.fields = changedFields(item, *was, *now);
            if (was == nullptr || now == nullptr || !difference.fields.empty())
                differences_.push_back(difference);
        }
    }

    std::vector<const Field*> changedFields(Item item, const Value& was, const Value& now) const
    {
        std::vector<const Field*> fields;
        for (const Field& field : recordOf(service_, item).fields) {
            if (isReported(field, item) && isDifferent(field, view(item, was), view(item, now)))
                fields.push_back(&field);
        }
        return fields;
    }

    const Interface& service_;
    const Snapshot& before_;
    const Snapshot& after_;
    std::map<const Value*, std::size_t> positions_;
    std::vector<Difference> differences_;
};

} // namespace

Snapshot readSnapshot(Client& client)
{
    return {client.call("ListAllDisks", {}), client.call("GetAllPartitionInfo", {})};
}

std::vector<Difference> differences(const Interface& service, const Snapshot& before, const Snapshot& after)
{
    return Comparison(service, before, after).run();
}

const Record& recordOf(const Interface& service, Item item)
{
    return service.record(item == Item::Disk ? "DiskInfo" : "PartitionInfo");
}

} // namespace zorcall
