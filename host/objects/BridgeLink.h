#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/Timeline.h"

#include <QtCore/QPointer>
#include <QtCore/QThread>

#include <deque>
#include <mutex>

namespace host {

/// The host's connection to the component `aibridge`, whose members it calls by name: pushes the inventory,
/// receives the signals, starts scans and answers recommendations. Application thread.
class BridgeLink : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString message READ message NOTIFY recommendationChanged)
    Q_PROPERTY(QStringList buttons READ buttons NOTIFY recommendationChanged)
    Q_PROPERTY(bool emptyScan READ isEmptyScan NOTIFY recommendationChanged)

public:
    /// @p automaticAnswer: button that answers each recommendation; -1: the user answers.
    BridgeLink(HostCore& core, int automaticAnswer, QObject* parent = nullptr);

    /// Connects to the component and pushes the inventory, now and after each change of the machine.
    void attach(QObject* bridge);

    /// Whether the service's thread runs.
    bool isServerRunning() const;
    /// True between the announcement and the end of a tool call.
    bool isToolAnnounced() const { return toolAnnounced_; }
    bool isScanRunning() const { return !scanThread_.isNull() && scanThread_->isRunning(); }

    /// The agent's calls.
    Timeline& timeline() { return timeline_; }
    QString message() const;
    QStringList buttons() const;
    /// The last scan ended without a recommendation, and the user has not closed that message yet.
    bool isEmptyScan() const { return emptyScan_; }
    Q_INVOKABLE void closeEmptyScan() { setEmptyScan(false); }

    /// Starts a scan. No effect while a scan runs or the host closes.
    Q_INVOKABLE void scanNow();
    /// The user pressed a button of the recommendation.
    Q_INVOKABLE void answer(int button);

Q_SIGNALS:
    void recommendationChanged();
    /// Emitted after the recommendation, if any.
    void scanEnded();
    /// The recommendation has @p count buttons and not the one for the automatic answer. It stays open.
    void buttonMissing(int button, int count);

private Q_SLOTS:
    void onCloneResult(QVariant result);
    void onConvertResult(QVariant result);
    void onRecommendation(QVariant record);
    void onToolAnnounced();
    void onToolEnded(QString result, bool queued);
    void onScanFinished();
    // Called on the thread of the signal.
    void takeAnnouncement(QString toolCalls);
    void recordToolCall(QString result, bool queued);

private:
    void recordGateCall(const QString& toolCalls);
    void pushInventory();
    void watchScanThread();
    void setEmptyScan(bool empty);

    struct Announcement
    {
        QString toolCalls;
        Text client;
    };

    HostCore& core_;
    int automaticAnswer_;
    std::mutex announcementsMutex_;
    std::deque<Announcement> announcements_; ///< guarded by the mutex; not yet shown
    QPointer<QObject> bridge_;
    QPointer<QThread> serviceThread_;
    QPointer<QThread> scanThread_;
    Timeline timeline_;
    QVariantMap recommendation_;
    bool recommended_ = false;
    bool emptyScan_ = false;
    bool toolAnnounced_ = false;
    std::mutex announcedMutex_;
    QString announced_; ///< last announcement of the agent, for the transcript
};

} // namespace host
