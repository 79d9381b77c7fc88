// The differences between two inventories: which items are the same, and which of their fields count.
#include "agent/Snapshot.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using zorcall::Interface;
using zorcall::Item;
using zorcall::Value;

using Facts = std::map<std::string, Value>;

Value text(const char* value)
{
    return Value{std::string(value)};
}

Value number(std::int64_t value)
{
    return Value{value};
}

Value record(const char* name, const Facts& facts)
{
    Value::Parts parts;
    for (const zorcall::Field& field : Interface::builtIn().record(name).fields) {
        const auto fact = facts.find(field.name);
        parts.push_back(fact == facts.end() ? Value{} : fact->second);
    }
    return Value{parts};
}

Value disk(int index, const char* serial)
{
    return record("DiskInfo", {{"diskIndex", number(index)}, {"serialNumber", text(serial)}});
}

Facts partition(int diskIndex, const char* letter, std::int64_t start)
{
    return {{"diskIndex", number(diskIndex)},
            {"driveLetter", text(letter)},
            {"startSector", number(start)},
            {"rawCapacity", number(1000)}};
}

Facts with(Facts facts, const char* field, const Value& value)
{
    facts[field] = value;
    return facts;
}

zorcall::Snapshot snapshot(const std::vector<Facts>& entries, const Value::Parts& disks = {disk(0, "A")})
{
    Value::Parts records;
    for (const Facts& facts : entries)
        records.push_back(record("PartitionInfo", facts));
    return {Value{disks}, Value{records}};
}

/// "changed label usedSize", "new", "gone", for each difference.
std::vector<std::string> compare(const zorcall::Snapshot& before, const zorcall::Snapshot& after)
{
    std::vector<std::string> lines;
    for (const zorcall::Difference& difference : differences(Interface::builtIn(), before, after)) {
        std::string line = difference.was == nullptr ? "new" : difference.now == nullptr ? "gone" : "changed";
        for (const zorcall::Field* field : difference.fields)
            line += ' ' + field->name;
        lines.push_back(line);
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(Snapshot, SameInventory_HasNoDifference)
{
    EXPECT_EQ(compare(snapshot({partition(0, "C", 1)}), snapshot({partition(0, "C", 1)})), Lines{});
}

TEST(Snapshot, ChangedFields_AreNamedWithoutThoseThatFollow)
{
    Facts after = with(partition(0, "C", 1), "label", text("X"));
    after = with(after, "displayRawCapacity", text("other"));
    after = with(after, "freeSize", number(7));
    after = with(after, "partitionIndex", number(7));
    after = with(after, "isGpt", Value{true});
    EXPECT_EQ(compare(snapshot({partition(0, "C", 1)}), snapshot({after})), Lines{"changed label"});
}

TEST(Snapshot, NewAndGonePartitions_AreNotPaired)
{
    EXPECT_EQ(compare(snapshot({partition(0, "C", 1)}),
                      snapshot({with(partition(0, "D", 5), "rawCapacity", number(5))})),
              (Lines{"new", "gone"}));
}

TEST(Snapshot, UsedSpace_CountsFromOnePercentOn)
{
    const Facts before = with(partition(0, "C", 1), "usedSize", number(500));
    EXPECT_EQ(compare(snapshot({before}), snapshot({with(before, "usedSize", number(510))})), Lines{});
    EXPECT_EQ(compare(snapshot({before}), snapshot({with(before, "usedSize", number(511))})),
              Lines{"changed usedSize"});
}

TEST(Snapshot, SwappedLetters_AreChangesOfThePartitionsInTheirPlaces)
{
    EXPECT_EQ(compare(snapshot({partition(0, "C", 1), partition(0, "D", 5)}),
                      snapshot({partition(0, "D", 1), partition(0, "C", 5)})),
              (Lines{"changed driveLetter", "changed driveLetter"}));
}

TEST(Snapshot, MovedPartition_IsRecognisedByItsIdentifierOrLetter)
{
    const Facts before = with(partition(0, "", 1), "partitionGuid", text("G"));
    const Facts moved = with(with(before, "startingOffset", number(9)), "startSector", number(9));
    EXPECT_EQ(compare(snapshot({before}), snapshot({moved})), Lines{"changed startingOffset"});
    const Facts resized =
        with(with(partition(0, "C", 9), "startingOffset", number(9)), "rawCapacity", number(5));
    EXPECT_EQ(compare(snapshot({partition(0, "C", 1)}), snapshot({resized})),
              Lines{"changed rawCapacity startingOffset"});
}

TEST(Snapshot, SharedIdentifiers_AreNotUsed)
{
    const auto copy = [](int start) { return with(partition(0, "", start), "partitionGuid", text("G")); };
    EXPECT_EQ(compare(snapshot({copy(1), copy(5)}), snapshot({copy(5), copy(1)})), Lines{});
}

TEST(Snapshot, DiskWithAnotherNumber_IsRecognisedByItsSerialNumber)
{
    const Value::Parts before{disk(0, "A"), disk(1, "B")};
    const Value::Parts after{disk(0, "B")};
    EXPECT_EQ(compare(snapshot({partition(1, "", 1)}, before), snapshot({partition(0, "", 1)}, after)),
              (Lines{"changed diskIndex", "gone", "changed diskIndex"}));
}

TEST(Snapshot, Region_IsRecognisedByItsStartOrItsEnd)
{
    const auto region = [](int start, int end) {
        return Facts{{"isUnallocated", Value{true}},
                     {"startSector", number(start)},
                     {"endSector", number(end)},
                     {"startingOffset", number(start)}};
    };
    const zorcall::Snapshot before = snapshot({region(10, 20), region(30, 40)});
    const zorcall::Snapshot after = snapshot({region(10, 25), region(35, 40), region(50, 60)});
    EXPECT_EQ(compare(before, after), (Lines{"changed startingOffset", "new"}));
    const auto found = differences(Interface::builtIn(), before, after);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found.front().item, Item::Region);
}

} // namespace
