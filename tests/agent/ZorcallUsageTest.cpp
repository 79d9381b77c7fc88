// The program without a service: its own output, and calls that it rejects before it sends anything.
#include "tests/agent/ListedMethods.h"
#include "tests/agent/ZorcallProcess.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace {

TEST(ZorcallUsage, List_PrintsEveryMethodWithItsArguments)
{
    EXPECT_EQ(zorcall(words("--list")), (Ran{0, QByteArray::fromStdString(listedMethods()), ""}));
}

QByteArray lines(const QList<QByteArray>& rows)
{
    return rows.join('\n') + '\n';
}

TEST(ZorcallUsage, ListOfAWord_PrintsTheSignaturesOfTheMatchingMethods)
{
    EXPECT_EQ(zorcall(words("--list bitlocker")),
              (Ran{0,
                   "ShowBitLockerStatus(driveLetter: string) -> string\n"
                   "RetrieveBitLockerRecoveryKey(driveLetter: string) -> string\n",
                   ""}));
    // The word is in the documentation, the group and the class.
    EXPECT_TRUE(zorcall({QStringLiteral("--list"), QStringLiteral("surface TEST")})
                    .out.startsWith("ScanDiskBadSectors("));
    EXPECT_TRUE(zorcall(words("--list inventory")).out.contains("GetAllPartitionInfo()"));
    const QByteArray destroying = zorcall(words("--list destroys")).out;
    EXPECT_TRUE(destroying.contains("WipeDisk(")) << destroying.constData();
    EXPECT_FALSE(destroying.contains("ListAllDisks(")) << destroying.constData();
}

TEST(ZorcallUsage, ListAsATable_HasOneLinePerToolWithItsClassAndSummary)
{
    EXPECT_EQ(
        zorcall(words("--table --list inventory")),
        (Ran{0,
             lines(
                 {"inventory: Reading disks and partitions",
                  "  ListAllDisks          reads  Lists all disks, in the host's order.",
                  "  ListPartitionsOnDisk  reads  Lists the partitions and unallocated regions of a disk, in "
                  "order; empty for an unknown disk.",
                  "  GetPartitionInfo      reads  Returns one partition.",
                  "  GetAllPartitionInfo   reads  Lists the partitions and unallocated regions of all "
                  "disks."}),
             ""}));
    const QByteArray all = zorcall(words("--table --list")).out;
    for (const char* row :
         {"\nclone: Cloning disks, partitions and the system\n",
          "\n  WipeDisk                                  destroys  Overwrites a whole disk.\n",
          "\n  CreatePartition                           changes   Creates a partition in "
          "unallocated space.\n",
          "\n  OpenDiskLayoutEditor                      opens     Opens the layout editor for a "
          "disk.\n",
          "\ngate: Calls before and after a tool\n"})
        EXPECT_TRUE(all.contains(row)) << row << all.constData();
    EXPECT_FALSE(zorcall(words("--table --no-headers --list")).out.contains(":  ")) << all.constData();
}

TEST(ZorcallUsage, ListAsJson_HasEveryMethodWithItsGroupClassAndArguments)
{
    const QJsonArray tools = QJsonDocument::fromJson(zorcall(words("--json --list")).out).array();
    EXPECT_EQ(tools.size(), static_cast<int>(interfaceMethods().size()));
    const QJsonArray one = QJsonDocument::fromJson(zorcall(words("--json --list WipePartition")).out).array();
    ASSERT_EQ(one.size(), 1);
    const QJsonObject tool = one.first().toObject();
    EXPECT_EQ(tool.value("name"), QJsonValue("WipePartition"));
    EXPECT_EQ(tool.value("group"), QJsonValue("partitions"));
    EXPECT_EQ(tool.value("class"), QJsonValue("destroys"));
    EXPECT_EQ(tool.value("summary"), QJsonValue("Overwrites a partition."));
    EXPECT_EQ(tool.value("result"), QJsonValue("string"));
    const QJsonObject second = tool.value("arguments").toArray().at(1).toObject();
    EXPECT_EQ(second.value("name"), QJsonValue("eraseCount"));
    EXPECT_EQ(second.value("type"), QJsonValue("i32"));
    EXPECT_EQ(second.value("doc"),
              QJsonValue("Number of overwrite passes, 1 or more; the host decides the maximum."));
}

TEST(ZorcallUsage, ListOfOneMethod_PrintsItsDocumentation)
{
    const Ran ran = zorcall(words("--list CreatePartition"));
    EXPECT_EQ(ran.code, 0);
    EXPECT_TRUE(
        ran.out.startsWith("CreatePartition(diskIndex: i32, capacity: i64, fileSystem: string, label: "
                           "string, unallocatedIndex: i32) -> string\n"))
        << ran;
    EXPECT_TRUE(ran.out.contains("Creates a partition in unallocated space.")) << ran;
    EXPECT_TRUE(ran.out.contains("\n  Group: partitions. Class: changes.\n")) << ran;
    EXPECT_TRUE(ran.out.contains("\n  capacity: i64\n      Capacity of the new partition in bytes.")) << ran;
    EXPECT_EQ(zorcall(words("--help CreatePartition")), ran);
    EXPECT_EQ(zorcall(words("CreatePartition --help")), ran);
}

