// Answers as JSON: order, digits, strings.
#include "agent/JsonWriter.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using zorcall::Interface;
using zorcall::Kind;
using zorcall::Type;
using zorcall::Value;

std::string json(const Type& type, const Value& value)
{
    return zorcall::toJson(Interface::builtIn(), type, value);
}

Type record(const std::string& name)
{
    return Type{Kind::Record, name, {}};
}

TEST(Json, SimpleValues)
{
    EXPECT_EQ(json(Type{Kind::Bool, {}, {}}, Value{true}), "true");
    EXPECT_EQ(json(Type{Kind::Bool, {}, {}}, Value{false}), "false");
    EXPECT_EQ(json(Type{Kind::I32, {}, {}}, Value{std::int64_t{-7}}), "-7");
    EXPECT_EQ(json(Type{Kind::String, {}, {}}, Value{std::string("a b")}), "\"a b\"");
}

TEST(Json, SixtyFourBitNumbers_KeepEveryDigit)
{
    EXPECT_EQ(json(Type{Kind::I64, {}, {}}, Value{std::int64_t{9007199254740993}}), "9007199254740993");
    EXPECT_EQ(json(Type{Kind::I64, {}, {}}, Value{INT64_MIN}), "-9223372036854775808");
    EXPECT_EQ(json(Type{Kind::I64, {}, {}}, Value{INT64_MAX}), "9223372036854775807");
}

TEST(Json, String_EscapesOnlyRequiredCharactersAndKeepsUtf8)
{
    std::ostringstream out;
    zorcall::writeJsonString(out, std::string("\"\\/\b\f\n\r\t\x01\x1F \0|", 13) +
                                      "Gr\xC3\xB6\xC3\x9F\x65 \xF0\x9F\x92\xBE");
    EXPECT_EQ(out.str(),
              "\"\\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f \\u0000|Gr\xC3\xB6\xC3\x9F\x65 \xF0\x9F\x92\xBE\"");
}

TEST(Json, InvalidUtf8_BecomesReplacementCharacters)
{
    std::ostringstream out;
    zorcall::writeJsonString(out, "a\xFF\xC3z\xE6\x95");
    EXPECT_EQ(out.str(), "\"a\xEF\xBF\xBD\xEF\xBF\xBDz\xEF\xBF\xBD\xEF\xBF\xBD\"");
}

TEST(Json, ByteOrderMark_IsKept)
{
    std::ostringstream out;
    zorcall::writeJsonString(out, "\xEF\xBB\xBFx");
    EXPECT_EQ(out.str(), "\"\xEF\xBB\xBFx\"");
}

TEST(Json, Record_HasFieldsInIdOrderAndDefaultsForAbsentOnes)
{
    EXPECT_EQ(json(record("TaskInfo"), Value{Value::Parts{Value{true}}}),
              R"({"allow": true, "reasons": ""})");
    EXPECT_EQ(json(record("TaskInfo"), Value{Value::Parts{}}), R"({"allow": false, "reasons": ""})");
    EXPECT_EQ(json(record("DiskInfo"), Value{Value::Parts{}}),
              R"({"diskLabel": "", "diskIndex": 0, "partitionCount": 0, "totalCapacity": 0, )"
              R"("displayTotalCapacity": "", "usedSize": 0, "displayUsedSize": "", "availableSpace": 0, )"
              R"("displayAvailableSpace": "", "isUninitialized": false, "isGpt": false, "isMbr": false, )"
              R"("isStorageSpace": false, "isDynamic": false, "isReadOnly": false, "isOffline": false, )"
              R"("isBadDisk": false, "isWriteProtected": false, "isRemovable": false, "isVhd": false, )"
              R"("isVmd": false, "isVirtualDisk": false, "isUsb": false, "isSsd": false, )"
              R"("existsBitLocker": false, "isLowSpace": false, "not4kAligned": false, )"
              R"("emptyPartitionCount": 0, "serialNumber": ""})");
}

TEST(Json, PartitionRecord_IsParsedWithAllItsFields)
{
    const std::string text = json(record("PartitionInfo"), Value{Value::Parts{}});
    const QJsonObject parsed = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
    EXPECT_EQ(parsed.size(), 46);
    EXPECT_LT(text.find("\"isUnallocated\""), text.find("\"diskIndex\""));
    EXPECT_LT(text.find("\"fileSystemType\""), text.find("\"dynamicVolumeType\""));
}

TEST(Json, List_IsAnArray)
{
    const Type type{Kind::List, "TaskInfo", Kind::Record};
    EXPECT_EQ(json(type, Value{Value::Parts{}}), "[]");
    EXPECT_EQ(json(type, Value{Value::Parts{Value{}, Value{Value::Parts{Value{true}}}}}),
              R"([{"allow": false, "reasons": ""}, {"allow": true, "reasons": ""}])");
}

} // namespace
