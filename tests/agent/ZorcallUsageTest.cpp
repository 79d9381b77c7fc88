// The program without a service: its texts, and what it refuses before it sends anything.
#include "tests/agent/ListedMethods.h"
#include "tests/agent/ZorcallProcess.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace {

TEST(ZorcallUsage, List_PrintsEveryMethodWithItsArguments)
{
    EXPECT_EQ(zorcall(words("--list")), (Ran{0, QByteArray::fromStdString(listedMethods()), ""}));
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
    EXPECT_TRUE(ran.out.contains("\n  capacity: i64\n      Capacity of the new partition in bytes.")) << ran;
    EXPECT_EQ(zorcall(words("--help CreatePartition")), ran);
    EXPECT_EQ(zorcall(words("CreatePartition --help")), ran);
}

TEST(ZorcallUsage, ListOfAMethodWithARecord_PrintsTheRecordsFields)
{
    const Ran ran = zorcall(words("--list PreProcessing"));
    EXPECT_TRUE(ran.out.contains("\nTaskInfo:\n  allow: bool\n")) << ran;
}

TEST(ZorcallUsage, ListOfAnUnknownMethod_NamesTheNearestWithCode2)
{
    const Ran ran = zorcall(words("--list ListAllDisk"));
    EXPECT_EQ(ran.code, 2);
    EXPECT_EQ(ran.out, "");
    EXPECT_TRUE(ran.err.startsWith("zorcall: unknown method 'ListAllDisk'; nearest: ListAllDisks\n")) << ran;
}

TEST(ZorcallUsage, Help_NamesEveryOptionAndCode)
{
    const Ran ran = zorcall(words("--help"));
    EXPECT_EQ(ran.code, 0);
    EXPECT_EQ(ran.err, "");
    for (const char* word :
         {"--gated", "--patient", "--allow-missing", "--script FILE", "--table", "--list", "--host", "--port",
          "--timeout", "--help", "--version", "0 answered", "1 refused", "2 usage", "3 no connection",
          "4 timed out", "5 an exception", "6 the answer"})
        EXPECT_TRUE(ran.out.contains(word)) << word;
    EXPECT_EQ(zorcall(words("-h")), ran);
}

TEST(ZorcallUsage, Version_IsPrinted)
{
    EXPECT_EQ(zorcall(words("--version")), (Ran{0, "zorcall 1.0.0\n", ""}));
}

TEST(ZorcallUsage, NoMethod_Code2)
{
    EXPECT_EQ(
        zorcall({}),
        (Ran{2, "", "zorcall: no method: 'zorcall --list' shows them, 'zorcall --help' the options\n"}));
}

TEST(ZorcallUsage, NoPort_Code2SaysHowToGiveOne)
{
    EXPECT_EQ(zorcall(words("Init")),
              (Ran{2, "", "zorcall: no port: give --port, or set AGENT_NATIVE_PORT\n"}));
}

TEST(ZorcallUsage, PortInTheEnvironmentThatIsNone_Code2)
{
    EXPECT_EQ(zorcall(words("Init"), "0"),
              (Ran{2, "", "zorcall: AGENT_NATIVE_PORT is '0', which is no port\n"}));
}

TEST(ZorcallUsage, UnknownMethod_IsToldEvenWithoutAPort)
{
    const Ran ran = zorcall(words("Innit"));
    EXPECT_EQ(ran.code, 2);
    EXPECT_TRUE(ran.err.startsWith("zorcall: unknown method 'Innit'; nearest: Init\n")) << ran;
}

TEST(ZorcallUsage, UnknownArgument_Code2NamesTheNearest)
{
    EXPECT_EQ(zorcall(words("WipeDisk diskIndx=1"), "1"),
              (Ran{2, "", "zorcall: WipeDisk has no argument 'diskIndx'; nearest: diskIndex\n"}));
}

TEST(ZorcallUsage, ValueThatDoesNotFit_Code2)
{
    EXPECT_EQ(zorcall(words("RebuildMbr diskIndex=first"), "1"),
              (Ran{2, "", "zorcall: argument 'diskIndex': 'first' is not a whole number\n"}));
}

TEST(ZorcallUsage, ValueOutOfRange_Code2)
{
    EXPECT_EQ(zorcall(words("RebuildMbr diskIndex=2147483648"), "1"),
              (Ran{2, "",
                   "zorcall: argument 'diskIndex': '2147483648' is out of the range of i32, -2147483648 to "
                   "2147483647\n"}));
}

TEST(ZorcallUsage, ArgumentTwice_Code2)
{
    EXPECT_EQ(zorcall(words("RebuildMbr diskIndex=1 diskIndex=2"), "1"),
              (Ran{2, "", "zorcall: argument 'diskIndex' is given twice\n"}));
}

TEST(ZorcallUsage, MissingArgument_Code2)
{
    EXPECT_EQ(zorcall(words("WipeDisk diskIndex=1"), "1"),
              (Ran{2, "", "zorcall: WipeDisk needs eraseCount as well (--allow-missing leaves them out)\n"}));
}

TEST(ZorcallUsage, GatesOwnMethodGated_Code2)
{
    EXPECT_EQ(zorcall(words("--gated Init"), "1"),
              (Ran{2, "", "zorcall: Init belongs to the gate and can't be called with --gated\n"}));
}

TEST(ZorcallUsage, UnknownOption_Code2)
{
    EXPECT_EQ(zorcall(words("--gate Init"), "1"),
              (Ran{2, "", "zorcall: Unknown option 'gate'. ('zorcall --help' shows the options)\n"}));
}

TEST(ZorcallUsage, ErrorWithALineFeedInIt_StaysOneLine)
{
    const Ran ran = zorcall({QStringLiteral("a\nb")}, "1");
    EXPECT_EQ(ran.code, 2);
    EXPECT_EQ(ran.err.count('\n'), 1) << ran;
    EXPECT_TRUE(ran.err.startsWith("zorcall: unknown method 'a?b'")) << ran;
}

#ifdef Q_OS_LINUX
TEST(ZorcallUsage, OutputThatCannotBeWritten_Code6)
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(zorcallPath(), words("--list"));
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 6);
    EXPECT_EQ(process.readAllStandardError(), "zorcall: the answer can't be written to standard output\n");
}

TEST(ZorcallUsage, ArgumentThatIsNotUtf8_Code2)
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
