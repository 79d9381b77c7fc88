#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"
#include "host/objects/GateWatch.h"
#include "host/objects/GuideView.h"
#include "host/objects/HostLog.h"
#include "host/objects/Pace.h"
#include "host/objects/TaskQueue.h"
#include "host/objects/Transcript.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QVariantMap>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace host {

/// What all of the host's objects share: the machine, the work in hand, the open guide and the log.
///
/// machine(), isBusy() and isPopuped() may be called from any thread; everything else belongs to the
/// application thread. The machine is never changed in place: a change is made on a copy, which then takes
/// its place, so that a reader keeps the machine that it has begun with.
class HostCore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString machineName READ machineName CONSTANT)
    Q_PROPERTY(QString servicePlace READ servicePlace NOTIFY servicePlaceChanged)
    Q_PROPERTY(QString work READ work NOTIFY workChanged)
    Q_PROPERTY(QString address READ address NOTIFY addressChanged)
    Q_PROPERTY(bool dialogOpen READ isDialogOpen WRITE setDialogOpen NOTIFY dialogOpenChanged)
    Q_PROPERTY(bool win11Checker READ isWin11Checker WRITE setWin11Checker NOTIFY machineChanged)
    Q_PROPERTY(QObject* log READ log CONSTANT)
    Q_PROPERTY(QObject* tasks READ tasks CONSTANT)
    Q_PROPERTY(bool guideCanStart READ guideCanStart NOTIFY guideChanged)

public:
    explicit HostCore(Machine machine, QObject* parent = nullptr);

    /// How fast tasks run; for tasks that have not begun.
    void setPace(Pace pace) { pace_ = pace; }
    /// The tasks that are to fail, each once, in this order among those of one function.
    void setFailures(std::vector<PlannedFailure> failures) { failures_ = std::move(failures); }
    /// Whether each guide that stands before work is started as it opens, as by a user.
    void setStartsGuides(bool starts) { startsGuides_ = starts; }
    /// What the host's objects report their calls to. Any thread.
    Transcript& transcript() { return transcript_; }

    std::shared_ptr<const Machine> machine() const;
    bool isBusy() const { return busy_ || closing_; }
    bool isPopuped() const { return popuped_ || pageOpen_ || closing_; }

    /// From now on every question is answered with no, and the gate finds the host occupied: nothing new
    /// begins.
    void setClosing();
    bool isClosing() const { return closing_; }
    /// Notes a call on a host object, and gives its result back. Any thread.
    template <class Result>
    Result recordCall(const char* object, const char* member, const QVariantList& arguments, Result result)
    {
        transcript_.hostCall(object, member, arguments, QVariant::fromValue(result));
        return result;
    }
    /// Notes that another thread has read a property, and gives its value back; the window's own reads are no
    /// news. Any thread.
    bool recordRead(const char* object, const char* property, bool value);
    /// Each host method that a thread can be waiting for says here that it was called.
    void restartIdleTimer() { sinceLastCall_.restart(); }
    qint64 millisecondsSinceLastCall() const { return sinceLastCall_.elapsed(); }

    /// Whether the partition page accepts an order. A rejection is logged.
    Rejection rejection(int function, const QVariantMap& params);
    /// Rejects everything once the host is closing.
    Rejection closingRejection() const;
    /// Records an order and carries it out after this call has returned, one order after the other.
    void order(int function, const QVariantMap& params);
    /// Replaces the machine and tells machineChanged().
    void change(Machine machine);

    /// Replaces the open guide. Work that is rejected is removed, so that the guide only informs.
    void openGuide(Guide guide);
    /// The open guide; null if no guide is open.
    const Guide* guide() const { return guide_ ? &*guide_ : nullptr; }
    /// False if no guide was open.
    bool closeGuide();
    void openAddress(const QString& address);
    void setServicePlace(const QString& place);

    /// A page covers the window, or no longer does.
    void setPageOpen(bool open) { pageOpen_ = open; }
    /// Tells that a page said no to a question, and why; @p arguments as describeParams() has them.
    void recordRejection(const Text& function, const QString& arguments, const Text& reason);
    /// The language has changed: everything that the window shows of this is said to have changed.
    void retranslate();

    HostLog* log() { return &log_; }
    TaskQueue* tasks() { return &tasks_; }
    GuideView* guideView() { return &guideView_; }
    GateWatch& gate() { return gate_; }
    QString machineName() const { return machine()->name; }
    QString servicePlace() const { return servicePlace_; }
    QString work() const { return work_.translated(); }
    QString address() const { return address_; }
    bool isDialogOpen() const { return dialogOpen_; }
    void setDialogOpen(bool open);
    bool isWin11Checker() const { return machine()->win11CheckerEnabled; }
    void setWin11Checker(bool enabled);

    /// The close button of the window's guide panel.
    Q_INVOKABLE void dismissGuide() { closeGuide(); }
    /// Whether the user can start the work of the open guide.
    bool guideCanStart() const { return guide_ && guide_->work; }
    /// The start button of the guide: queues its work and closes the guide. No effect unless guideCanStart().
    Q_INVOKABLE void startGuide();

Q_SIGNALS:
    void machineChanged();
    void servicePlaceChanged();
    void workChanged();
    void guideChanged();
    void addressChanged();
    void dialogOpenChanged();
    /// An order has come in.
    void ordered(host::Text function, QString arguments);
    void rejected(host::Text function, QString arguments, host::Text reason);

private:
    void addTask(int function, const QVariantMap& params);
    TaskPlan planTask(int function, const QVariantMap& params);
    Rejection finishTask(int function, const QVariantMap& params);
    void interruptTask(int function, const QVariantMap& params, double share);
    void onTaskStarted(int id);
    void onTaskEnded(int id, const QString& state, const QString& error);
    void recordGuide(const QString& action);
    void showWork();

    mutable std::mutex machineMutex_;
    std::shared_ptr<const Machine> machine_;
    std::atomic<bool> busy_;
    std::atomic<bool> popuped_;
    std::atomic<bool> pageOpen_{false};
    std::atomic<bool> closing_{false};
    QElapsedTimer sinceLastCall_;
    TaskQueue tasks_;
    QString servicePlace_;
    Text work_;
    std::optional<Guide> guide_;
    QString address_;
    bool startsGuides_ = false;
    bool dialogOpen_ = false;
    Pace pace_;
    std::vector<PlannedFailure> failures_;
    Transcript transcript_;
    HostLog log_;
    GuideView guideView_{*this};
    GateWatch gate_;
};

/// An order's parameters on one line, in the form `key=value key=value`; texts stand in quotes.
QString describeParams(const QVariantMap& params);

} // namespace host
