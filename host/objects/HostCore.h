#pragma once

#include "host/backend/Backend.h"
#include "host/objects/AgentClients.h"
#include "host/objects/CallRecorder.h"
#include "host/objects/GateWatch.h"
#include "host/objects/GuideView.h"
#include "host/objects/Guides.h"
#include "host/objects/HostLog.h"
#include "host/objects/HostStatus.h"
#include "host/objects/InterruptionRequest.h"
#include "host/objects/Orders.h"
#include "host/objects/Transcript.h"

#include <QtCore/QObject>

#include <memory>

namespace host {

/// Owns the back end and the parts of the host that work on it, and provides their values to the QML files as
/// `host`. A class that needs one part receives that part.
///
/// machine(): any thread; everything else: application thread, unless the part states otherwise.
class HostCore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString machineName READ machineName CONSTANT)
    Q_PROPERTY(bool realDisks READ hasRealDisks CONSTANT)
    Q_PROPERTY(QString serviceAddress READ serviceAddress NOTIFY serviceAddressChanged)
    Q_PROPERTY(QString work READ work NOTIFY workChanged)
    Q_PROPERTY(QString remaining READ remaining NOTIFY remainingChanged)
    Q_PROPERTY(QString address READ address NOTIFY addressChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(bool dialogOpen READ isDialogOpen WRITE setDialogOpen NOTIFY dialogOpenChanged)
    Q_PROPERTY(bool helpOpen READ isHelpOpen WRITE setHelpOpen NOTIFY helpOpenChanged)
    Q_PROPERTY(bool win11Checker READ isWin11Checker WRITE setWin11Checker NOTIFY machineChanged)
    Q_PROPERTY(QObject* log READ log CONSTANT)
    Q_PROPERTY(QObject* tasks READ tasks CONSTANT)

public:
    explicit HostCore(std::unique_ptr<Backend> backend, QObject* parent = nullptr);

    Backend& backend() { return *backend_; }
    std::shared_ptr<const Machine> machine() const { return backend_->machine(); }
    HostStatus& status() { return status_; }
    Transcript& transcript() { return transcript_; }
    CallRecorder& calls() { return calls_; }
    Orders& orders() { return orders_; }
    Guides& guides() { return guides_; }
    GuideView& guideView() { return guideView_; }
    InterruptionRequest& interruption() { return interruption_; }
    GateWatch& gate() { return gate_; }
    AgentClients& clients() { return clients_; }
    HostLog* log() { return &log_; }
    TaskQueue* tasks() { return &orders_.tasks(); }

    void openAddress(const QString& address);
    void setServiceAddress(const QString& place);
    /// Called after a change of the language: emits the change signals of all translated values.
    void retranslate();

    QString machineName() const { return machine()->name; }
    bool hasRealDisks() const { return backend_->isReal(); }
    QString serviceAddress() const { return serviceAddress_; }
    QString work() const { return orders_.work().translated(); }
    /// The time until the running task ends; empty if unknown.
    QString remaining() const;
    QString address() const { return address_; }
    /// Copies a text to the clipboard.
    Q_INVOKABLE void copy(const QString& text) const;
    /// Why no order can run at the moment; empty if orders can run.
    QString problem() const { return problem_.value_or(Text()).translated(); }
    bool isDialogOpen() const { return status_.isDialogOpen(); }
    void setDialogOpen(bool open);
    bool isHelpOpen() const { return status_.isHelpOpen(); }
    void setHelpOpen(bool open);
    bool isWin11Checker() const { return machine()->win11CheckerEnabled; }
    void setWin11Checker(bool enabled);

Q_SIGNALS:
    void machineChanged();
    void serviceAddressChanged();
    void workChanged();
    void remainingChanged();
    void addressChanged();
    void problemChanged();
    void dialogOpenChanged();
    void helpOpenChanged();

private:
    void writeNotices();
    void showAvailability();

    std::unique_ptr<Backend> backend_; // before the orders, whose executions use it
    Transcript transcript_;
    HostLog log_;
    HostStatus status_;
    CallRecorder calls_{transcript_};
    Orders orders_;
    Guides guides_;
    GuideView guideView_;
    InterruptionRequest interruption_;
    GateWatch gate_;
    AgentClients clients_;
    QString serviceAddress_;
    QString address_;
    Rejection problem_;
};

} // namespace host
