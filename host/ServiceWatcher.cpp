#include "host/ServiceWatcher.h"

#include "host/ListeningPort.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>

#include <utility>

namespace host {

namespace {

constexpr int kPollMs = 20;
const char* const kNativePort = "AGENT_NATIVE_PORT";
const char* const kChatPort = "AGENT_CHAT_PORT";

int publishedPort()
{
    return qEnvironmentVariableIntValue(kNativePort);
}

} // namespace

ServiceWatcher::ServiceWatcher(QString address, std::function<bool()> isRunning, QObject* parent)
    : QObject(parent), address_(std::move(address)), isRunning_(std::move(isRunning))
{
    timer_.setInterval(kPollMs);
    connect(&timer_, &QTimer::timeout, this, &ServiceWatcher::poll);
}

void ServiceWatcher::clearPorts()
{
    qunsetenv(kNativePort);
    qunsetenv(kChatPort);
}

QString ServiceWatcher::configuredAddress()
{
    QSettings settings(QCoreApplication::applicationDirPath() + QLatin1String("/config.ini"),
                       QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    return settings.value(QStringLiteral("main/aiAddress"), QStringLiteral("localhost")).toString();
}

void ServiceWatcher::start()
{
    timer_.start();
}

QString ServiceWatcher::address() const
{
    return QStringLiteral("%1:%2").arg(address_).arg(publishedPort());
}

void ServiceWatcher::poll()
{
    if (!isRunning_()) {
        timer_.stop();
        Q_EMIT failed();
        return;
    }
    if (socket_.state() == QAbstractSocket::ConnectedState) {
        timer_.stop();
        socket_.abort();
        Q_EMIT ready();
        return;
    }
    const int port = publishedPort();
    if (socket_.state() == QAbstractSocket::UnconnectedState && port > 0 && isListeningHere(port))
        socket_.connectToHost(address_, static_cast<quint16>(port));
}

} // namespace host
