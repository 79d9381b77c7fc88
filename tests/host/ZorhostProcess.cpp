#include "tests/host/ZorhostProcess.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtNetwork/QTcpServer>

#include <gtest/gtest.h>

#include <csignal>

namespace {

constexpr int kLimitMs = 60000;
constexpr int kPollMs = 50;
constexpr int kTries = 5;

void copyFolder(const QString& from, const QString& to)
{
    QDir().mkpath(to);
    const QFileInfoList entries = QDir(from).entryInfoList(QDir::Files);
    for (const QFileInfo& entry : entries)
        QFile::copy(entry.filePath(), to + "/" + entry.fileName());
}

} // namespace

int freePort()
{
    // Below the system's ephemeral ports, so that no other process gets it by chance; and near the first port
    // of the search, because the search scans the whole listing for each port.
    for (;;) {
        const int port = QRandomGenerator::system()->bounded(10000, 16000);
        QTcpServer server;
        QTcpServer next;
        if (server.listen(QHostAddress::Any, static_cast<quint16>(port)) &&
            next.listen(QHostAddress::Any, static_cast<quint16>(port + 1)))
            return port;
    }
}

ZorhostProcess::ZorhostProcess() : environment_(QProcessEnvironment::systemEnvironment())
{
    const QString source = ZORHOST_FOLDER;
    for (const char* name :
         {"zorhost", "AIBridge.so", "libZorLog.so", "libUIUtility.so", "libLLFProc.so", "components.ini"})
        QFile::copy(source + "/" + name, file(name));
    copyFolder(source + "/machines", file("machines"));
    QDir().mkpath(file("path"));
    environment_.insert("PATH", file("path") + ":" + environment_.value("PATH"));
    environment_.remove("DISPLAY");
    environment_.remove("WAYLAND_DISPLAY");
    environment_.remove("QT_QPA_PLATFORM");
    environment_.insert("AGENT_NATIVE_PORT", "1");
    environment_.insert("XDG_CONFIG_HOME", file("config"));
    setFirstPort(freePort());
}

ZorhostProcess::~ZorhostProcess()
{
    if (process_.state() == QProcess::NotRunning)
        return;
    process_.kill();
    process_.waitForFinished();
}

void ZorhostProcess::write(const QString& name, const QByteArray& content) const
{
    QFile target(file(name));
    ASSERT_TRUE(target.open(QIODevice::WriteOnly));
    target.write(content);
}

void ZorhostProcess::remove(const QString& name) const
{
    ASSERT_TRUE(QFile::remove(file(name)));
}

void ZorhostProcess::setFirstPort(int port)
{
    port_ = port;
    write("path/netstat", QByteArray("#!/bin/sh\nseq -f ':%g ' 9090 ") + QByteArray::number(port - 1) + "\n");
    QFile::setPermissions(file("path/netstat"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void ZorhostProcess::start(const QStringList& arguments)
{
    output_.clear();
    errors_.clear();
    process_.setProcessEnvironment(environment_);
    process_.setWorkingDirectory(folder_.path());
    process_.start(file("zorhost"), arguments);
    ASSERT_TRUE(process_.waitForStarted(kLimitMs));
}

bool ZorhostProcess::startReady(const QStringList& arguments)
{
    for (int attempt = 0; attempt < kTries; ++attempt) {
        start(arguments);
        if (waitForOutput("agent service on "))
            return true;
        if (exitCode() != 1)
            return false;
        setFirstPort(freePort());
    }
    return false;
}

void ZorhostProcess::send(const QByteArray& text)
{
    process_.write(text);
    process_.closeWriteChannel();
}

bool ZorhostProcess::waitForOutput(const QByteArray& text)
{
    return waitUntil([&] { return output().contains(text); });
}

bool ZorhostProcess::waitForFile(const QString& name)
{
    return waitUntil([&] { return QFile::exists(file(name)); });
}

bool ZorhostProcess::waitForContent(const QString& name, const QByteArray& text)
{
    return waitUntil([&] {
        QFile content(file(name));
        return content.open(QIODevice::ReadOnly) && content.readAll().contains(text);
    });
}

bool ZorhostProcess::waitUntil(const std::function<bool()>& condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > kLimitMs || !isRunning())
            return condition();
        process_.waitForReadyRead(kPollMs);
    }
    return true;
}

int ZorhostProcess::exitCode()
{
    if (isRunning() && !process_.waitForFinished(kLimitMs))
        return -1;
    collect();
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

void ZorhostProcess::signal(int number) const
{
    ::kill(static_cast<pid_t>(process_.processId()), number);
}

QByteArray ZorhostProcess::output()
{
    collect();
    return output_;
}

QByteArray ZorhostProcess::errors()
{
    collect();
    return errors_;
}

void ZorhostProcess::collect()
{
    output_ += process_.readAllStandardOutput();
    errors_ += process_.readAllStandardError();
}
