#include "service/AIFuncallThread.h"

#include "closed/Log/LogWriter.h"
#include "plugin/TsanAnnotations.h"
#include "service/PortSearch.h"
#include "service/ToolServer.h"

#include "ZORNativePlugin.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QSettings>

#include <thrift/server/TThreadedServer.h>

#include <utility>

namespace thrift = apache::thrift;

namespace {

QString configured(const QString& key, const QString& fallback)
{
    QSettings settings(QCoreApplication::applicationDirPath() + QLatin1String("/config.ini"),
                       QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    return settings.value(key, fallback).toString();
}

} // namespace

AIFuncallThread::AIFuncallThread(QObject* parent, MakeHandler makeHandler)
    : QThread(parent), makeHandler_(std::move(makeHandler))
{
}

AIFuncallThread::~AIFuncallThread()
{
    TsanAnnotations::acquire();
    // After an exception from serve, connection threads can still use the server and its parts, so it is kept
    // until the process ends. After a normal end, or if no client ever connected, it is unused.
    thrift::server::TThreadedServer* ended = server.load();
    if (ended != nullptr && (served_ || ended->getConcurrentClientCountHWM() == 0))
        delete ended;
}

void AIFuncallThread::run()
{
    TsanAnnotations::acquire();
    const QString address = configuredAddress();
    int nativePort = 0;
    int chatPort = 0;
    findFreePorts(&nativePort, &chatPort);
    qputenv("AGENT_NATIVE_PORT", QString::number(nativePort).toUtf8());
    qputenv("AGENT_CHAT_PORT", QString::number(chatPort).toUtf8());
    CLogWriter::Log("Agent port:%d %d\n", nativePort, chatPort);
    buildServer(address, nativePort);
    try {
        serverRunning = true;
        server.load()->serve();
        served_ = true;
    } catch (...) {
        serverRunning = false;
        qDebug("AIFuncallThread::run() exception");
    }
    TsanAnnotations::release();
}

void AIFuncallThread::stopServer()
{
    try {
        thrift::server::TThreadedServer* running = server.load();
        if (running == nullptr)
            return;
        const std::shared_ptr<thrift::transport::TServerTransport> transport = running->getServerTransport();
        if (transport) {
            transport->interrupt();
            transport->close();
        }
        running->stop();
    } catch (...) {
        qDebug("AIFuncallThread::stopServer() exception");
    }
}

void AIFuncallThread::findFreePorts(int* nativePort, int* chatPort)
{
    pickFreePorts(busyPortListing(), nativePort, chatPort);
}

std::shared_ptr<ZORNativePluginIf> AIFuncallThread::toolHandler() const
{
    return std::atomic_load(&handler);
}

QString AIFuncallThread::configuredAddress()
{
    return configured(QStringLiteral("main/aiAddress"), QStringLiteral("localhost"));
}

bool AIFuncallThread::configuredSameUserOnly()
{
    const QString value = configured(QStringLiteral("main/aiSameUserOnly"), QStringLiteral("true"));
    return value.compare(QLatin1String("false"), Qt::CaseInsensitive) != 0 && value != QLatin1String("0");
}

void AIFuncallThread::buildServer(const QString& address, int port)
{
    const std::shared_ptr<ZORNativePluginIf> newHandler = makeHandler_();
    std::atomic_store(&handler, newHandler);
    server.store(makeServer(newHandler, address.toStdString(), port).release());
}

std::unique_ptr<thrift::server::TThreadedServer>
AIFuncallThread::makeServer(const std::shared_ptr<ZORNativePluginIf>& tools, const std::string& address,
                            int port)
{
    if (configuredSameUserOnly())
        return makeToolServer(tools, address, port);
    CLogWriter::Log("Agent clients of every account are admitted\n");
    return makeToolServer(tools, address, port, nullptr);
}
