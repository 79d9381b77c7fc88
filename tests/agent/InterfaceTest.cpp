// The built-in description matches the interface file, and the program uses nothing else of the library.
#include "agent/Interface.h"
#include "agent/Catalogue.h"
#include "tests/agent/ListedMethods.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using zorcall::Interface;

TEST(Description, BuiltIn_HasTheMethodsInTheirOrder)
{
    std::ostringstream out;
    for (const zorcall::Method& method : Interface::builtIn().methods())
        out << method.signature() << '\n';
    EXPECT_EQ(out.str(), listedMethods());
}

TEST(Description, Arguments_AreNumberedFromOne)
{
    for (const zorcall::Method& method : Interface::builtIn().methods()) {
        for (std::size_t i = 0; i < method.arguments.size(); ++i)
            EXPECT_EQ(method.arguments[i].id, static_cast<int>(i) + 1) << method.name;
    }
}

TEST(Description, Records_ContainTheirFieldsInIdOrder)
{
    const Interface& service = Interface::builtIn();
    ASSERT_EQ(service.record("DiskInfo").fields.size(), 29u);
    ASSERT_EQ(service.record("PartitionInfo").fields.size(), 46u);
    ASSERT_EQ(service.record("TaskInfo").fields.size(), 2u);
    for (const char* name : {"DiskInfo", "PartitionInfo", "TaskInfo"}) {
        int id = 0;
        for (const zorcall::Field& field : service.record(name).fields)
            EXPECT_EQ(field.id, ++id) << name << ' ' << field.name;
    }
    EXPECT_EQ(service.record("DiskInfo").fields[28].name, "serialNumber");
    EXPECT_EQ(service.record("PartitionInfo").fields[42].name, "driveLetter");
    EXPECT_EQ(service.record("TaskInfo").fields[1].name, "reasons");
}

TEST(Description, Constants_AreRead)
{
    const Interface service(
        R"({"constants": [{"name": "A", "typeId": "string", "value": " a b "}], "structs": [],
        "services": [{"functions": []}]})");
    EXPECT_EQ(service.constant("A"), " a b ");
    EXPECT_THROW(service.constant("B"), std::runtime_error);
}

TEST(Description, EveryMethodAndArgument_IsDocumented)
{
    for (const zorcall::Method& method : Interface::builtIn().methods()) {
        EXPECT_FALSE(method.doc.empty()) << method.name;
        for (const zorcall::Field& argument : method.arguments)
            EXPECT_FALSE(argument.doc.empty()) << method.name << ' ' << argument.name;
    }
}

TEST(Description, FieldsOutOfOrder_AreSorted)
{
    const Interface service(
        R"({"structs": [], "services": [{"functions": [{"name": "F", "returnTypeId": "bool",
        "arguments": [{"key": 2, "name": "b", "typeId": "i32"}, {"key": 1, "name": "a", "typeId": "i64"}]}]}]})");
    EXPECT_EQ(service.method("F")->signature(), "F(a: i64, b: i32) -> bool");
}

TEST(Description, InvalidDescription_IsRejected)
{
    EXPECT_THROW(Interface(""), std::runtime_error);
    EXPECT_THROW(Interface("{}"), std::runtime_error);
    EXPECT_THROW(Interface(R"({"services": [{"functions": [{"name": "F", "returnTypeId": "double"}]}]})"),
                 std::runtime_error);
    EXPECT_THROW(Interface(R"({"services": [{"functions": [{"name": "F", "returnTypeId": "list",
                               "returnType": {"elemTypeId": "list"}}]}]})"),
                 std::runtime_error);
}

TEST(Catalogue, MethodWithoutARow_IsReported)
{
    EXPECT_THROW(zorcall::Catalogue(Interface::builtIn(), R"({"gate": ["Init"], "tools": {}})"),
                 std::runtime_error);
}

TEST(Catalogue, Classes_AreTheFour)
{
    for (const zorcall::Tool& tool : zorcall::Catalogue::builtIn().tools())
        EXPECT_TRUE(tool.toolClass == "reads" || tool.toolClass == "opens" || tool.toolClass == "changes" ||
                    tool.toolClass == "destroys")
            << tool.method->name << ' ' << tool.toolClass;
}

TEST(Description, UnknownNames_AreReported)
{
    EXPECT_EQ(Interface::builtIn().method("listalldisks"), nullptr);
    EXPECT_THROW(Interface::builtIn().record("Disk"), std::runtime_error);
}

TEST(AgentFolder, Includes_OnlyItsOwnHeadersLibrariesAndTheManual)
{
    const QDir folder(qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + QStringLiteral("/agent"));
    const QStringList files = folder.entryList({QStringLiteral("*.h"), QStringLiteral("*.cpp")});
    ASSERT_GT(files.size(), 10);
    const QRegularExpression include(
        QStringLiteral("#include \"(?!agent/|manual/)[^\"]*\"|#include <ZORNative"));
    for (const QString& name : files) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_FALSE(include.match(QString::fromUtf8(file.readAll())).hasMatch()) << name.toStdString();
    }
}

} // namespace