TEST(ZorcallUsage, ListOfAMethodWithARecord_PrintsTheFieldsOfTheRecord)
{
    const Ran ran = zorcall(words("--list PreProcessing"));
    EXPECT_TRUE(ran.out.contains("\nTaskInfo:\n  allow: bool\n")) << ran;
}

TEST(ZorcallUsage, Help_ContainsEveryOptionAndExitCode)
{
    const Ran ran = zorcall(words("--help"));
    EXPECT_EQ(ran.code, 0);
    EXPECT_EQ(ran.err, "");
    for (const char* word :
         {"--gated", "--patient", "--allow-missing", "--script FILE", "--table", "--list", "--host", "--port",
          "--timeout", "-h, --help", "--version", "0  answered", "1  rejected", "2  usage error",
          "3  no service, or connection failed", "4  timeout", "5  exception", "6  standard output"})
        EXPECT_TRUE(ran.out.contains(word)) << word;
    EXPECT_EQ(zorcall(words("-h")), ran);
}

TEST(ZorcallUsage, Version_IsPrinted)
{
    EXPECT_EQ(zorcall(words("--version")), (Ran{0, "zorcall 1.0.0\n", ""}));
}

struct UsageError
{
    const char* name;
    QStringList arguments;
    const char* nativePort; ///< value of AGENT_NATIVE_PORT, unset if empty
    const char* message;    ///< a final "..." matches further suggested names
};

void PrintTo(const UsageError& row, std::ostream* out)
{
    *out << row.arguments.join(QLatin1Char(' ')).toStdString();
}

const UsageError kUsageErrors[] = {
    {"MissingMethod",
     {},
     "",
     "missing method: 'zorcall --list' lists the methods, 'zorcall --help' the options"},
    {"MissingPort", words("--host localhost Init"), "",
     "missing port: --host requires --port or AGENT_NATIVE_PORT"},
    {"InvalidPortInTheEnvironment", words("Init"), "0",
     "AGENT_NATIVE_PORT is '0', not a valid port (1 to 65535)"},
    {"ListOfAnUnknownMethod", words("--list ListAlDisk"), "",
     "unknown method 'ListAlDisk'; nearest: ListAllDisks"},
    {"HelpForAPartOfAName", words("--help ListAllDisk"), "",
     "unknown method 'ListAllDisk'; nearest: ListAllDisks"},
    {"UnknownMethodWithoutAPort", words("Innit"), "", "unknown method 'Innit'; nearest: Init"},
    {"UnknownArgument", words("WipeDisk diskIndx=1"), "1",
     "WipeDisk has no argument 'diskIndx'; nearest: diskIndex"},
    {"InvalidInteger", words("RebuildMbr diskIndex=first"), "1",
     "argument 'diskIndex': 'first' is not a whole number"},
    {"IntegerOutOfRange", words("RebuildMbr diskIndex=2147483648"), "1",
     "argument 'diskIndex': '2147483648' is out of the range of i32, -2147483648 to 2147483647"},
    {"RepeatedArgument", words("RebuildMbr diskIndex=1 diskIndex=2"), "1",
     "argument 'diskIndex' is given twice"},
    {"MissingArgument", words("WipeDisk diskIndex=1"), "1",
     "WipeDisk requires eraseCount (--allow-missing omits missing arguments)"},
    {"GatedMethodOfTheGate", words("--gated Init"), "1",
     "Init belongs to the gate and cannot be called with --gated"},
    {"UnknownOption", words("--gate Init"), "1",
     "Unknown option 'gate'. ('zorcall --help' shows the options)"},
    {"LineFeedInAName", {QStringLiteral("a\nb")}, "1", "unknown method 'a?b'..."},
};

class ZorcallUsageErrors : public testing::TestWithParam<UsageError>
{
};

TEST_P(ZorcallUsageErrors, PrintOneLineWithCode2)
{
    const Ran ran = zorcall(GetParam().arguments, GetParam().nativePort);
    EXPECT_EQ(ran.code, 2);
    EXPECT_EQ(ran.out, "");
    const QByteArray message = QByteArray("zorcall: ") + GetParam().message;
    if (message.endsWith("...")) {
        EXPECT_TRUE(ran.err.startsWith(message.chopped(3))) << ran;
        EXPECT_EQ(ran.err.indexOf('\n'), ran.err.size() - 1) << ran;
    } else {
        EXPECT_EQ(ran.err, message + '\n');
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, ZorcallUsageErrors, testing::ValuesIn(kUsageErrors),
                         [](const auto& row) { return std::string(row.param.name); });

#ifdef Q_OS_LINUX
TEST(ZorcallUsage, OutputThatCannotBeWritten_Code6)
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(zorcallPath(), words("--list"));
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 6);
    EXPECT_EQ(process.readAllStandardError(), "zorcall: the answer cannot be written to standard output\n");
}

TEST(ZorcallUsage, ArgumentWithInvalidUtf8_Code2)
{
    QProcess process;
    process.start(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QLatin1Char('"') + zorcallPath() +
                                   QStringLiteral("\" --port 1 EjectUsb driveLetter=\"$(printf '\\377')\"")});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_TRUE(process.readAllStandardError().startsWith("zorcall: an argument is not UTF-8: "));
}
#endif

} // namespace
