// The service in a child process: the address from the configuration file, the ports in the environment and
// in the log. Each test uses its own application folder.
#include "tests/support/FakeNetstat.h"
#include "tests/support/RawClient.h"
#include "tests/support/ServiceRunner.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace {

class HostProcess
{
public:
    HostProcess()
    {
        // The folder of the copy becomes the application folder.
        QFile::copy(QStringLiteral(SERVICE_HOST), program());
        QFile::setPermissions(program(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    ~HostProcess()
    {
        process_.kill();
        process_.waitForFinished();
    }

    void writeConfig(const QByteArray& text)
    {
        QFile file(folder_.filePath(QStringLiteral("config.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    // Starts the host on an unused port and returns its report.
    QJsonObject start()
    {
        port_ = unusedPort();
        const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port_)));
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(program(), {});
        while (!process_.canReadLine() && process_.waitForReadyRead(40000)) {
        }
        return QJsonDocument::fromJson(process_.readLine()).object();
    }

    int end()
    {
        process_.closeWriteChannel();
        return process_.waitForFinished(30000) && process_.exitStatus() == QProcess::NormalExit
                   ? process_.exitCode()
                   : -1;
    }

    QByteArray log() const
    {
        QFile file(folder_.filePath(QStringLiteral("aibridge.log")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    int port() const { return port_; }

private:
    QString program() const { return folder_.filePath(QStringLiteral("service_host")); }

    QTemporaryDir folder_;
    QProcess process_;
    int port_ = 0;
};

QByteArray resolvedName(const QJsonObject& report)
{
    return QByteArray::fromHex(report.value(QStringLiteral("resolved")).toString().toLatin1());
}

QString number(int value)
{
    return QString::number(value);
}

TEST(ServiceConfig, NoFile_BindsLocalhostAndPublishesBothPorts)
{
    HostProcess host;
    const QJsonObject report = host.start();
    EXPECT_EQ(resolvedName(report), "localhost");
    EXPECT_TRUE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(report.value(QStringLiteral("native")).toString(), number(host.port()));
    EXPECT_EQ(report.value(QStringLiteral("chat")).toString(), number(host.port() + 1));
    EXPECT_EQ(host.log(), "Agent port:" + QByteArray::number(host.port()) + " " +
                              QByteArray::number(host.port() + 1) + "\n");
    EXPECT_EQ(RawClient(host.port()).ask(wire::call("Init", 3)).sequence, 3);
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, AddressInTheFile_IsBound)
{
    HostProcess host;
    host.writeConfig("[main]\naiAddress=127.0.0.1\n");
    const QJsonObject report = host.start();
    EXPECT_EQ(resolvedName(report), "127.0.0.1");
    EXPECT_TRUE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, FileWithoutTheKey_BindsLocalhost)
{
    HostProcess host;
    host.writeConfig("[main]\nseoUrl=http://localhost/\n[other]\naiAddress=192.0.2.1\n");
    EXPECT_EQ(resolvedName(host.start()), "localhost");
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, MalformedFile_BindsLocalhost)
{
    HostProcess host;
    host.writeConfig(QByteArray::fromHex("00ff5b6d61696e0a0a3d3d3d5d5d5b5b0d0d25ffd8fe") +
                     "[ma\n\\x=\\\n%%%;;\n[[[");
    const QJsonObject report = host.start();
    EXPECT_EQ(resolvedName(report), "localhost");
    EXPECT_TRUE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, AddressThatCannotBeBound_EndsTheThreadAndKeepsTheVariables)
{
    HostProcess host;
    // Reserved for documentation, so it is never a local address.
    host.writeConfig("[main]\naiAddress=192.0.2.1\n");
    const QJsonObject report = host.start();
    EXPECT_FALSE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(report.value(QStringLiteral("native")).toString(), number(host.port()));
    EXPECT_EQ(report.value(QStringLiteral("chat")).toString(), number(host.port() + 1));
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, NonAsciiAddress_IsReadAndResolvedAsUtf8)
{
    HostProcess host;
    host.writeConfig("[main]\naiAddress=b\xc3\xbcro.invalid\n");
    const QJsonObject report = host.start();
    EXPECT_EQ(resolvedName(report), "b\xc3\xbcro.invalid");
    EXPECT_FALSE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, ConsecutiveServices_LogOneLineEach)
{
    HostProcess host;
    host.start();
    const int first = host.port();
    EXPECT_EQ(host.end(), 0);
    host.start();
    EXPECT_EQ(host.end(), 0);
    const auto logLine = [](int port) {
        return "Agent port:" + QByteArray::number(port) + " " + QByteArray::number(port + 1) + "\n";
    };
    EXPECT_EQ(host.log(), logLine(first) + logLine(host.port()));
}

} // namespace
