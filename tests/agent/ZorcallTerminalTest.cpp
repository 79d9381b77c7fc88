// The output for people: at a terminal, and with --table. The service is the sandbox host.
#include "tests/agent/SandboxHost.h"
#include "tests/agent/Terminal.h"
#include "tests/support/Threads.h"

namespace {

const char* const kDisks =
    "DISK  INTERFACE  TABLE       SIZE       USED       FREE  SERIAL           STATE\n"
    "   0  NVMe       GPT    931.51 GB  330.63 GB  600.89 GB  S4EWNX0R100200   SSD\n"
    "   1  SATA       MBR      3.64 TB  900.00 GB    2.76 TB  WD-WCC7K4ARCHIV\n"
    "   2  SATA       MBR    232.89 GB   80.00 GB  152.89 GB  S21NNXAG250250   SSD, not aligned\n"
    "   3  USB        MBR     59.63 GB    3.00 GB   56.63 GB  4C530001230925   USB, removable\n";

const char* const kPartitionsOfDisk3 =
    "DISK  DRIVE  LABEL  FILE SYSTEM        SIZE     USED      FREE  STATE\n"
    "   3  H:     STICK  FAT32          59.00 GB  3.00 GB  56.00 GB  removable\n"
    "   3                (unallocated)    640 MB             640 MB\n";

QByteArray json(SandboxHost& host, const char* line)
{
    const Ran ran = zorcallWith({host.variable()}, words(line));
    EXPECT_EQ(ran.code, 0) << ran;
    EXPECT_TRUE(ran.out.startsWith("[{\"") || ran.out.startsWith("{\"")) << ran;
    return ran.out;
}

TEST(ZorcallTerminal, Lists_AreTablesAtATerminalAndJsonInAPipe)
{
    SandboxHost host;
    const QStringList plain{host.variable(), QStringLiteral("NO_COLOR=1")};
    EXPECT_EQ(zorcallAtTerminal(plain, words("ListAllDisks")), (Ran{0, kDisks, ""}));
    EXPECT_EQ(host.call("--table ListAllDisks"), (Ran{0, kDisks, ""}));
    EXPECT_EQ(zorcallAtTerminal(plain, words("--json ListAllDisks")),
              (Ran{0, json(host, "ListAllDisks"), ""}));
    EXPECT_EQ(json(host, "--json ListAllDisks"), json(host, "ListAllDisks"));
    EXPECT_EQ(host.call("--table ListPartitionsOnDisk diskIndex=3"), (Ran{0, kPartitionsOfDisk3, ""}));
    EXPECT_EQ(host.call("--table --no-headers ListPartitionsOnDisk diskIndex=3"),
              (Ran{0,
                   "3  H:  STICK  FAT32          59.00 GB  3.00 GB  56.00 GB  removable\n"
                   "3             (unallocated)    640 MB             640 MB\n",
                   ""}));
}

TEST(ZorcallTerminal, OneRecord_HasOneLinePerFieldWithItsSizeInWords)
{
    SandboxHost host;
    const Ran ran = host.call("--table GetPartitionInfo driveLetter=C");
    EXPECT_EQ(ran.code, 0);
    for (const char* line :
         {"\nrawCapacity               499289948160 (465.00 GB)\n", "\nlabel                     Windows\n",
          "\nisHidden                  false\n", "\nclusterSize               4096\n"})
        EXPECT_TRUE(ran.out.contains(line)) << line << ran;
    EXPECT_FALSE(ran.out.contains("display")) << ran;
}

TEST(ZorcallTerminal, Answers_AreColouredAtATerminalUnlessNoColorOrADumbTerminal)
{
    SandboxHost host;
    const QStringList rejected = words("EjectUsb driveLetter=5");
    EXPECT_EQ(zorcallAtTerminal({host.variable()}, rejected), (Ran{1, "\033[31mTask NotValid\033[0m\n", ""}));
    EXPECT_EQ(zorcallAtTerminal({host.variable()}, words("Init")), (Ran{0, "\033[32mtrue\033[0m\n", ""}));
    const Ran plain{1, "Task NotValid\n", ""};
    EXPECT_EQ(zorcallAtTerminal({host.variable(), QStringLiteral("NO_COLOR=1")}, rejected), plain);
    EXPECT_EQ(zorcallAtTerminal({host.variable(), QStringLiteral("TERM=dumb")}, rejected), plain);
    EXPECT_EQ(zorcallAtTerminal({host.variable(), QStringLiteral("NO_COLOR=")}, rejected).out,
              "\033[31mTask NotValid\033[0m\n");
    EXPECT_EQ(host.call("--table EjectUsb driveLetter=5"), plain);
}

TEST(ZorcallTerminal, GatedCall_NamesTheMethodOfEachAnswer)
{
    SandboxHost host;
    const Ran ran = zorcallWith(
        {host.variable()}, words("--table --gated --patient ChangePartitionLabel driveLetter=H newLabel=X"));
    EXPECT_EQ(
        ran,
        (Ran{0, "PreProcessing: allowed\nChangePartitionLabel: Task Queued\nPostProcessing: true\n", ""}));
}

TEST(ZorcallTerminal, LabelWithAnUmlaut_KeepsTheColumnsAligned)
{
    SandboxHost host;
    const QStringList call{QStringLiteral("--gated"), QStringLiteral("--patient"),
                           QStringLiteral("ChangePartitionLabel"), QStringLiteral("driveLetter=H"),
                           QString::fromUtf8("newLabel=\xC3\x84\xC3\x96")};
    ASSERT_EQ(zorcallWith({host.variable()}, call).code, 0);
    Ran ran;
    EXPECT_TRUE(pumpUntil([&] {
        ran = host.call("--table ListPartitionsOnDisk diskIndex=3");
        return ran.out.contains("   3  H:     \xC3\x84\xC3\x96     FAT32          59.00 GB  3.00 GB");
    })) << ran;
    EXPECT_TRUE(ran.out.contains("   3                (unallocated)    640 MB")) << ran;
}

TEST(ZorcallTerminal, List_IsGroupedAndColouredByClass)
{
    EXPECT_EQ(zorcallAtTerminal({}, words("--list InitializeDiskTo")),
              (Ran{0,
                   "\033[1mdisks: Whole disks: initialise, lay out, wipe, eject\033[0m\n"
                   "  InitializeDiskToGpt  \033[31mdestroys\033[0m  Creates an empty GPT partition table on "
                   "a disk.\n"
                   "  InitializeDiskToMbr  \033[31mdestroys\033[0m  Creates an empty MBR partition table on "
                   "a disk.\n",
                   ""}));
}

} // namespace
