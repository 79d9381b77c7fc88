#include "host/objects/WindowObjects.h"

#include "host/machine/GuidedTasks.h"
#include "host/machine/Orders.h"
#include "host/objects/GuidePages.h"

#include <QtQml/qqml.h>

namespace host {

namespace {

constexpr int kPasswordReset = 1;
constexpr int kBootRepair = 2;

QString mediaTitle(const QVariantMap& task)
{
    if (task.value(QStringLiteral("createToFile")).toBool())
        return QStringLiteral("Boot media: ISO file");
    if (task.value(QStringLiteral("isBurn")).toBool())
        return QStringLiteral("Boot media: Windows installer");
    return QStringLiteral("Boot media: USB disk");
}

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
    const QString target =
        map.contains(QStringLiteral("driveLetter"))
            ? QStringLiteral("drive %1").arg(map.value(QStringLiteral("driveLetter")).toString())
            : QStringLiteral("disk %1").arg(map.value(QStringLiteral("diskIndex")).toInt());
    core_->guide()->prepare(recoveryPage(map));
    core_->openGuide(QStringLiteral("Partition recovery: %1").arg(target), describeParams(map),
                     recoveryWork(map));
}

QVariant MainPage::createBootMediaEnabled(QVariant task)
{
    core_->noteCall();
    const auto machine = core_->machine();
    const bool enabled =
        !core_->isClosing() && machine->bootMediaEnabled && bootMediaTargetExists(*machine, task.toMap());
    if (!enabled)
        core_->noteRefusal(QStringLiteral("boot media"), describeParams(task.toMap()),
                           QStringLiteral("boot media cannot be made there"));
    return core_->told("__zormain", "createBootMediaEnabled", {task}, QVariant(enabled));
}

void MainPage::dobmfunction(QVariant task)
{
    core_->noteCall();
    core_->transcript().hostCall("__zormain", "dobmfunction", {task});
    const QVariantMap map = task.toMap();
    const bool installs = map.value(QStringLiteral("isInstallPreOs")).toBool();
    if (!installs && !map.value(QStringLiteral("isDisablePreOs")).toBool()) {
        core_->guide()->prepare(mediaPage(map));
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
    core_->guide()->prepare(healthPage(*core_->machine(), diskIndex));
    core_->openGuide(QStringLiteral("Disk health: disk %1").arg(diskIndex),
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
    const QString objection = core_->isClosing() ? QStringLiteral("the host is closing")
                                                 : toolboxObjection(*core_->machine(), index.toInt(), map);
    if (!objection.isEmpty()) {
        core_->noteRefusal(QStringLiteral("toolbox %1").arg(index.toInt()), name, objection);
        core_->transcript().hostCall("__zormain", "doToolBox", {index, record}, false, objection);
        return false;
    }
    core_->guide()->prepare(toolboxPage(name, map));
    core_->openGuide(QStringLiteral("Toolbox: %1").arg(name), map.isEmpty() ? QString() : describeRecord(map),
                     toolboxWork(index.toInt(), map));
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
