// The service of a whole process: its address from the configuration file, its ports in the environment and
// in the log. Each test gives it an application folder of its own.
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
        // A copy, since the application's folder is where the program lies.
        QFile::copy(QStringLiteral(SERVICE_HOST), program());
        QFile::setPermissions(program(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    ~HostProcess()
    {
        process_.kill();
        process_.waitForFinished();
    }

    void config(const QByteArray& text)
    {
        QFile file(folder_.filePath(QStringLiteral("config.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    // Starts it on a port of its own and returns its report.
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

QByteArray asked(const QJsonObject& report)
{
    return QByteArray::fromHex(report.value(QStringLiteral("asked")).toString().toLatin1());
}

QString number(int value)
{
    return QString::number(value);
}

TEST(ServiceConfig, NoFile_BindsLocalhostAndPublishesBothPorts)
{
    HostProcess host;
    const QJsonObject report = host.start();
    EXPECT_EQ(asked(report), "localhost");
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
    host.config("[main]\naiAddress=127.0.0.1\n");
    const QJsonObject report = host.start();
    EXPECT_EQ(asked(report), "127.0.0.1");
    EXPECT_TRUE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, FileWithoutTheKey_BindsLocalhost)
{
    HostProcess host;
    host.config("[main]\nseoUrl=http://localhost/\n[other]\naiAddress=192.0.2.1\n");
    EXPECT_EQ(asked(host.start()), "localhost");
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, GarbledFile_BindsLocalhost)
{
    HostProcess host;
    host.config(QByteArray::fromHex("00ff5b6d61696e0a0a3d3d3d5d5d5b5b0d0d25ffd8fe") +
                "[ma\n\\x=\\\n%%%;;\n[[[");
    const QJsonObject report = host.start();
    EXPECT_EQ(asked(report), "localhost");
    EXPECT_TRUE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, AddressThatCannotBeBound_EndsTheThreadAndKeepsTheVariables)
{
    HostProcess host;
    // An address for documentation: no machine has it.
    host.config("[main]\naiAddress=192.0.2.1\n");
    const QJsonObject report = host.start();
    EXPECT_FALSE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(report.value(QStringLiteral("native")).toString(), number(host.port()));
    EXPECT_EQ(report.value(QStringLiteral("chat")).toString(), number(host.port() + 1));
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, AddressOutsideAscii_IsReadAndPassedOnAsUtf8)
{
    HostProcess host;
    host.config("[main]\naiAddress=b\xc3\xbcro.invalid\n");
    const QJsonObject report = host.start();
    EXPECT_EQ(asked(report), "b\xc3\xbcro.invalid");
    EXPECT_FALSE(report.value(QStringLiteral("running")).toBool());
    EXPECT_EQ(host.end(), 0);
}

TEST(ServiceConfig, OneServiceAfterTheOther_WritesOneLogLineEach)
{
    HostProcess host;
    host.start();
    const int first = host.port();
    EXPECT_EQ(host.end(), 0);
    host.start();
    EXPECT_EQ(host.end(), 0);
    const auto text = [](int port) {
        return "Agent port:" + QByteArray::number(port) + " " + QByteArray::number(port + 1) + "\n";
    };
    EXPECT_EQ(host.log(), text(first) + text(host.port()));
}

} // namespace
