// The Linux platform, with fake files of /proc and /sys.
#include "platform/linux/PlatformLinux.h"
#include "tests/support/ScratchApplication.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

namespace {

const QString kMachineSpace = QStringLiteral("ROOT\\CIMV2");
const QString kTpmSpace = QStringLiteral("ROOT\\CIMV2\\Security\\MicrosoftTPM");

class PlatformLinuxMachine : public testing::Test
{
protected:
    void write(const QString& path, const QByteArray& content)
    {
        ScratchApplication::write(machine_.path() + path, content);
    }
    void folder(const QString& path) { QDir().mkpath(machine_.path() + path); }
    std::vector<QVariantMap> query(const QString& space, const char* wql)
    {
        return platform().wmiQuery(space, QString::fromLatin1(wql),
                                   {"Name", "AddressWidth", "NumberOfCores", "NumberOfLogicalProcessors",
                                    "MaxClockSpeed", "NumberOfProcessors", "OSArchitecture",
                                    "IsActivated_InitialValue", "IsEnabled_InitialValue", "SpecVersion"});
    }
    PlatformLinux platform() { return PlatformLinux(machine_.path()); }

private:
    QTemporaryDir machine_;
};

QByteArray cpuBlock(int number, int socket, const char* flags = "fpu lm sse2")
{
    return "processor\t: " + QByteArray::number(number) +
           "\nmodel name\t: Intel(R) Xeon(R) Gold 6248 CPU @ 2.50GHz\n" +
           "cpu MHz\t\t: 2499.998\nphysical id\t: " + QByteArray::number(socket) +
           "\ncpu cores\t: 2\nflags\t\t: " + flags + "\n\n";
}

TEST_F(PlatformLinuxMachine, SystemDirectory_IsOnDriveC)
{
    EXPECT_EQ(platform().systemDirectory(), "C:\\Windows\\system32");
}

TEST_F(PlatformLinuxMachine, RegistryString_IsUnknown)
{
    const auto text = platform().registryString(
        QStringLiteral("SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment"),
        QStringLiteral("PROCESSOR_ARCHITECTURE"));
    EXPECT_FALSE(text.has_value());
}

TEST_F(PlatformLinuxMachine, FirmwareType_WithEfiFolder_IsUefi)
{
    folder(QStringLiteral("/sys/firmware/efi"));
    EXPECT_EQ(platform().firmwareType(), 2u);
    EXPECT_NE(platform().firmwareVariableError(), 1u);
}

TEST_F(PlatformLinuxMachine, FirmwareType_WithoutEfiFolder_IsBios)
{
    EXPECT_EQ(platform().firmwareType(), 1u);
    EXPECT_EQ(platform().firmwareVariableError(), 1u);
}

TEST_F(PlatformLinuxMachine, WindowsVersion_IsHighEnoughForFirmwareType)
{
    EXPECT_GE(platform().windowsVersion().major, 10);
}

TEST_F(PlatformLinuxMachine, InstalledMemory_WithMemoryBlocks_CountsTheBlocks)
{
    write(QStringLiteral("/sys/devices/system/memory/block_size_bytes"), "8000000\n");
    for (int i = 0; i < 32; ++i)
        folder(QStringLiteral("/sys/devices/system/memory/memory%1").arg(i));
    write(QStringLiteral("/proc/meminfo"), "MemTotal: 4000000 kB\n");
    EXPECT_EQ(platform().installedMemoryKib(), 4194304u);
}

TEST_F(PlatformLinuxMachine, InstalledMemory_WithoutBlocks_IsTheTotalOfTheKernel)
{
    write(QStringLiteral("/proc/meminfo"), "MemTotal:       16302456 kB\nMemFree:  1 kB\n");
    EXPECT_EQ(platform().installedMemoryKib(), 16302456u);
}

TEST_F(PlatformLinuxMachine, InstalledMemory_WithoutFiles_IsUnknown)
{
    EXPECT_FALSE(platform().installedMemoryKib().has_value());
}

TEST_F(PlatformLinuxMachine, InstalledMemory_WithInvalidContent_IsUnknown)
{
    write(QStringLiteral("/sys/devices/system/memory/block_size_bytes"), "\xff\x00zz");
    write(QStringLiteral("/proc/meminfo"), "MemTotal: many kB\n");
    EXPECT_FALSE(platform().installedMemoryKib().has_value());
}

TEST_F(PlatformLinuxMachine, Processor_OneSocket_IsOneRow)
{
    write(QStringLiteral("/proc/cpuinfo"), cpuBlock(0, 0) + cpuBlock(1, 0));
    const auto rows = query(kMachineSpace, "SELECT * FROM Win32_Processor");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].value("Name").toString(), QStringLiteral("Intel(R) Xeon(R) Gold 6248 CPU @ 2.50GHz"));
    EXPECT_EQ(rows[0].value("AddressWidth").toInt(), 64);
    EXPECT_EQ(rows[0].value("NumberOfCores").toInt(), 2);
    EXPECT_EQ(rows[0].value("NumberOfLogicalProcessors").toInt(), 2);
    EXPECT_EQ(rows[0].value("MaxClockSpeed").toInt(), 2499);
}

