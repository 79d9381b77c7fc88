#include "host/objects/WindowObjects.h"

#include "host/machine/GuidedTasks.h"
#include "host/machine/Orders.h"
#include "host/machine/Toolbox.h"
#include "host/objects/GuidePages.h"

#include <QtGui/QKeyEvent>
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
    const bool popuped = core_->status().isPopuped();
    core_->gate().recordPopupedRead(popuped);
    return core_->calls().recordRead("window", "popuped", popuped);
}

QVariant HostWindow::closeGuide(QVariant unused)
{
    if (core_ == nullptr)
        return false;
    core_->calls().restartIdleTimer();
    return core_->calls().recordCall("window", "closeGuide", {unused}, QVariant(core_->guides().close()));
}

QVariant HostWindow::openUrl(QVariant address)
{
    if (core_ == nullptr)
        return false;
    core_->calls().restartIdleTimer();
    core_->openAddress(address.toString());
    return core_->calls().recordCall("window", "openUrl", {address}, QVariant(true));
}

// Here and not in QML, because a dialog would keep a shortcut of the pages from working.
static bool isQuitKey(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_Q && key.modifiers() == Qt::ControlModifier && !key.isAutoRepeat();
}

bool HostWindow::event(QEvent* event)
{
    if (isQuitKey(*event)) {
        close();
        return true;
    }
    if (event->type() == QEvent::Close) {
        if (core_ != nullptr && !core_->interruption().mayClose()) {
            event->ignore();
            return true;
        }
        Q_EMIT closed();
    }
    return QQuickWindow::event(event);
}

bool MainPage::isBusy() const
{
    if (core_ == nullptr)
        return false;
    const bool busy = core_->status().isBusy();
    core_->gate().recordBusyRead(busy);
    return core_->calls().recordRead("__zormain", "busy", busy);
}

void MainPage::doprfunction(QVariant task)
{
    core_->calls().restartIdleTimer();
    core_->calls().recordCall("__zormain", "doprfunction", {task});
    core_->guides().open(recoveryGuide(task.toMap()));
}

QVariant MainPage::createBootMediaEnabled(QVariant task)
{
    core_->calls().restartIdleTimer();
    const auto machine = core_->machine();
    const bool enabled = !core_->status().isClosing() && machine->bootMediaEnabled &&
                         bootMediaTargetExists(*machine, task.toMap());
    if (!enabled)
        core_->orders().recordRejection(QT_TRANSLATE_NOOP("Sandbox", "boot media"),
                                        describeParams(task.toMap()),
                                        QT_TRANSLATE_NOOP("Sandbox", "Boot media cannot be created there."));
    return core_->calls().recordCall("__zormain", "createBootMediaEnabled", {task}, QVariant(enabled));
}

void MainPage::dobmfunction(QVariant task)
{
    core_->calls().restartIdleTimer();
    core_->calls().recordCall("__zormain", "dobmfunction", {task});
    const QVariantMap map = task.toMap();
    const bool installs = map.value(QStringLiteral("isInstallPreOs")).toBool();
    if (!installs && !map.value(QStringLiteral("isDisablePreOs")).toBool()) {
        core_->guides().open(mediaGuide(map));
        return;
    }
    const GuidedWork work = bootMediaWork(map);
    const int function = static_cast<int>(work.function);
    if (const Rejection rejection = core_->backend().taskRejection(function, work.params)) {
        core_->orders().recordRejection(functionName(function), describeParams(work.params), *rejection);
        return;
    }
    core_->log()->write(installs ? QStringLiteral("pre-OS environment installed")
                                 : QStringLiteral("pre-OS environment removed"));
    Machine next = *core_->machine();
    carryOut(next, function, work.params);
    core_->backend().change(std::move(next));
}

void MainPage::opendiskhealth(QVariant task)
{
    core_->calls().restartIdleTimer();
    core_->calls().recordCall("__zormain", "opendiskhealth", {task});
    core_->guides().open(
        healthGuide(core_->machine(), task.toMap().value(QStringLiteral("diskIndex")).toInt()));
}

QVariant MainPage::passwordResetEnabled()
{
    return core_->calls().recordCall("__zormain", "passwordResetEnabled", {},
                                     QVariant(isToolEnabled(kPasswordReset)));
}

QVariant MainPage::bootrepairEnabled()
{
    return core_->calls().recordCall("__zormain", "bootrepairEnabled", {},
                                     QVariant(isToolEnabled(kBootRepair)));
}

QVariant MainPage::doToolBox(QVariant index, QVariant record)
{
    core_->calls().restartIdleTimer();
    const QVariantMap map = record.toMap();
    Rejection rejection = core_->status().closingRejection();
    if (!rejection)
        rejection = toolboxRejection(*core_->machine(), index.toInt(), map);
    if (rejection) {
        core_->orders().recordRejection(
            {QT_TRANSLATE_NOOP("Sandbox", "toolbox %1"), {QString::number(index.toInt())}},
            toolboxName(index.toInt()), *rejection);
        core_->calls().recordRejectedCall("__zormain", "doToolBox", {index, record}, rejection->english());
        return false;
    }
    core_->guides().open(toolboxGuide(index.toInt(), map));
    return core_->calls().recordCall("__zormain", "doToolBox", {index, record}, QVariant(true));
}

bool MainPage::isToolEnabled(int index)
{
    core_->calls().restartIdleTimer();
    return !core_->status().isClosing() && core_->machine()->toolbox.value(toolboxName(index), true);
}

QVariant QmlExecuter::sendUserInfo(QVariant category, QVariant event, QVariant info, QVariant extra)
{
    core_->calls().restartIdleTimer();
    core_->calls().recordCall("__qml_executer", "sendUserInfo", {category, event, info, extra});
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
