#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/Timeline.h"

#include <QtCore/QPointer>
#include <QtCore/QThread>

#include <mutex>

namespace host {

/// The host's side of the component `aibridge`, which it knows by names only: pushes the inventory, listens
/// to the signals, starts scans and answers recommendations. Application thread.
class BridgeLink : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString message READ message NOTIFY recommendationChanged)
    Q_PROPERTY(QStringList buttons READ buttons NOTIFY recommendationChanged)

public:
    /// @p automaticAnswer: the button that answers each recommendation; -1 leaves it to the user.
    BridgeLink(HostCore& core, int automaticAnswer, QObject* parent = nullptr);

    /// Connects to the component and pushes the first inventory. From then on each change of the machine is
    /// pushed.
    void attach(QObject* bridge);

    /// Whether the service's thread lives.
    bool isServerRunning() const;
    /// True between the announcement of a tool call and its end.
    bool isToolAnnounced() const { return toolAnnounced_; }
    bool isScanRunning() const { return !scanThread_.isNull() && scanThread_->isRunning(); }

    /// What the agent has done.
    Timeline& timeline() { return timeline_; }
    QString message() const;
    QStringList buttons() const;

    /// Starts a scan; without effect while one runs, and while the host closes.
    Q_INVOKABLE void scanNow();
    /// The user pressed a button of the message card.
    Q_INVOKABLE void answer(int button);

Q_SIGNALS:
    void recommendationChanged();
    /// The recommendation, if there is one, was told before.
    void scanEnded();

private Q_SLOTS:
    void onCloneResult(QVariant result);
    void onConvertResult(QVariant result);
    void onRecommendation(QVariant record);
    void onToolAnnounced(QString toolCalls);
    void onToolEnded(QString result, bool queued);
    void onScanFinished();
    // On the thread that the component tells it from.
    void recordGateCall(QString toolCalls);
    void recordToolCall(QString result, bool queued);

private:
    void pushInventory();
    void watchScanThread();

    HostCore& core_;
    int automaticAnswer_;
    QPointer<QObject> bridge_;
    QPointer<QThread> serviceThread_;
    QPointer<QThread> scanThread_;
    Timeline timeline_;
    QVariantMap recommendation_;
    bool recommended_ = false;
    bool toolAnnounced_ = false;
    std::mutex announcedMutex_;
    QString announced_; ///< what the agent announced last, for the transcript
};

} // namespace host
