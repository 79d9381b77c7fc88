#include "host/objects/HostCore.h"

#include "host/machine/Functions.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QStringList>
#include <QtCore/QThread>

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

HostCore::HostCore(std::unique_ptr<Backend> backend, QObject* parent)
    : QObject(parent), backend_(std::move(backend)), busy_(machine()->busy), popuped_(machine()->popuped)
{
    sinceLastCall_.start();
    connect(backend_.get(), &Backend::machineChanged, this, &HostCore::machineChanged);
    connect(&tasks_, &TaskQueue::taskStarted, this, &HostCore::onTaskStarted);
    connect(&tasks_, &TaskQueue::taskEnded, this, &HostCore::onTaskEnded);
    connect(&tasks_, &TaskQueue::idle, this, &HostCore::showWork);
}

bool HostCore::recordRead(const char* object, const char* property, bool value)
{
    if (QThread::currentThread() != thread())
        transcript_.hostCall(object, property, {}, value);
    return value;
}

void HostCore::setClosing()
{
    closing_ = true;
}

Rejection HostCore::closingRejection() const
{
    return rejectIf(isClosing(), QT_TRANSLATE_NOOP("Sandbox", "The host is closing."));
}

Rejection HostCore::rejection(int function, const QVariantMap& params)
{
    restartIdleTimer();
    QVariantMap keys = params;
    keys.remove(kTestFunValid);
    Rejection reason = closingRejection();
    if (!reason)
        reason = backend_->orderRejection(function, keys);
    if (reason)
        recordRejection(describeFunction(function), describeParams(keys), *reason);
    return reason;
}

void HostCore::recordRejection(const Text& function, const QString& arguments, const Text& reason)
{
    log_.write(QStringLiteral("rejected %1 %2: %3").arg(function.english(), arguments, reason.english()));
    Q_EMIT rejected(function, arguments, reason);
}

void HostCore::order(int function, const QVariantMap& params)
{
    restartIdleTimer();
    log_.write(
        QStringLiteral("order %1 %2").arg(describeFunction(function).english(), describeParams(params)));
    Q_EMIT ordered(describeFunction(function), describeParams(params));
    // An order that arrives during the shutdown is discarded.
    if (!isClosing())
        addTask(function, params);
}

void HostCore::addTask(int function, const QVariantMap& params)
{
    transcript_.add(QStringLiteral("order"),
                    {{QStringLiteral("function"), describeFunction(function).english()},
                     {QStringLiteral("params"), QJsonObject::fromVariantMap(params)}});
    TaskWork work;
    work.title = describeFunction(function);
    work.detail = describeParams(params);
    work.execution = [this, function, params] { return backend_->execute(function, params); };
    tasks_.add(std::move(work));
    showWork();
}

void HostCore::onTaskStarted(int id)
{
    const QModelIndex row = tasks_.indexOf(id);
    transcript_.add(QStringLiteral("taskStart"),
                    {{QStringLiteral("task"), id},
                     {QStringLiteral("title"), tasks_.titleOf(id).english()},
                     {QStringLiteral("detail"), tasks_.data(row, TaskQueue::DetailRole).toString()}});
    showWork();
}

void HostCore::onTaskEnded(int id, const QString& state, const QString& error)
{
    const QString title = tasks_.titleOf(id).english();
    log_.write(error.isEmpty() ? QStringLiteral("%1 %2").arg(state, title)
                               : QStringLiteral("%1 %2: %3").arg(state, title, error));
    QJsonObject fields{
        {QStringLiteral("task"), id}, {QStringLiteral("title"), title}, {QStringLiteral("state"), state}};
    if (!error.isEmpty())
        fields.insert(QStringLiteral("error"), error);
    transcript_.add(QStringLiteral("taskEnd"), fields);
}

void HostCore::openGuide(Guide guide)
{
    std::optional<GuidedWork>& work = guide.work;
    if (work && backend_->taskRejection(static_cast<int>(work->function), work->params))
        work.reset();
    guide_ = std::move(guide);
    const QString summary = guide_->summary.english();
    log_.write(QStringLiteral("guide opened: ") + guide_->title.english() +
               (summary.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(summary)));
    recordGuide(QStringLiteral("opened"));
    Q_EMIT guideChanged();
    if (startsGuides_)
        startGuide();
}

void HostCore::startGuide()
{
    if (!guideCanStart() || isClosing())
        return;
    const GuidedWork work = *guide_->work;
    log_.write(QStringLiteral("guide started: ") + guide_->title.english());
    recordGuide(QStringLiteral("started"));
    addTask(static_cast<int>(work.function), work.params);
    closeGuide();
}

void HostCore::recordGuide(const QString& action)
{
    transcript_.add(QStringLiteral("guide"), {{QStringLiteral("action"), action},
                                              {QStringLiteral("title"), guide_->title.english()},
                                              {QStringLiteral("text"), guide_->summary.english()},
                                              {QStringLiteral("canStart"), guideCanStart()}});
}

bool HostCore::closeGuide()
{
    restartIdleTimer();
    if (!guide_)
        return false;
    log_.write(QStringLiteral("guide closed: ") + guide_->title.english());
    recordGuide(QStringLiteral("closed"));
    guide_.reset();
    Q_EMIT guideChanged();
    return true;
}

void HostCore::openAddress(const QString& address)
{
    restartIdleTimer();
    address_ = address;
    log_.write(QStringLiteral("address opened: %1").arg(address));
    Q_EMIT addressChanged();
}

void HostCore::setServiceAddress(const QString& place)
{
    serviceAddress_ = place;
    Q_EMIT serviceAddressChanged();
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

void HostCore::retranslate()
{
    tasks_.retranslate();
    guideView_.retranslate();
    Q_EMIT workChanged();
}

void HostCore::showWork()
{
    busy_ = tasks_.isAtWork() || machine()->busy;
    work_ = tasks_.currentTitle();
    Q_EMIT workChanged();
}

} // namespace host
