#include "host/ServiceWatcher.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>

#ifndef Q_OS_WIN
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <utility>

namespace host {

namespace {

constexpr int kPollMs = 20;
const char* const kNativePort = "AGENT_NATIVE_PORT";
const char* const kChatPort = "AGENT_CHAT_PORT";

#ifndef Q_OS_WIN

int localPort(int descriptor)
{
    sockaddr_storage address = {};
    socklen_t length = sizeof address;
    if (getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return -1;
    if (address.ss_family == AF_INET)
        return ntohs(reinterpret_cast<const sockaddr_in*>(&address)->sin_port);
    if (address.ss_family == AF_INET6)
        return ntohs(reinterpret_cast<const sockaddr_in6*>(&address)->sin6_port);
    return -1;
}

// Another program may have taken the port between the service's search and its bind, and would answer a
// connection just as well. So one of this process's own sockets must listen there.
bool listensHere(int port)
{
    constexpr int kDescriptors = 1024;
    for (int descriptor = 0; descriptor < kDescriptors; ++descriptor) {
        int listening = 0;
        socklen_t length = sizeof listening;
        if (getsockopt(descriptor, SOL_SOCKET, SO_ACCEPTCONN, &listening, &length) == 0 && listening != 0 &&
            localPort(descriptor) == port)
            return true;
    }
    return false;
}

#else

bool listensHere(int port)
{
    return port > 0;
}

#endif

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

QString ServiceWatcher::place() const
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
    if (socket_.state() == QAbstractSocket::UnconnectedState && port > 0 && listensHere(port))
        socket_.connectToHost(address_, static_cast<quint16>(port));
}

} // namespace host
