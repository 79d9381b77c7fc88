// The search for running sandbox hosts.
#include "tests/agent/SandboxHost.h"

#include <csignal>

namespace {

QString searched(const QList<QByteArray>& ports)
{
    return QStringLiteral("ZORCALL_PORTS=") + QString::fromLatin1(ports.join(','));
}

TEST(ZorcallHostFinder, SecondHost_IsRefusedUntilItHasEnded)
{
    SandboxHost first;
    SandboxHost second;
    const QStringList both{searched({first.port(), second.port()})};
    EXPECT_EQ(zorcallWith(both, words("EjectUsb driveLetter=H")),
              (Ran{2, "",
                   "zorcall: several services answer, on the ports " + first.port() + ", " + second.port() +
                       "; select one with --port\n"}));
    second.process().signal(SIGTERM);
    ASSERT_EQ(second.process().exitCode(), 0);
    const Ran ran = zorcallWith(both, words("GetPartitionInfo driveLetter=H"));
    EXPECT_EQ(ran.code, 0) << ran;
    EXPECT_TRUE(ran.out.contains("\"label\": \"STICK\"")) << ran;
}

} // namespace
