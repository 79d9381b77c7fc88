#include "plugin/AIBridge.h"

#include "closed/Log/LogWriter.h"
#include "plugin/HandOver.h"
#include "recscan/RecScanThread.h"
#include "service/AIFuncallThread.h"
#include "tools/SnapshotLock.h"

#include <QtCore/QDeadlineTimer>
#include <QtQml/QQmlApplicationEngine>

AIBridge::AIBridge() = default;

AIBridge::~AIBridge() = default;

QString AIBridge::name() const
{
    // The meta-object spells it the same with every compiler, which a run-time type name does not.
    return QString::fromLatin1(staticMetaObject.className());
}

void AIBridge::init()
{
    if (isServerRunning())
        return;
    AIFuncallThread* ended = serverThread;
    serverThread = new AIFuncallThread(this);
    // The component has one service and one thread child, however often it is initialised.
    delete ended;
    handover::give();
    serverThread->start(QThread::InheritPriority);
}

bool AIBridge::canLayout() const
{
    return false;
}

void AIBridge::setEngine(QQmlApplicationEngine* engine)
{
    CComponentBase::setEngine(engine);
}

bool AIBridge::isServerRunning()
{
    return serverThread != nullptr && serverThread->isRunning();
}

void AIBridge::beginRecScan()
{
    if (recScanThread == nullptr) {
        CLogWriter::Log("rec scan begin\n");
        recScanThread = new RecScanThread(this);
        recScanThread->setScanEngine(engine());
        {
            const SnapshotReadLock lock(snapshotLock_);
            recScanThread->setScanData(diskList, partitionsByDisk, partitionsByLetter);
        }
        connect(recScanThread, &QThread::finished, this, &AIBridge::onRecScanFinished);
    }
    handover::give();
    recScanThread->start(QThread::InheritPriority);
}

void AIBridge::stopRecScan() {}

void AIBridge::Release()
{
    if (serverThread != nullptr) {
        serverThread->stopServer();
        serverThread->wait(QDeadlineTimer(QDeadlineTimer::Forever));
        handover::take();
    }
    if (recScanThread != nullptr) {
        recScanThread->requestStop();
        recScanThread->wait(QDeadlineTimer(QDeadlineTimer::Forever));
        handover::take();
    }
}
