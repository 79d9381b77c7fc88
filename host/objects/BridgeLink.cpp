#include "host/objects/BridgeLink.h"

#include "host/machine/Records.h"
#include "plugin/TsanAnnotations.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <utility>

namespace host {

namespace {

const QString kCheckResultType = QStringLiteral("checkResultType");

const QString kAgentFunction = QStringLiteral("fun");

} // namespace

BridgeLink::BridgeLink(HostCore& core, int automaticAnswer, QObject* parent)
    : QObject(parent), core_(core), automaticAnswer_(automaticAnswer)
{
    connect(&core_.backend(), &Backend::machineChanged, this, &BridgeLink::pushInventory);
    connect(&core_.orders(), &Orders::ordered, &timeline_, &Timeline::recordOrder);
    connect(&core_.orders(), &Orders::rejected, &timeline_, &Timeline::recordRejection);
    connect(&core_.gate(), &GateWatch::rejected, &timeline_, &Timeline::recordGateRejection);
    connect(&core_.orders(), &Orders::added, &timeline_, &Timeline::recordTask);
    connect(&core_.orders(), &Orders::ended, &timeline_, &Timeline::endTask);
    connect(&core_.guides(), &Guides::opening, &timeline_, &Timeline::recordGuide);
}

void BridgeLink::attach(QObject* bridge)
{
    bridge_ = bridge;
    serviceThread_ = bridge->findChild<QThread*>();
    connect(bridge, SIGNAL(sigCloneResult(QVariant)), this, SLOT(onCloneResult(QVariant)));
    connect(bridge, SIGNAL(sigConvertResult(QVariant)), this, SLOT(onConvertResult(QVariant)));
    connect(bridge, SIGNAL(sigRecScanResult(QVariant)), this, SLOT(onRecommendation(QVariant)));
    // Direct, because the connection's thread identifies the client.
    connect(bridge, SIGNAL(sigAbout2CallFun(QString)), this, SLOT(takeAnnouncement(QString)),
            Qt::DirectConnection);
    connect(bridge, SIGNAL(sigAfterCallFun(QString, bool)), this, SLOT(recordToolCall(QString, bool)),
            Qt::DirectConnection);
    connect(bridge, SIGNAL(sigAfterCallFun(QString, bool)), this, SLOT(onToolEnded(QString, bool)));
    pushInventory();
}

bool BridgeLink::isServerRunning() const
{
    bool running = false;
    if (!bridge_.isNull())
        QMetaObject::invokeMethod(bridge_.data(), "isServerRunning", Qt::DirectConnection,
                                  Q_RETURN_ARG(bool, running));
    return running;
}

QString BridgeLink::message() const
{
    return recommendation_.value(QStringLiteral("msg")).toString();
}

QStringList BridgeLink::buttons() const
{
    return recommendation_.value(QStringLiteral("buttons")).toStringList();
}

void BridgeLink::scanNow()
{
    if (bridge_.isNull() || core_.status().isClosing() || isScanRunning())
        return;
    recommended_ = false;
    setEmptyScan(false);
    core_.log()->write(QStringLiteral("scan started"));
    QMetaObject::invokeMethod(bridge_.data(), "beginRecScan", Qt::DirectConnection);
    watchScanThread();
}

// No signal reports an empty scan, so the end of the scan's thread marks the end of the scan.
void BridgeLink::watchScanThread()
{
    if (scanThread_.isNull()) {
        const auto threads = bridge_->findChildren<QThread*>();
        for (QThread* thread : threads) {
            if (thread != serviceThread_)
                scanThread_ = thread;
        }
        if (!scanThread_.isNull())
            connect(scanThread_.data(), &QThread::finished, this, &BridgeLink::onScanFinished,
                    Qt::QueuedConnection);
    }
}

void BridgeLink::answer(int button)
{
    if (bridge_.isNull() || recommendation_.isEmpty())
        return;
    QVariantMap reply{{QStringLiteral("result"), button}};
    if (recommendation_.contains(kCheckResultType))
        reply[kCheckResultType] = recommendation_.value(kCheckResultType);
    core_.log()->write(QStringLiteral("recommendation answered with button %1").arg(button));
    // The agent carries out some recommendations. How the host notifies it is not defined, so it is only
    // logged.
    if (button == 0 && recommendation_.contains(kAgentFunction))
        core_.log()->write(
            QStringLiteral("for the agent: %1").arg(recommendation_.value(kAgentFunction).toString()));
    recommendation_.clear();
    Q_EMIT recommendationChanged();
    QMetaObject::invokeMethod(bridge_.data(), "doRecOperation", Qt::DirectConnection,
                              Q_ARG(QVariant, QVariant(reply)));
}

void BridgeLink::onCloneResult(QVariant result)
{
    core_.guides().open(cloneGuide(result.toMap()));
}

void BridgeLink::onConvertResult(QVariant result)
{
    core_.guides().open(convertGuide(core_.backend(), result.toMap()));
}

void BridgeLink::onRecommendation(QVariant record)
{
    recommended_ = true;
    recommendation_ = record.toMap();
    emptyScan_ = false;
    const QJsonDocument json = QJsonDocument::fromVariant(recommendation_);
    HostLog::print(QLatin1String("recommendation ") + QString::fromUtf8(json.toJson(QJsonDocument::Compact)));
    Q_EMIT recommendationChanged();
    if (automaticAnswer_ >= buttons().size())
        Q_EMIT buttonMissing(automaticAnswer_, buttons().size());
    else if (automaticAnswer_ >= 0)
        answer(automaticAnswer_);
}

void BridgeLink::takeAnnouncement(QString toolCalls)
{
    const Text client = core_.clients().clientOfThisThread();
    recordGateCall(toolCalls);
    {
        const std::lock_guard<std::mutex> lock(announcementsMutex_);
        announcements_.push_back({toolCalls, client});
    }
    TsanAnnotations::release();
    QMetaObject::invokeMethod(this, "onToolAnnounced");
}

void BridgeLink::onToolAnnounced()
{
    Announcement announcement;
    {
        const std::lock_guard<std::mutex> lock(announcementsMutex_);
        announcement = std::move(announcements_.front());
        announcements_.pop_front();
    }
    toolAnnounced_ = true;
    timeline_.announce(announcement.toolCalls, announcement.client);
    core_.log()->write(QStringLiteral("agent announces: %1").arg(announcement.toolCalls));
}

void BridgeLink::onToolEnded(QString result, bool queued)
{
    toolAnnounced_ = false;
    timeline_.answer(result, queued);
    core_.log()->write(QStringLiteral("agent was answered: %1").arg(result));
}

void BridgeLink::setEmptyScan(bool empty)
{
    if (emptyScan_ == empty)
        return;
    emptyScan_ = empty;
    Q_EMIT recommendationChanged();
}

void BridgeLink::onScanFinished()
{
    // A recommendation of an earlier scan can still wait for its answer.
    setEmptyScan(!recommended_ && recommendation_.isEmpty());
    core_.log()->write(recommended_ ? QStringLiteral("scan ended")
                                    : QStringLiteral("scan ended without a recommendation"));
    Q_EMIT scanEnded();
}

void BridgeLink::recordGateCall(const QString& toolCalls)
{
    const std::lock_guard<std::mutex> lock(announcedMutex_);
    announced_ = toolCalls;
    core_.transcript().add(QStringLiteral("gateCall"), {{QStringLiteral("toolCalls"), toolCalls}});
}

void BridgeLink::recordToolCall(QString result, bool queued)
{
    const std::lock_guard<std::mutex> lock(announcedMutex_);
    core_.transcript().add(QStringLiteral("toolCall"), {{QStringLiteral("toolCalls"), announced_},
                                                        {QStringLiteral("answer"), result},
                                                        {QStringLiteral("queued"), queued}});
    announced_.clear();
}

void BridgeLink::pushInventory()
{
    if (bridge_.isNull())
        return;
    const auto machine = core_.machine();
    core_.transcript().add(QStringLiteral("inventoryPush"),
                           {{QStringLiteral("disks"), static_cast<int>(machine->disks.size())}});
    QMetaObject::invokeMethod(bridge_.data(), "setDiskInfo", Qt::DirectConnection,
                              Q_ARG(QVariantList, diskRecords(*machine)));
}

} // namespace host
