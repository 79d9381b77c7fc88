#include "host/objects/HostCore.h"

#include "host/machine/Functions.h"
#include "host/machine/Orders.h"
#include "host/machine/Rules.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QStringList>

#include <algorithm>
#include <utility>

namespace host {

namespace {

const QString kTestFunValid = QStringLiteral("TestFunValid");

QString describeFunction(int function)
{
    const QString name = functionName(function);
    return name.isEmpty() ? QStringLiteral("function %1").arg(function) : name;
}

QString describeValue(const QVariant& value)
{
    if (value.userType() == QMetaType::QString)
        return QLatin1Char('"') + value.toString() + QLatin1Char('"');
    if (value.userType() == QMetaType::QVariantMap)
        return QString::fromUtf8(QJsonDocument::fromVariant(value).toJson(QJsonDocument::Compact));
    return value.toString();
}

} // namespace

QString describeParams(const QVariantMap& params)
{
    QStringList parts;
    for (auto it = params.begin(); it != params.end(); ++it)
        parts.append(it.key() + QLatin1Char('=') + describeValue(it.value()));
    return parts.join(QLatin1Char(' '));
}

HostCore::HostCore(Machine machine, QObject* parent)
    : QObject(parent),
      machine_(std::make_shared<const Machine>(std::move(machine))),
      busy_(machine_->busy),
      popuped_(machine_->popuped)
{
    sinceLastCall_.start();
    connect(&tasks_, &TaskQueue::taskStarted, this, &HostCore::showWork);
    connect(&tasks_, &TaskQueue::idle, this, &HostCore::showWork);
}

std::shared_ptr<const Machine> HostCore::machine() const
{
    const std::lock_guard<std::mutex> lock(machineMutex_);
    return machine_;
}

void HostCore::setClosing()
{
    closing_ = true;
}

bool HostCore::accepts(int function, const QVariantMap& params)
{
    noteCall();
    QVariantMap keys = params;
    keys.remove(kTestFunValid);
    const QString reason =
        isClosing() ? QStringLiteral("the host is closing") : refusal(*machine(), function, keys);
    if (!reason.isEmpty())
        noteRefusal(describeFunction(function), describeParams(keys), reason);
    return reason.isEmpty();
}

void HostCore::noteRefusal(const QString& function, const QString& arguments, const QString& reason)
{
    log_.write(QStringLiteral("refused %1 %2: %3").arg(function, arguments, reason));
    Q_EMIT refused(function, arguments, reason);
}

void HostCore::order(int function, const QVariantMap& params)
{
    noteCall();
    log_.write(QStringLiteral("order %1 %2").arg(describeFunction(function), describeParams(params)));
    Q_EMIT ordered(describeFunction(function), describeParams(params));
    TaskWork work;
    work.title = describeFunction(function);
    work.detail = describeParams(params);
    work.plan = [this] {
        TaskPlan plan;
        plan.milliseconds = std::max(0, machine()->taskMilliseconds);
        return plan;
    };
    work.finish = [this, function, params] { return finishOrder(function, params); };
    work.interrupt = [](double) {};
    tasks_.add(std::move(work));
    showWork();
}

QString HostCore::finishOrder(int function, const QVariantMap& params)
{
    // An earlier order may have changed what this one was accepted for.
    Machine next = *machine();
    const QString reason = refusal(next, function, params);
    const QString name = describeFunction(function);
    if (!reason.isEmpty())
        log_.write(QStringLiteral("failed %1: %2").arg(name, reason));
    else if (carryOut(next, function, params))
        change(std::move(next));
    if (reason.isEmpty())
        log_.write(QStringLiteral("done %1").arg(name));
    return reason;
}

void HostCore::change(Machine machine)
{
    auto next = std::make_shared<const Machine>(std::move(machine));
    {
        const std::lock_guard<std::mutex> lock(machineMutex_);
        machine_.swap(next);
    }
    Q_EMIT machineChanged();
}

void HostCore::openGuide(const QString& title, const QString& text)
{
    guideTitle_ = title;
    guideText_ = text;
    log_.write(text.isEmpty() ? QStringLiteral("guide opened: %1").arg(title)
                              : QStringLiteral("guide opened: %1 (%2)").arg(title, text));
    Q_EMIT guideChanged();
}

bool HostCore::closeGuide()
{
    noteCall();
    if (guideTitle_.isEmpty())
        return false;
    log_.write(QStringLiteral("guide closed: %1").arg(guideTitle_));
    guideTitle_.clear();
    guideText_.clear();
    Q_EMIT guideChanged();
    return true;
}

void HostCore::openAddress(const QString& address)
{
    noteCall();
    address_ = address;
    log_.write(QStringLiteral("address opened: %1").arg(address));
    Q_EMIT addressChanged();
}

void HostCore::setServicePlace(const QString& place)
{
    servicePlace_ = place;
    Q_EMIT servicePlaceChanged();
}

void HostCore::setDialogOpen(bool open)
{
    if (dialogOpen_ == open)
        return;
    dialogOpen_ = open;
    popuped_ = open || machine()->popuped;
    Q_EMIT dialogOpenChanged();
}

void HostCore::setWin11Checker(bool enabled)
{
    if (isWin11Checker() == enabled)
        return;
    Machine next = *machine();
    next.win11CheckerEnabled = enabled;
    change(std::move(next));
}

void HostCore::showWork()
{
    busy_ = tasks_.isAtWork() || machine()->busy;
    work_ = tasks_.currentTitle();
    Q_EMIT workChanged();
}

} // namespace host
