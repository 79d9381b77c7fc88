#pragma once

#include "host/backend/Backend.h"
#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"
#include "host/objects/GateWatch.h"
#include "host/objects/GuideView.h"
#include "host/objects/HostLog.h"
#include "host/objects/TaskQueue.h"
#include "host/objects/Transcript.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QVariantMap>

#include <atomic>
#include <memory>
#include <optional>

namespace host {

/// The state that the host's objects share: the back end, the tasks, the open guide and the log.
///
/// machine(), isBusy() and isPopuped(): any thread; everything else: application thread, unless stated
/// otherwise.
class HostCore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString machineName READ machineName CONSTANT)
    Q_PROPERTY(QString serviceAddress READ serviceAddress NOTIFY serviceAddressChanged)
    Q_PROPERTY(QString work READ work NOTIFY workChanged)
    Q_PROPERTY(QString address READ address NOTIFY addressChanged)
    Q_PROPERTY(bool dialogOpen READ isDialogOpen WRITE setDialogOpen NOTIFY dialogOpenChanged)
    Q_PROPERTY(bool win11Checker READ isWin11Checker WRITE setWin11Checker NOTIFY machineChanged)
    Q_PROPERTY(QObject* log READ log CONSTANT)
    Q_PROPERTY(QObject* tasks READ tasks CONSTANT)
    Q_PROPERTY(bool guideCanStart READ guideCanStart NOTIFY guideChanged)

public:
    explicit HostCore(std::unique_ptr<Backend> backend, QObject* parent = nullptr);

    /// Whether the work of each guide is started as the guide opens, as a user would.
    void setStartsGuides(bool starts) { startsGuides_ = starts; }
    /// Receives the calls of the host's objects. Any thread.
    Transcript& transcript() { return transcript_; }

    std::shared_ptr<const Machine> machine() const { return backend_->machine(); }
    bool isBusy() const { return busy_ || closing_; }
    bool isPopuped() const { return popuped_ || pageOpen_ || closing_; }

    /// From now on every question is rejected, and the host counts as busy and covered by a dialog.
    void setClosing();
    bool isClosing() const { return closing_; }
    /// Records a call of a host object and returns its result. Any thread.
    template <class Result>
    Result recordCall(const char* object, const char* member, const QVariantList& arguments, Result result)
    {
        transcript_.hostCall(object, member, arguments, QVariant::fromValue(result));
        return result;
    }
    /// Records a read of a property by another thread and returns its value. Reads by the application thread,
    /// which are the window's, are not recorded. Any thread.
    bool recordRead(const char* object, const char* property, bool value);
    /// Called by each host method that another thread can wait for.
    void restartIdleTimer() { sinceLastCall_.restart(); }
    qint64 millisecondsSinceLastCall() const { return sinceLastCall_.elapsed(); }

    /// Whether the partition page accepts an order. A rejection is logged.
    Rejection rejection(int function, const QVariantMap& params);
    /// Rejects everything once the host is closing.
    Rejection closingRejection() const;
    /// Queues an order, which is carried out after this call has returned.
    void order(int function, const QVariantMap& params);
    /// Replaces the machine, for a change of the host's settings, and emits machineChanged().
    void change(Machine machine) { backend_->change(std::move(machine)); }

    /// Replaces the open guide. Work that is rejected is removed, so that the guide only informs.
    void openGuide(Guide guide);
    /// The open guide; null if no guide is open.
    const Guide* guide() const { return guide_ ? &*guide_ : nullptr; }
    /// False if no guide was open.
    bool closeGuide();
    void openAddress(const QString& address);
    void setServiceAddress(const QString& place);

    /// Whether a page covers the window.
    void setPageOpen(bool open) { pageOpen_ = open; }
    /// Logs and emits a rejection; @p arguments: from describeParams().
    void recordRejection(const Text& function, const QString& arguments, const Text& reason);
    /// Called after a change of the language: emits the change signals of all translated values.
    void retranslate();

    HostLog* log() { return &log_; }
    TaskQueue* tasks() { return &tasks_; }
    GuideView* guideView() { return &guideView_; }
    GateWatch& gate() { return gate_; }
    QString machineName() const { return machine()->name; }
    QString serviceAddress() const { return serviceAddress_; }
    QString work() const { return work_.translated(); }
    QString address() const { return address_; }
    bool isDialogOpen() const { return dialogOpen_; }
    void setDialogOpen(bool open);
    bool isWin11Checker() const { return machine()->win11CheckerEnabled; }
    void setWin11Checker(bool enabled);

    /// The guide's close button.
    Q_INVOKABLE void dismissGuide() { closeGuide(); }
    /// Whether the user can start the work of the open guide.
    bool guideCanStart() const { return guide_ && guide_->work; }
    /// The start button of the guide: queues its work and closes the guide. No effect unless guideCanStart().
    Q_INVOKABLE void startGuide();

Q_SIGNALS:
    void machineChanged();
    void serviceAddressChanged();
    void workChanged();
    void guideChanged();
    void addressChanged();
    void dialogOpenChanged();
    /// An order has arrived.
    void ordered(host::Text function, QString arguments);
    void rejected(host::Text function, QString arguments, host::Text reason);

private:
    void addTask(int function, const QVariantMap& params);
    void onTaskStarted(int id);
    void onTaskEnded(int id, const QString& state, const QString& error);
    void recordGuide(const QString& action);
    void showWork();

    std::unique_ptr<Backend> backend_; // before the tasks, whose executions use it
    std::atomic<bool> busy_;
    std::atomic<bool> popuped_;
    std::atomic<bool> pageOpen_{false};
    std::atomic<bool> closing_{false};
    QElapsedTimer sinceLastCall_;
    TaskQueue tasks_;
    QString serviceAddress_;
    Text work_;
    std::optional<Guide> guide_;
    QString address_;
    bool startsGuides_ = false;
    bool dialogOpen_ = false;
    Transcript transcript_;
    HostLog log_;
    GuideView guideView_{*this};
    GateWatch gate_;
};

/// An order's parameters on one line, in the form `key=value key=value`; strings are quoted.
QString describeParams(const QVariantMap& params);

} // namespace host