TEST_F(PlatformLinuxMachine, Processor_TwoSockets_AreTwoRows)
{
    write(QStringLiteral("/proc/cpuinfo"), cpuBlock(0, 0) + cpuBlock(1, 1) + cpuBlock(2, 0) + cpuBlock(3, 1));
    EXPECT_EQ(query(kMachineSpace, "SELECT * FROM Win32_Processor").size(), 2u);
    const auto computer = query(kMachineSpace, "SELECT * FROM Win32_ComputerSystem");
    ASSERT_EQ(computer.size(), 1u);
    EXPECT_EQ(computer[0].value("NumberOfProcessors").toInt(), 2);
}

TEST_F(PlatformLinuxMachine, Processor_WithoutLongMode_Has32Bits)
{
    write(QStringLiteral("/proc/cpuinfo"), cpuBlock(0, 0, "fpu sse2"));
    EXPECT_EQ(query(kMachineSpace, "SELECT * FROM Win32_Processor").at(0).value("AddressWidth").toInt(), 32);
}

TEST_F(PlatformLinuxMachine, Processor_WithoutValidFile_ReturnsZeroRows)
{
    EXPECT_TRUE(query(kMachineSpace, "SELECT * FROM Win32_Processor").empty());
    write(QStringLiteral("/proc/cpuinfo"), QByteArray("\x00:\n\n:::\n", 8));
    EXPECT_TRUE(query(kMachineSpace, "SELECT * FROM Win32_Processor").empty());
}

TEST_F(PlatformLinuxMachine, OperatingSystem_ReportsItsWidth)
{
    const auto rows = query(kMachineSpace, "SELECT * FROM Win32_OperatingSystem");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].value("OSArchitecture").toString().contains("64"), sizeof(void*) == 8);
}

TEST_F(PlatformLinuxMachine, Tpm_OfVersion2_IsReportedAs20)
{
    write(QStringLiteral("/sys/class/tpm/tpm0/tpm_version_major"), "2\n");
    const auto rows = query(kTpmSpace, "SELECT * FROM Win32_TPM");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_TRUE(rows[0].value("IsActivated_InitialValue").toBool());
    EXPECT_TRUE(rows[0].value("IsEnabled_InitialValue").toBool());
    EXPECT_EQ(rows[0].value("SpecVersion").toString(), QStringLiteral("2.0"));
}

TEST_F(PlatformLinuxMachine, Tpm_OfVersion1_IsReportedAs12)
{
    write(QStringLiteral("/sys/class/tpm/tpm0/tpm_version_major"), "1\n");
    EXPECT_EQ(query(kTpmSpace, "SELECT * FROM Win32_TPM").at(0).value("SpecVersion").toString(),
              QStringLiteral("1.2"));
}

TEST_F(PlatformLinuxMachine, Tpm_Missing_ReturnsZeroRows)
{
    EXPECT_TRUE(query(kTpmSpace, "SELECT * FROM Win32_TPM").empty());
}

TEST_F(PlatformLinuxMachine, WmiQuery_OfAnUnknownClass_ReturnsZeroRows)
{
    write(QStringLiteral("/proc/cpuinfo"), cpuBlock(0, 0));
    EXPECT_TRUE(query(kMachineSpace, "SELECT * FROM Win32_Nothing").empty());
    EXPECT_TRUE(query(kTpmSpace, "SELECT * FROM Win32_Processor").empty());
}

TEST_F(PlatformLinuxMachine, WmiQuery_ReturnsOnlyTheNamedProperties)
{
    write(QStringLiteral("/proc/cpuinfo"), cpuBlock(0, 0));
    const auto rows =
        platform().wmiQuery(kMachineSpace, "SELECT * FROM Win32_Processor", {"AddressWidth", "addressWidth"});
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].keys(), QStringList("AddressWidth"));
}

TEST_F(PlatformLinuxMachine, VolumeGeometry_OfTheSystemDrive_IsThatOfTheRunningSystem)
{
    const auto volume = platform().volumeGeometry("C:");
    ASSERT_TRUE(volume.has_value());
    EXPECT_GT(volume->sectorsPerCluster * volume->bytesPerSector * volume->clusters, 0u);
    EXPECT_FALSE(platform().volumeGeometry("D:").has_value());
}

// runOnOtherThread fails the test after 30 seconds, which only a wait for a process that never started
// exceeds.
TEST_F(PlatformLinuxMachine, RunHidden_CommandThatCannotStart_ReturnsWithoutWaitingAndRunsNothing)
{
    const QTemporaryDir dir;
    const QString out = dir.filePath("out");
    ScratchApplication::write(dir.filePath("notExecutable"), "#!/bin/sh\necho ran > \"$1\"\n");
    const QStringList commands = {"there-is-no-such-program " + out,
                                  dir.filePath("notExecutable") + ' ' + out, dir.path() + ' ' + out,
                                  QString(), QStringLiteral("  ")};
    int returned = 0;
    runOnOtherThread([&] {
        for (const QString& command : commands) {
            platform().runHidden(command);
            ++returned;
        }
    });
    EXPECT_EQ(returned, 5);
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(PlatformLinuxMachine, RunHidden_Command_WaitsForItsEnd)
{
    const QTemporaryDir dir;
    ScratchApplication::script(dir.filePath("tool"), "echo \"$2\" > \"$1\"\n");
    platform().runHidden(dir.filePath("tool") + ' ' + dir.filePath("out") + " word");
    EXPECT_EQ(ScratchApplication::read(dir.filePath("out")), "word\n");
}

} // namespace
