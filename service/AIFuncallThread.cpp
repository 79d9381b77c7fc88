#include "service/AIFuncallThread.h"

#include "closed/Log/LogWriter.h"
#include "plugin/AIBridge.h"
#include "plugin/HandOver.h"
#include "service/PortSearch.h"
#include "service/ToolServer.h"
#include "service/ZorHandle.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QSettings>

#include <thrift/server/TThreadedServer.h>

namespace thrift = apache::thrift;

AIFuncallThread::AIFuncallThread(AIBridge* theOwner) : QThread(theOwner), owner(theOwner) {}

AIFuncallThread::~AIFuncallThread()
{
    handover::take();
    // After an exception from serve, connection threads may still be using the server and what it holds: it
    // is left to the end of the process. After an ordinary end, or where no client ever came, nobody is.
    thrift::server::TThreadedServer* ended = server.load();
    if (ended != nullptr && (served_ || ended->getConcurrentClientCountHWM() == 0))
        delete ended;
}

void AIFuncallThread::run()
{
    handover::take();
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
    handover::give();
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

std::shared_ptr<CZorHandle> AIFuncallThread::toolHandler() const
{
    return std::atomic_load(&handler);
}

QString AIFuncallThread::configuredAddress()
{
    QSettings settings(QCoreApplication::applicationDirPath() + QLatin1String("/config.ini"),
                       QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    return settings.value(QStringLiteral("main/aiAddress"), QStringLiteral("localhost")).toString();
}

void AIFuncallThread::buildServer(const QString& address, int port)
{
    const auto newHandler = std::make_shared<CZorHandle>();
    newHandler->setBridge(owner);
    std::atomic_store(&handler, newHandler);
    server.store(makeServer(newHandler, address.toStdString(), port).release());
}

std::unique_ptr<thrift::server::TThreadedServer>
AIFuncallThread::makeServer(const std::shared_ptr<CZorHandle>& tools, const std::string& address, int port)
{
    return makeToolServer(tools, address, port);
}
