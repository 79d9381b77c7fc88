#include "tests/host/udisks/PrivateDiskService.h"
#include "tests/support/Threads.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtDBus/QDBusMessage>

#include <gtest/gtest.h>

#include <csignal>

namespace {

constexpr int kStartMs = 60000;

} // namespace

PrivateDiskService::PrivateDiskService()
{
    static int count = 0;
    name_ = QStringLiteral("disks%1").arg(++count);
    // The state files of the host.
    qputenv("XDG_STATE_HOME", folder_.path().toLocal8Bit());
    const QString script = qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + "/scripts/lib/with-disk-service";
    process_.start(script, {"--private", "sh", "-c", "echo \"$DBUS_SYSTEM_BUS_ADDRESS\"; cat"});
    while (process_.state() != QProcess::NotRunning && !process_.canReadLine() &&
           process_.waitForReadyRead(kStartMs)) {
    }
    address_ = QString::fromLocal8Bit(process_.readLine()).trimmed();
    if (address_.isEmpty()) {
        process_.waitForFinished();
        error_ = "no disk service: " + QString::fromLocal8Bit(process_.readAllStandardError()).trimmed();
        return;
    }
    if (!QDBusConnection::connectToBus(address_, name_).isConnected())
        error_ = "the private bus does not answer";
}

PrivateDiskService::~PrivateDiskService()
{
    stop();
    QDBusConnection::disconnectFromBus(name_);
}

void PrivateDiskService::stop()
{
    process_.closeWriteChannel();
    process_.waitForFinished(kStartMs);
}

// with-disk-service has a file of the process's number, and one that runs it, next to the bus's socket.
void PrivateDiskService::kill(const QString& name)
{
    const QString folder = QFileInfo(address_.section('=', 1)).path();
    const QString number = outputOf("cat", {folder + '/' + name + ".pid"}).trimmed();
    ASSERT_GT(number.toInt(), 1);
    // udisksd ends itself when its bus disappears.
    ::kill(number.toInt(), SIGKILL);
    EXPECT_TRUE(pumpUntil([&] { return !QFileInfo::exists("/proc/" + number); }, kStartMs));
}

void PrivateDiskService::restart(const QString& name)
{
    const QString folder = QFileInfo(address_.section('=', 1)).path();
    if (name == "bus")
        QFile::remove(folder + "/bus");
    outputOf("setsid", {"--fork", folder + "/run-" + name});
    EXPECT_TRUE(pumpUntil([&] { return QFileInfo::exists(folder + "/bus"); }, kStartMs));
}

void PrivateDiskService::refuse(const QString& interface, const QString& method)
{
    QFile file(QFileInfo(address_.section('=', 1)).path() + "/bus.conf");
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QString text = QString::fromUtf8(file.readAll());
    static const QRegularExpression earlier("<policy context=\"mandatory\">.*</policy>\n");
    text.remove(earlier);
    if (!method.isEmpty())
        text.replace("</busconfig>", QString("<policy context=\"mandatory\"><deny send_interface="
                                             "\"org.freedesktop.UDisks2.%1\" send_member=\"%2\"/></policy>\n"
                                             "</busconfig>")
                                         .arg(interface, method));
    file.resize(0);
    file.seek(0);
    file.write(text.toUtf8());
    file.close();
    const QDBusMessage reload = QDBusMessage::createMethodCall(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReloadConfig");
    const QDBusMessage reply = bus().call(reload);
    EXPECT_EQ(reply.errorMessage(), QString());
}

QString PrivateDiskService::image(const QString& name, qint64 size) const
{
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(file.resize(size));
    return QFileInfo(file.fileName()).canonicalFilePath();
}

QString PrivateDiskService::loopDeviceOf(const QString& image)
{
    return outputOf("losetup", {"--noheadings", "--output", "NAME", "--associated", image}).trimmed();
}

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    EXPECT_EQ(process.exitCode(), 0) << program.toStdString() << ": "
                                     << process.readAllStandardError().toStdString();
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}
