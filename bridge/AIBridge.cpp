#include "bridge/AIBridge.h"

#include "closed/Log/LogWriter.h"
#include "plugin/TsanAnnotations.h"
#include "recscan/RecScanThread.h"
#include "service/AIFuncallThread.h"
#include "tools/ZorHandle.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QTimer>
#include <QtQml/QQmlApplicationEngine>

namespace {

constexpr int kAnswerDelayMs = 100;

} // namespace

// Emits the component's signals on behalf of the tools.
class AIBridge::Events : public ToolEvents
{
public:
    explicit Events(AIBridge& bridge) : bridge_(bridge) {}

    void emitCloneResult(const QVariant& result) const override
    {
        TsanAnnotations::release();
        Q_EMIT bridge_.sigCloneResult(result);
    }
    void emitConvertResult(const QVariant& task) const override
    {
        TsanAnnotations::release();
        Q_EMIT bridge_.sigConvertResult(task);
    }
    void emitAboutToCall(const QString& toolCalls) const override
    {
        TsanAnnotations::release();
        Q_EMIT bridge_.sigAbout2CallFun(toolCalls);
    }
    void emitAfterCall(const QString& result, bool queued) const override
    {
        TsanAnnotations::release();
        Q_EMIT bridge_.sigAfterCallFun(result, queued);
    }

private:
    AIBridge& bridge_;
};

AIBridge::AIBridge() : events_(std::make_unique<Events>(*this)), toolBridge_{inventory_, pages_, *events_} {}

AIBridge::~AIBridge() = default;

QString AIBridge::name() const
{
    // The meta-object's class name is the same with every compiler, unlike the run-time type name.
    return QString::fromLatin1(staticMetaObject.className());
}

void AIBridge::init()
{
    if (isServerRunning())
        return;
    AIFuncallThread* previous = serverThread;
    serverThread = new AIFuncallThread(this, [this] {
        const auto tools = std::make_shared<CZorHandle>();
        tools->setBridge(&toolBridge_);
        return tools;
    });
    delete previous;
    TsanAnnotations::release();
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
        recScanThread = new RecScanThread(this, pages_);
        recScanThread->setScanEngine(engine());
        const InventoryRecords records = inventory_.records();
        recScanThread->setScanData(records.diskList, records.partitionsByDisk, records.partitionsByLetter);
        connect(recScanThread, &QThread::finished, this, &AIBridge::onRecScanFinished);
    }
    TsanAnnotations::release();
    recScanThread->start(QThread::InheritPriority);
}

void AIBridge::stopRecScan() {}

void AIBridge::onRecScanFinished()
{
    if (recScanThread != nullptr && recScanThread->hasResult())
        Q_EMIT sigRecScanResult(QVariant(recScanThread->result().toMap()));
}

void AIBridge::doRecOperation(QVariant info)
{
    CLogWriter::Log("doRecOperation callback\n");
    QTimer::singleShot(kAnswerDelayMs, this, [this, info] {
        if (recScanThread != nullptr && serverThread != nullptr)
            recScanThread->handleAnswer(info.toMap(), [this] { return serverThread->toolHandler(); });
    });
}

void AIBridge::Release()
{
    if (serverThread != nullptr) {
        serverThread->stopServer();
        serverThread->wait(QDeadlineTimer(QDeadlineTimer::Forever));
        TsanAnnotations::acquire();
    }
    if (recScanThread != nullptr) {
        recScanThread->requestStop();
        recScanThread->wait(QDeadlineTimer(QDeadlineTimer::Forever));
        TsanAnnotations::acquire();
    }
}
