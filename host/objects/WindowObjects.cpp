#include "host/objects/WindowObjects.h"

#include "host/machine/GuidedTasks.h"
#include "host/machine/Orders.h"
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
    core_->gate().notePopupedRead(popuped);
    return core_->read("window", "popuped", popuped);
}

QVariant HostWindow::closeGuide(QVariant unused)
{
    if (core_ == nullptr)
        return false;
    core_->noteCall();
    return core_->told("window", "closeGuide", {unused}, QVariant(core_->closeGuide()));
}

QVariant HostWindow::openUrl(QVariant address)
{
    if (core_ == nullptr)
        return false;
    core_->openAddress(address.toString());
    return core_->told("window", "openUrl", {address}, QVariant(true));
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
    core_->gate().noteBusyRead(busy);
    return core_->read("__zormain", "busy", busy);
}

void MainPage::doprfunction(QVariant task)
{
    core_->noteCall();
    core_->transcript().hostCall("__zormain", "doprfunction", {task});
    const QVariantMap map = task.toMap();
    core_->guide()->prepare([map] { return recoveryPage(map); });
    core_->openGuide(recoveryTitle(map), describeParams(map), recoveryWork(map));
}

QVariant MainPage::createBootMediaEnabled(QVariant task)
{
    core_->noteCall();
    const auto machine = core_->machine();
    const bool enabled =
        !core_->isClosing() && machine->bootMediaEnabled && bootMediaTargetExists(*machine, task.toMap());
    if (!enabled)
        core_->noteRefusal(QT_TRANSLATE_NOOP("Sandbox", "boot media"), describeParams(task.toMap()),
                           QT_TRANSLATE_NOOP("Sandbox", "boot media cannot be made there"));
    return core_->told("__zormain", "createBootMediaEnabled", {task}, QVariant(enabled));
}

void MainPage::dobmfunction(QVariant task)
{
    core_->noteCall();
    core_->transcript().hostCall("__zormain", "dobmfunction", {task});
    const QVariantMap map = task.toMap();
    const bool installs = map.value(QStringLiteral("isInstallPreOs")).toBool();
    if (!installs && !map.value(QStringLiteral("isDisablePreOs")).toBool()) {
        core_->guide()->prepare([map] { return mediaPage(map); });
        core_->openGuide(mediaTitle(map), describeParams(map), bootMediaWork(map));
        return;
    }
    core_->log()->write(installs ? QStringLiteral("pre-OS environment installed")
                                 : QStringLiteral("pre-OS environment removed"));
    const GuidedWork work = bootMediaWork(map);
    Machine next = *core_->machine();
    if (attempt(next, static_cast<int>(work.function), work.params).isEmpty())
        core_->change(std::move(next));
}

void MainPage::opendiskhealth(QVariant task)
{
    core_->noteCall();
    core_->transcript().hostCall("__zormain", "opendiskhealth", {task});
    const int diskIndex = task.toMap().value(QStringLiteral("diskIndex")).toInt();
    const bool bad = core_->machine()->smartErrors.contains(diskIndex);
    core_->guide()->prepare(
        [machine = core_->machine(), diskIndex] { return healthPage(*machine, diskIndex); });
    core_->openGuide({QT_TRANSLATE_NOOP("Sandbox", "Disk health: disk %1"), {QString::number(diskIndex)}},
                     bad ? QStringLiteral("there are errors") : QStringLiteral("good"));
}

QVariant MainPage::passwordResetEnabled()
{
    return core_->told("__zormain", "passwordResetEnabled", {}, QVariant(isToolEnabled(kPasswordReset)));
}

QVariant MainPage::bootrepairEnabled()
{
    return core_->told("__zormain", "bootrepairEnabled", {}, QVariant(isToolEnabled(kBootRepair)));
}

QVariant MainPage::doToolBox(QVariant index, QVariant record)
{
    core_->noteCall();
    const QVariantMap map = record.toMap();
    const QString name = toolboxName(index.toInt());
    const Text objection = core_->isClosing() ? Text(QT_TRANSLATE_NOOP("Sandbox", "the host is closing"))
                                              : toolboxObjection(*core_->machine(), index.toInt(), map);
    if (!objection.isEmpty()) {
        core_->noteRefusal({QT_TRANSLATE_NOOP("Sandbox", "toolbox %1"), {QString::number(index.toInt())}},
                           name, objection);
        core_->transcript().hostCall("__zormain", "doToolBox", {index, record}, false, objection.english());
        return false;
    }
    core_->guide()->prepare([name, map] { return toolboxPage(name, map); });
    core_->openGuide({QT_TRANSLATE_NOOP("Sandbox", "Toolbox: %1"), {name}},
                     map.isEmpty() ? Text() : describeRecord(map), toolboxWork(index.toInt(), map));
    return core_->told("__zormain", "doToolBox", {index, record}, QVariant(true));
}

bool MainPage::isToolEnabled(int index)
{
    core_->noteCall();
    return !core_->isClosing() && core_->machine()->toolbox.value(toolboxName(index), true);
}

QVariant QmlExecuter::sendUserInfo(QVariant category, QVariant event, QVariant info, QVariant extra)
{
    core_->noteCall();
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
