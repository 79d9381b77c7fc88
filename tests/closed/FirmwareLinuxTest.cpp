// The firmware stand-in with a fake /sys.
#include "closed/LLFProc/linux/FirmwareLinux.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(LinuxFirmware, EfiFolder_IsUefi)
{
    const QTemporaryDir root;
    EXPECT_FALSE(startedThroughUefi(firmwareCallsOf(root.path())));
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("sys/firmware/efi")));
    EXPECT_TRUE(startedThroughUefi(firmwareCallsOf(root.path())));
}

TEST(LinuxFirmware, SystemCalls_ReadSysFirmware)
{
    EXPECT_EQ(startedThroughUefi(systemFirmwareCalls()),
              QDir(QStringLiteral("/sys/firmware")).entryList(QDir::Dirs).contains(QStringLiteral("efi")));
}

} // namespace
