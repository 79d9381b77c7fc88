#include "tests/host/udisks/PrivateDiskService.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

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
    const QString address = QString::fromLocal8Bit(process_.readLine()).trimmed();
    if (address.isEmpty()) {
        process_.waitForFinished();
        error_ = "no disk service: " + QString::fromLocal8Bit(process_.readAllStandardError()).trimmed();
        return;
    }
    if (!QDBusConnection::connectToBus(address, name_).isConnected())
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
