// The command line of the sandbox host.
#include "host/Options.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using host::readOptions;

TEST(Options, EmptyCommandLine_GivesTheDefaults)
{
    const host::Options options = readOptions({});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.machine, "desktop");
    EXPECT_FALSE(options.headless);
    EXPECT_FALSE(options.scan);
    EXPECT_EQ(options.answer, -1);
    EXPECT_FALSE(options.win11.has_value());
}

TEST(Options, Images_AreReadInOrder)
{
    const host::Options options = readOptions({"--image", "a.img", "--image", "b.img"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.images, QStringList({"a.img", "b.img"}));
}

TEST(Options, Devices_AreReadInOrderAndAllowImages)
{
    const host::Options options =
        readOptions({"--device", "/dev/x", "--image", "a.img", "--device", "/dev/y", "--unattended"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.devices, QStringList({"/dev/x", "/dev/y"}));
    EXPECT_EQ(options.images, QStringList("a.img"));
    EXPECT_TRUE(options.unattended);
    EXPECT_TRUE(options.hasRealDisks());
    EXPECT_FALSE(readOptions({}).hasRealDisks());
    EXPECT_FALSE(readOptions({"--device", "/dev/x"}).unattended);
    EXPECT_EQ(readOptions({"--device", ""}).error, "option --device needs a device file");
}

TEST(Options, UnattendedWithoutADevice_IsAnError)
{
    EXPECT_EQ(readOptions({"--unattended"}).error, "option --unattended needs --device");
    EXPECT_EQ(readOptions({"--unattended", "--image", "a.img"}).error, "option --unattended needs --device");
}

TEST(Options, SimulationAndRealDisks_ExcludeEachOther)
{
    EXPECT_EQ(readOptions({"--image", "a.img", "--machine", "laptop"}).error,
              "options --machine and --image exclude each other");
    EXPECT_EQ(readOptions({"--device", "/dev/x", "--machine", "laptop"}).error,
              "options --machine and --device exclude each other");
    EXPECT_EQ(readOptions({"--device", "/dev/x", "--speed", "2"}).error,
              "options --speed and --device exclude each other");
    EXPECT_EQ(readOptions({"--image", "a.img", "--fail", "FormatPartition after 40%"}).error,
              "options --fail and --image exclude each other");
}

TEST(Options, WindowAndItsAbsence_ExcludeEachOther)
{
    EXPECT_TRUE(readOptions({"--window"}).window);
    EXPECT_EQ(readOptions({"--window", "--headless"}).error,
              "options --window and --headless exclude each other");
    EXPECT_EQ(readOptions({"--screenshot", "w.png", "--window"}).error,
              "options --window and --screenshot exclude each other");
}

TEST(Options, CheckHostAndWork_ExcludeEachOther)
{
    for (const char* option : {"agent", "save", "screenshot", "transcript"})
        EXPECT_EQ(readOptions({"--check-host", QString("--%1").arg(option), "x"}).error,
                  QString("options --check-host and --%1 exclude each other").arg(option));
    for (const char* option : {"scan", "window"})
        EXPECT_EQ(readOptions({"--check-host", QString("--%1").arg(option)}).error,
                  QString("options --check-host and --%1 exclude each other").arg(option));
}

TEST(Options, AnswerWithoutAScan_IsAnError)
{
    EXPECT_EQ(readOptions({"--answer", "1"}).error, "option --answer needs --scan");
    EXPECT_EQ(readOptions({"--answer", "1", "--scan"}).error, "");
}

TEST(Options, FailureOfAnUnknownTask_ListsTheTasks)
{
    const QString error = readOptions({"--fail", "FormatDisk after 40%"}).error;
    EXPECT_TRUE(error.startsWith("option --fail: FormatDisk is not a task; the tasks are "))
        << error.toStdString();
    for (const char* task : {" FormatPartition,", " AllocateSpace,", " CloneDisk,", " CheckFileSystem"})
        EXPECT_TRUE(error.contains(task)) << task << error.toStdString();
    // These two take effect at once, so they cannot fail.
    EXPECT_FALSE(error.contains("PreOs")) << error.toStdString();
    EXPECT_TRUE(
        readOptions({"--fail", "FormatDisk"}).error.startsWith("option --fail needs a task and a share"));
}

TEST(Options, OutputOntoADisk_IsAnError)
{
    const QTemporaryDir folder;
    const QString image = folder.filePath("a.img");
    const QString samePath = folder.path() + "/./a.img";
    QFile file(image);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    for (const char* option : {"save", "transcript", "screenshot"}) {
        EXPECT_EQ(readOptions({"--image", image, QString("--%1").arg(option), samePath}).error,
                  QString("option --%1 names a disk of the host: %2").arg(option, image));
        EXPECT_EQ(readOptions({"--image", image, QString("--%1").arg(option), folder.filePath("new")}).error,
                  "");
    }
}

TEST(Options, All_AreRead)
{
    const host::Options options =
        readOptions({"--machine", "desktop", "--headless", "--agent", "run me --now", "--exit-with-agent",
                     "--scan", "--answer", "1", "--win11", "on", "--verbose"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.machine, "desktop");
    EXPECT_TRUE(options.headless);
    EXPECT_EQ(options.agent, "run me --now");
    EXPECT_TRUE(options.exitWithAgent);
    EXPECT_TRUE(options.scan);
    EXPECT_EQ(options.answer, 1);
    EXPECT_EQ(options.win11, std::optional<bool>(true));
    EXPECT_TRUE(options.verbose);
}

TEST(Options, WindowOptions_AreRead)
{
    const host::Options options =
        readOptions({"--theme", "dark", "--screenshot", "window.png", "--click", "20"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.theme, host::ThemeMode::Dark);
    EXPECT_EQ(options.screenshot, "window.png");
    EXPECT_EQ(options.click, std::optional<int>(20));
    EXPECT_TRUE(readOptions({"--check-host"}).checkHost);
    EXPECT_EQ(readOptions({"--theme=light"}).theme, host::ThemeMode::Light);
    EXPECT_EQ(readOptions({"--theme=system"}).theme, host::ThemeMode::System);
    EXPECT_FALSE(readOptions({}).click.has_value());
}

TEST(Options, Size_IsFrom640x480To16000x16000)
{
    EXPECT_FALSE(readOptions({}).size.has_value());
    EXPECT_EQ(readOptions({"--size", "640x480"}).size, std::optional<QSize>(QSize(640, 480)));
    EXPECT_EQ(readOptions({"--size", "16000x16000"}).error, "");
    for (const char* value :
         {"", "640", "639x480", "640x479", "640X480", "640x480x2", "-640x480", "16001x480", " 640x480"})
        EXPECT_EQ(readOptions({"--size", value}).error,
                  "option --size needs a width and a height from 640x480 to 16000x16000")
            << value;
    EXPECT_EQ(readOptions({"--size", "640x480", "--check-host"}).error,
              "options --size and --check-host exclude each other");
}

TEST(Options, Language_DefaultsToEnglish)
{
    EXPECT_EQ(readOptions({}).language, "en");
    EXPECT_EQ(readOptions({"--language", "de"}).language, "de");
    EXPECT_EQ(readOptions({"--language", "en"}).language, "en");
    EXPECT_EQ(readOptions({"--language", "de"}).error, "");
}

TEST(Options, UnknownLanguage_IsAnErrorThatListsTheLanguages)
{
    for (const char* language : {"fr", "DE", "de_DE", ""})
        EXPECT_EQ(readOptions({"--language", language}).error, "option --language needs one of: en, de")
            << language;
    EXPECT_EQ(readOptions({"--language"}).error, "Missing value after '--language'.");
}

TEST(Options, ValueThatBeginsWithDashes_IsReadAsAValue)
{
    EXPECT_EQ(readOptions({"--agent", "--scan"}).agent, "--scan");
    EXPECT_FALSE(readOptions({"--agent", "--scan"}).scan);
}

TEST(Options, RepeatedOption_TakesTheLastValue)
{
    EXPECT_EQ(readOptions({"--machine", "server", "--machine", "desktop"}).machine, "desktop");
}

TEST(Options, ValueAfterAnEqualsSign_IsTheSame)
{
    EXPECT_EQ(readOptions({"--machine=server"}).machine, "server");
    EXPECT_EQ(readOptions({"--win11=off"}).win11, std::optional<bool>(false));
}

TEST(Options, TaskAndRecordOptions_AreRead)
{
    const host::Options options = readOptions({"--speed", "20", "--fail", "FormatPartition after 40%",
                                               "--fail=MergePartitions after 5%", "--start-guides",
                                               "--transcript", "t.jsonl", "--save", "after.json"});
    EXPECT_EQ(options.error, "");
    EXPECT_DOUBLE_EQ(options.pace.factor, 20);
    EXPECT_FALSE(options.pace.instant);
    ASSERT_EQ(options.failures.size(), 2u);
    EXPECT_EQ(options.failures[1].function, 20);
    EXPECT_TRUE(options.startGuides);
    EXPECT_EQ(options.transcript, "t.jsonl");
    EXPECT_EQ(options.save, "after.json");
    EXPECT_TRUE(readOptions({"--speed", "instant"}).pace.instant);
    EXPECT_DOUBLE_EQ(readOptions({}).pace.factor, 1);
}

TEST(Options, InvalidTaskAndRecordOptions_AreNamed)
{
    EXPECT_TRUE(readOptions({"--speed", "0"}).error.contains("--speed"));
    EXPECT_TRUE(readOptions({"--speed"}).error.contains("--speed"));
    EXPECT_TRUE(readOptions({"--fail", "Format after 40%"}).error.contains("--fail"));
    EXPECT_TRUE(readOptions({"--fail"}).error.contains("--fail"));
    EXPECT_TRUE(readOptions({"--transcript"}).error.contains("--transcript"));
    EXPECT_TRUE(readOptions({"--save", ""}).error.contains("--save"));
}

TEST(Options, InvalidOptions_AreNamed)
{
    EXPECT_NE(readOptions({"--nonsense"}).error, "");
    EXPECT_TRUE(readOptions({"--nonsense"}).error.contains("nonsense"));
    EXPECT_TRUE(readOptions({"desktop"}).error.contains("desktop"));
    EXPECT_NE(readOptions({"-x"}).error, "");
    EXPECT_NE(readOptions({"--headless=yes"}).error, "");
    EXPECT_NE(readOptions({"--theme", "grey", "--theme", "dark"}).error, "");
    EXPECT_NE(readOptions({"--machine"}).error, "");
    EXPECT_NE(readOptions({"--answer", "first"}).error, "");
    EXPECT_NE(readOptions({"--answer", "-1"}).error, "");
    EXPECT_NE(readOptions({"--win11", "maybe"}).error, "");
    EXPECT_NE(readOptions({"--exit-with-agent"}).error, "");
    EXPECT_NE(readOptions({"--theme", "grey"}).error, "");
    EXPECT_NE(readOptions({"--click", "soon"}).error, "");
    EXPECT_NE(readOptions({"--click", "-5"}).error, "");
    EXPECT_NE(readOptions({"--screenshot"}).error, "");
}

TEST(Options, HelpAndVersion_AreRead)
{
    EXPECT_TRUE(readOptions({"-h"}).help);
    EXPECT_TRUE(readOptions({"--help"}).help);
    EXPECT_TRUE(readOptions({"--version"}).version);
    EXPECT_FALSE(readOptions({"--version"}).help);
    EXPECT_FALSE(readOptions({"-h"}).version);
}

TEST(Options, Help_NamesEveryOption)
{
    const QString help = host::helpText();
    for (const char* option : {"--machine",      "--headless",   "--agent",  "--exit-with-agent",
                               "--scan",         "--answer",     "--win11",  "--theme",
                               "--language",     "--screenshot", "--click",  "--check-host",
                               "--verbose",      "--help",       "--speed",  "--fail",
                               "--start-guides", "--transcript", "--save",   "--image",
                               "--device",       "--unattended", "--version"})
        EXPECT_TRUE(help.contains(option)) << option;
}

TEST(Options, MachineFile_IsThePathOrTheShippedMachineOfThatName)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("mine.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_EQ(host::machineFile(file.fileName(), "/nowhere"), file.fileName());
    EXPECT_EQ(host::machineFile("mine", folder.path()), file.fileName());
    EXPECT_EQ(host::machineFile("yours", folder.path()), "");
    EXPECT_EQ(host::machineFile("../" + folder.path() + "/mine", folder.path()), "");
    EXPECT_EQ(host::machineFile("", folder.path()), "");
    // A shell passes <(command) as such a file. Windows has none.
    const QString device = "/dev/null";
    EXPECT_EQ(host::machineFile(device, folder.path()), QFileInfo::exists(device) ? device : "");
}

} // namespace
