#include "host/objects/WindowObjects.h"

#include "host/machine/GuidedTasks.h"
#include "host/machine/Orders.h"
#include "host/machine/Toolbox.h"
#include "host/objects/GuidePages.h"

#include <QtQml/qqml.h>

namespace host {

namespace {

constexpr int kPasswordReset = 1;
constexpr int kBootRepair = 2;

} // namespace

bool HostWindow::isPopuped() const
{
    if (core_ == nullptr)
        return false;
    const bool popuped = core_->isPopuped();
    core_->gate().recordPopupedRead(popuped);
    return core_->recordRead("window", "popuped", popuped);
}

QVariant HostWindow::closeGuide(QVariant unused)
{
    if (core_ == nullptr)
        return false;
    core_->restartIdleTimer();
    return core_->recordCall("window", "closeGuide", {unused}, QVariant(core_->closeGuide()));
}

QVariant HostWindow::openUrl(QVariant address)
{
    if (core_ == nullptr)
        return false;
    core_->openAddress(address.toString());
    return core_->recordCall("window", "openUrl", {address}, QVariant(true));
}

bool HostWindow::event(QEvent* event)
{
    if (event->type() == QEvent::Close)
        Q_EMIT closed();
    return QQuickWindow::event(event);
}

bool MainPage::isBusy() const
{
    if (core_ == nullptr)
        return false;
    const bool busy = core_->isBusy();
    core_->gate().recordBusyRead(busy);
    return core_->recordRead("__zormain", "busy", busy);
}

void MainPage::doprfunction(QVariant task)
{
    core_->restartIdleTimer();
    core_->transcript().hostCall("__zormain", "doprfunction", {task});
    core_->openGuide(recoveryGuide(task.toMap()));
}

QVariant MainPage::createBootMediaEnabled(QVariant task)
{
    core_->restartIdleTimer();
    const auto machine = core_->machine();
    const bool enabled =
        !core_->isClosing() && machine->bootMediaEnabled && bootMediaTargetExists(*machine, task.toMap());
    if (!enabled)
        core_->recordRejection(QT_TRANSLATE_NOOP("Sandbox", "boot media"), describeParams(task.toMap()),
                               QT_TRANSLATE_NOOP("Sandbox", "Boot media cannot be created there."));
    return core_->recordCall("__zormain", "createBootMediaEnabled", {task}, QVariant(enabled));
}

void MainPage::dobmfunction(QVariant task)
{
    core_->restartIdleTimer();
    core_->transcript().hostCall("__zormain", "dobmfunction", {task});
    const QVariantMap map = task.toMap();
    const bool installs = map.value(QStringLiteral("isInstallPreOs")).toBool();
    if (!installs && !map.value(QStringLiteral("isDisablePreOs")).toBool()) {
        core_->openGuide(mediaGuide(map));
        return;
    }
    core_->log()->write(installs ? QStringLiteral("pre-OS environment installed")
                                 : QStringLiteral("pre-OS environment removed"));
    const GuidedWork work = bootMediaWork(map);
    Machine next = *core_->machine();
    if (!attempt(next, static_cast<int>(work.function), work.params))
        core_->change(std::move(next));
}

void MainPage::opendiskhealth(QVariant task)
{
    core_->restartIdleTimer();
    core_->transcript().hostCall("__zormain", "opendiskhealth", {task});
    core_->openGuide(healthGuide(core_->machine(), task.toMap().value(QStringLiteral("diskIndex")).toInt()));
}

QVariant MainPage::passwordResetEnabled()
{
    return core_->recordCall("__zormain", "passwordResetEnabled", {},
                             QVariant(isToolEnabled(kPasswordReset)));
}

QVariant MainPage::bootrepairEnabled()
{
    return core_->recordCall("__zormain", "bootrepairEnabled", {}, QVariant(isToolEnabled(kBootRepair)));
}

QVariant MainPage::doToolBox(QVariant index, QVariant record)
{
    core_->restartIdleTimer();
    const QVariantMap map = record.toMap();
    Rejection rejection = core_->closingRejection();
    if (!rejection)
        rejection = toolboxRejection(*core_->machine(), index.toInt(), map);
    if (rejection) {
        core_->recordRejection({QT_TRANSLATE_NOOP("Sandbox", "toolbox %1"), {QString::number(index.toInt())}},
                               toolboxName(index.toInt()), *rejection);
        core_->transcript().hostCall("__zormain", "doToolBox", {index, record}, false, rejection->english());
        return false;
    }
    core_->openGuide(toolboxGuide(index.toInt(), map));
    return core_->recordCall("__zormain", "doToolBox", {index, record}, QVariant(true));
}

bool MainPage::isToolEnabled(int index)
{
    core_->restartIdleTimer();
    return !core_->isClosing() && core_->machine()->toolbox.value(toolboxName(index), true);
}

QVariant QmlExecuter::sendUserInfo(QVariant category, QVariant event, QVariant info, QVariant extra)
{
    core_->restartIdleTimer();
    core_->transcript().hostCall("__qml_executer", "sendUserInfo", {category, event, info, extra});
    const QString text =
        info.userType() == QMetaType::QVariantMap ? describeParams(info.toMap()) : info.toString();
    core_->log()->write(QStringLiteral("event %1 %2 %3 %4")
                            .arg(category.toString(), event.toString(), text, extra.toString())
                            .trimmed());
    return QVariant();
}

void registerWindowTypes()
{
    qmlRegisterType<HostWindow>("Sandbox", 1, 0, "HostWindow");
    qmlRegisterType<MainPage>("Sandbox", 1, 0, "MainPage");
    qmlRegisterType<QmlExecuter>("Sandbox", 1, 0, "QmlExecuter");
}

} // namespace host
