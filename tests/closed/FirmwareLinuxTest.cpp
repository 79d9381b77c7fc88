// The firmware stand-in over a kernel folder of the test's own.
#include "closed/LLFProc/linux/FirmwareLinux.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(LinuxFirmware, KernelFolderOfTheFirmware_IsUefi)
{
    const QTemporaryDir root;
    EXPECT_FALSE(startedThroughUefi(firmwareCallsOf(root.path())));
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("sys/firmware/efi")));
    EXPECT_TRUE(startedThroughUefi(firmwareCallsOf(root.path())));
}

TEST(LinuxFirmware, System_ReadsItsOwnKernelFolder)
{
    EXPECT_EQ(startedThroughUefi(systemFirmwareCalls()),
              QDir(QStringLiteral("/sys/firmware")).entryList(QDir::Dirs).contains(QStringLiteral("efi")));
}

} // namespace
