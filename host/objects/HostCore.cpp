#include "host/objects/HostCore.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <utility>

namespace host {

HostCore::HostCore(std::unique_ptr<Backend> backend, QObject* parent)
    : QObject(parent),
      backend_(std::move(backend)),
      status_(machine()->busy, machine()->popuped),
      orders_(*backend_, status_, transcript_, log_),
      guides_(*backend_, status_, orders_, transcript_, log_),
      guideView_(guides_, status_),
      interruption_(orders_, status_)
{
    connect(backend_.get(), &Backend::machineChanged, this, &HostCore::machineChanged);
    connect(&orders_, &Orders::workChanged, this, &HostCore::workChanged);
    connect(tasks(), &TaskQueue::dataChanged, this, &HostCore::remainingChanged);
    connect(backend_.get(), &Backend::noticed, this, &HostCore::writeNotices);
    connect(backend_.get(), &Backend::availabilityChanged, this, &HostCore::showAvailability);
    orders_.setOrigin([this](const QString& function) { return clients_.senderOf(function); });
    writeNotices();
}

void HostCore::writeNotices()
{
    for (const Text& notice : backend_->takeNotices())
        log_.write(notice.english());
}

void HostCore::showAvailability()
{
    const Rejection now = backend_->unavailability();
    if (now == problem_)
        return;
    problem_ = now;
    const QString reason = now.value_or(Text()).english();
    log_.write(now ? reason : QStringLiteral("orders can run again"));
    transcript_.add(QStringLiteral("availability"),
                    {{QStringLiteral("available"), !now.has_value()}, {QStringLiteral("reason"), reason}});
    Q_EMIT problemChanged();
}

void HostCore::openAddress(const QString& address)
{
    address_ = address;
    log_.write(QStringLiteral("address opened: %1").arg(address));
    Q_EMIT addressChanged();
}

QString HostCore::remaining() const
{
    const TaskQueue& tasks = orders_.tasks();
    const QModelIndex row = tasks.indexOf(tasks.runningTask());
    return row.isValid() ? row.data(TaskQueue::RemainingRole).toString() : QString();
}

void HostCore::copy(const QString& text) const
{
    QGuiApplication::clipboard()->setText(text);
}

void HostCore::setServiceAddress(const QString& place)
{
    serviceAddress_ = place;
    Q_EMIT serviceAddressChanged();
}

void HostCore::setDialogOpen(bool open)
{
    if (isDialogOpen() == open)
        return;
    status_.setDialogOpen(open);
    Q_EMIT dialogOpenChanged();
}

void HostCore::setHelpOpen(bool open)
{
    if (isHelpOpen() == open)
        return;
    status_.setHelpOpen(open);
    Q_EMIT helpOpenChanged();
}

void HostCore::setWin11Checker(bool enabled)
{
    if (isWin11Checker() == enabled)
        return;
    Machine next = *machine();
    next.win11CheckerEnabled = enabled;
    backend_->change(std::move(next));
}

void HostCore::retranslate()
{
    orders_.tasks().retranslate();
    guideView_.retranslate();
    orders_.confirmation().retranslate();
    interruption_.retranslate();
    clients_.retranslate();
    Q_EMIT workChanged();
    Q_EMIT problemChanged();
}

} // namespace host
