// The command line: the effect of each option, and rejected combinations.
#include "agent/Options.h"
#include "agent/Failure.h"
#include "agent/OptionTable.h"
#include "agent/Ports.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

namespace {

using zorcall::Options;

Options parse(const QStringList& arguments)
{
    return zorcall::parseOptions(QStringList{QStringLiteral("zorcall")} + arguments);
}

QStringList split(const char* line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

std::string rejection(const char* line, const QString& nativePort = QStringLiteral("9090"))
{
    try {
        zorcall::addressOf(parse(split(line)), nativePort);
        return "accepted";
    } catch (const zorcall::Failure& failure) {
        EXPECT_EQ(failure.code(), zorcall::Usage);
        return failure.what();
    }
}

zorcall::Address address(const char* line, const QString& nativePort = QStringLiteral("9090"))
{
    return zorcall::addressOf(parse(split(line)), nativePort);
}

TEST(Options, CallWithoutOptions_UsesTheDefaults)
{
    const Options options = parse(split("WipeDisk diskIndex=1 eraseCount=-2"));
    EXPECT_EQ(options.mode, Options::Call);
    EXPECT_EQ(options.words, (std::vector<std::string>{"WipeDisk", "diskIndex=1", "eraseCount=-2"}));
    EXPECT_FALSE(options.gated || options.patient || options.allowMissing || options.table);
    const zorcall::Address where = zorcall::addressOf(options, QStringLiteral("9123"));
    EXPECT_EQ(where.host, "localhost");
    EXPECT_EQ(where.port, 9123);
    EXPECT_EQ(where.limit.count(), 30000);
}

TEST(Options, AddressOptions_AreUsed)
{
    const zorcall::Address where = address("--host 127.0.0.1 --port=1234 --timeout 0.25 Init");
    EXPECT_EQ(where.host, "127.0.0.1");
    EXPECT_EQ(where.port, 1234);
    EXPECT_EQ(where.limit.count(), 250);
}

TEST(Options, Flags_AreSet)
{
    EXPECT_TRUE(parse(split("--gated --patient Init")).gated);
    EXPECT_TRUE(parse(split("--gated --patient Init")).patient);
    EXPECT_TRUE(parse(split("--allow-missing Init")).allowMissing);
    EXPECT_TRUE(parse(split("--script x --table")).table);
    EXPECT_TRUE(parse(split("--json Init")).json);
    EXPECT_TRUE(parse(split("--no-headers Init")).noHeaders);
}

TEST(Options, Modes_AreRecognised)
{
    EXPECT_EQ(parse(split("--script x")).mode, Options::Script);
    EXPECT_EQ(parse(split("--script x")).script, "x");
    EXPECT_EQ(parse(split("--script -")).script, "-");
    EXPECT_EQ(parse(split("--list")).mode, Options::List);
    EXPECT_EQ(parse(split("--list Init")).words, std::vector<std::string>{"Init"});
    EXPECT_EQ(parse(split("--help")).mode, Options::Help);
    EXPECT_EQ(parse(split("-h")).mode, Options::Help);
    EXPECT_EQ(parse(split("--version")).mode, Options::Version);
}

TEST(Options, MissingPort_IsSearchedOnThisComputerOnly)
{
    EXPECT_EQ(address("Init", QString()).port, 0);
    EXPECT_EQ(rejection("--host localhost Init", QString()),
              "missing port: --host requires --port or AGENT_NATIVE_PORT");
}

TEST(Options, SearchedPorts_AreTheRangeOfTheGateway)
{
    EXPECT_EQ(zorcall::portText(zorcall::readPorts({}, {})), "9090 to 9153");
    QFile file(qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + QStringLiteral("/agent/mcp/src/options.js"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("searchFrom: 9090,\n        searchCount: 64,"));
}

TEST(Options, InvalidPort_IsRejectedWithItsSource)
{
    for (const char* port : {"0", "65536", "-1", "x", "90 90", "9090x"})
        EXPECT_EQ(rejection("Init", QString::fromLatin1(port)),
                  "AGENT_NATIVE_PORT is '" + std::string(port) + "', not a valid port (1 to 65535)");
    EXPECT_EQ(rejection("--port 65536 Init"), "--port is '65536', not a valid port (1 to 65535)");
    EXPECT_EQ(rejection("--port 0 Init"), "--port is '0', not a valid port (1 to 65535)");
    EXPECT_EQ(address("--port 65535 Init").port, 65535);
}

TEST(Options, InvalidTimeout_IsRejected)
{
    for (const char* text : {"0", "-1", "x", "nan", "inf", "86401", "0.0001"})
        EXPECT_EQ(rejection((std::string("Init --timeout=") + text).c_str()),
                  "--timeout is '" + std::string(text) + "', not a number of seconds from 0.001 to 86400");
    EXPECT_EQ(address("Init --timeout 86400").limit.count(), 86400000);
}

TEST(Options, Watch_HasAnInterval)
{
    EXPECT_EQ(parse(split("watch")).mode, Options::Watch);
    EXPECT_EQ(zorcall::intervalOf(parse(split("watch"))).count(), 1000);
    EXPECT_EQ(zorcall::intervalOf(parse(split("watch --interval 0.25"))).count(), 250);
    EXPECT_THROW(zorcall::intervalOf(parse(split("watch --interval 0.01"))), zorcall::Failure);
    EXPECT_EQ(rejection("watch ListAllDisks"), "watch accepts no arguments");
    EXPECT_EQ(rejection("watch --gated"), "--gated, --patient and --allow-missing require a method");
    EXPECT_EQ(rejection("--interval 1 ListAllDisks"), "--interval requires watch");
}

TEST(Options, Document_DescribesEveryOption)
{
    QFile file(qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + QStringLiteral("/docs/zorcall.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray document = file.readAll();
    for (const zorcall::OptionRow& row : zorcall::optionTable())
        EXPECT_TRUE(document.contains(QByteArray("\n| `--") + row.name)) << row.name;
}

TEST(Options, UnknownOptionMissingValueOrRepetition_IsRejected)
{
    EXPECT_EQ(rejection("--gate Init"), "Unknown option 'gate'. ('zorcall --help' shows the options)");
    EXPECT_EQ(rejection("Init --port"), "Missing value after '--port'. ('zorcall --help' shows the options)");
    EXPECT_EQ(rejection("Init --port 1 --port 2"), "--port is given twice");
    EXPECT_EQ(rejection("Init --host="), "--host requires a value");
}

TEST(Options, InvalidCombinations_AreRejected)
{
    EXPECT_EQ(rejection(""),
              "missing method: 'zorcall --list' lists the methods, 'zorcall --help' the options");
    EXPECT_EQ(rejection("--script x Init"),
              "--script reads its calls from the file and cannot be combined with a method");
    EXPECT_EQ(rejection("--script x --gated"),
              "with --script, write --gated at the beginning of a line of the script");
    EXPECT_EQ(rejection("--table --json Init"), "--json cannot be combined with --table or --no-headers");
    EXPECT_EQ(rejection("--json --no-headers Init"),
              "--json cannot be combined with --table or --no-headers");
    EXPECT_EQ(rejection("--patient Init"), "--patient requires --gated or --script");
    EXPECT_EQ(rejection("--list Init Init"), "--list and --help accept only one method");
}

TEST(Options, InvalidUtf8_IsRejected)
{
    EXPECT_THROW(parse({QStringLiteral("EjectUsb"), QString::fromUtf8("driveLetter=\xFF")}),
                 zorcall::Failure);
}

} // namespace
