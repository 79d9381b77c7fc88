#include "host/objects/Orders.h"

#include "host/machine/Functions.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QStringList>

#include <algorithm>
#include <utility>

namespace host {

namespace {

const QString kTestFunValid = QStringLiteral("TestFunValid");

Text describeFunction(int function)
{
    const QString name = functionName(function);
    return name.isEmpty() ? Text(QT_TRANSLATE_NOOP("Sandbox", "function %1"), {QString::number(function)})
                          : name;
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

Orders::Orders(Backend& backend, HostStatus& status, Transcript& transcript, HostLog& log)
    : backend_(backend), status_(status), transcript_(transcript), log_(log)
{
    connect(&tasks_, &TaskQueue::taskStarted, this, &Orders::onTaskStarted);
    connect(&tasks_, &TaskQueue::taskEnded, this, &Orders::onTaskEnded);
    connect(&tasks_, &TaskQueue::idle, this, &Orders::showWork);
}

Rejection Orders::rejection(int function, const QVariantMap& params)
{
    QVariantMap keys = params;
    keys.remove(kTestFunValid);
    Rejection reason = status_.closingRejection();
    if (!reason)
        reason = backend_.orderRejection(function, keys);
    if (!reason)
        reason = consentRejection(function, keys);
    if (reason)
        recordRejection(describeFunction(function), describeParams(keys), *reason);
    return reason;
}

void Orders::recordRejection(const Text& function, const QString& arguments, const Text& reason)
{
    log_.write(QStringLiteral("rejected %1 %2: %3").arg(function.english(), arguments, reason.english()));
    Q_EMIT rejected(function, arguments, reason);
}

void Orders::order(int function, const QVariantMap& params)
{
    log_.write(
        QStringLiteral("order %1 %2").arg(describeFunction(function).english(), describeParams(params)));
    Q_EMIT ordered(describeFunction(function), describeParams(params), origin_(functionName(function)));
    // An order that arrives during the shutdown is discarded.
    if (!status_.isClosing())
        add(function, params);
}

void Orders::add(int function, const QVariantMap& params)
{
    transcript_.add(QStringLiteral("order"),
                    {{QStringLiteral("function"), describeFunction(function).english()},
                     {QStringLiteral("params"), QJsonObject::fromVariantMap(params)}});
    TaskWork work;
    work.title = describeFunction(function);
    work.detail = describeParams(params);
    work.client = origin_(functionName(function));
    work.execution = [this, function, params] { return execution(function, params); };
    const int id = tasks_.add(std::move(work));
    orders_.push_back({id, function, params});
    Q_EMIT added(id);
    showWork();
}

Rejection Orders::consentRejection(int function, const QVariantMap& params) const
{
    return host::consentRejection(backend_, consent_, function, params);
}

int Orders::destroyingTask() const
{
    return runningLoss_ && !confirmation_.isOpen() ? runningTask_ : 0;
}

std::unique_ptr<Execution> Orders::execution(int function, const QVariantMap& params)
{
    // Now and not earlier, because the tasks before it have changed the machine.
    runningLoss_ = dataLoss(*backend_.machine(), function, params);
    return std::make_unique<ConfirmedExecution>(backend_, function, params, consent_, confirmation_,
                                                [this](const QString& action, const Confirmation& question) {
                                                    recordConfirmation(action, question);
                                                });
}

void Orders::recordConfirmation(const QString& action, const Confirmation& question)
{
    const QString operation = question.loss.operation.english();
    log_.write(QStringLiteral("confirmation %1: %2 (%3)").arg(action, operation, diskLine(question)));
    QJsonArray losses;
    for (const Partition& partition : question.loss.partitions)
        losses.append(QJsonObject{{QStringLiteral("driveLetter"), partition.driveLetter},
                                  {QStringLiteral("label"), partition.label},
                                  {QStringLiteral("fileSystem"), partition.fsString},
                                  {QStringLiteral("size"), partition.size},
                                  {QStringLiteral("usedSize"), partition.usedSize}});
    transcript_.add(QStringLiteral("confirmation"), {{QStringLiteral("action"), action},
                                                     {QStringLiteral("operation"), operation},
                                                     {QStringLiteral("disk"), diskLine(question)},
                                                     {QStringLiteral("losses"), losses}});
}

void Orders::onTaskStarted(int id)
{
    runningTask_ = id;
    transcript_.add(QStringLiteral("taskStart"), {{QStringLiteral("task"), id},
                                                  {QStringLiteral("title"), tasks_.titleOf(id).english()},
                                                  {QStringLiteral("detail"), tasks_.detailOf(id)}});
    showWork();
}

void Orders::onTaskEnded(int id, const QString& state, const QString& error)
{
    if (id == runningTask_) {
        runningTask_ = 0;
        runningLoss_.reset();
    }
    orders_.erase(std::remove_if(orders_.begin(), orders_.end(),
                                 [id](const OpenOrder& order) { return order.taskId == id; }),
                  orders_.end());
    const QString title = tasks_.titleOf(id).english();
    log_.write(error.isEmpty() ? QStringLiteral("%1 %2").arg(state, title)
                               : QStringLiteral("%1 %2: %3").arg(state, title, error));
    QJsonObject fields{
        {QStringLiteral("task"), id}, {QStringLiteral("title"), title}, {QStringLiteral("state"), state}};
    if (!error.isEmpty())
        fields.insert(QStringLiteral("error"), error);
    transcript_.add(QStringLiteral("taskEnd"), fields);
    Q_EMIT ended(id, state, tasks_.errorOf(id));
}

void Orders::showWork()
{
    status_.setAtWork(tasks_.isAtWork());
    work_ = tasks_.currentTitle();
    Q_EMIT workChanged();
}

} // namespace host
