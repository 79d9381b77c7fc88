// The case that offers the upgrade to Windows 11.
#include "recscan/CaseTools.h"

#include "plugin/HostCall.h"
#include "recscan/ActionIndex.h"
#include "tools/HostRecords.h"
#include "win11/Win11Check.h"

#include <QtCore/QObject>
#include <QtQml/QQmlEngine>

namespace {

// The host sends the outcome back with the user's answer.
Recommendation recommendUpgrade(Win11CheckResult outcome, const QString& message, const QStringList& buttons)
{
    Recommendation result;
    result.record = makeRecord(message, buttons);
    result.record.insert(QStringLiteral("checkResultType"), static_cast<int>(outcome));
    result.actionIndex = ActionWin10EndOfSupport;
    return result;
}

Recommendation recommendGpt(const ScanSubject& subject)
{
    Recommendation result = recommendUpgrade(
        Win11NeedsGpt,
        QObject::tr("Windows 10 support ends soon! To install Windows 11, convert your system disk "
                    "to GPT first."),
        {QObject::tr("Convert today"), QObject::tr("Cancel")});
    if (const std::optional<SystemDrive> drive = findSystemDrive(subject))
        result.actionParams.insert(QStringLiteral("diskIndex"), drive->partition->diskIndex);
    return result;
}

} // namespace

std::optional<Recommendation> checkWin10EndOfSupport(const ScanSubject& subject)
{
    QObject* page = contextObject(subject.engine, QStringLiteral("partitionmanager"));
    if (!callHost<bool>(page, "isWin11CheckerEnable", ConnectionRule::Blocking).value_or(false))
        return std::nullopt;
    // Without a parent, because the scan's thread object lives on a different thread.
    Win11Check check;
    check.setGptDisk(isBootDiskGpt(subject.pages));
    if (!check.isGptDisk())
        return recommendGpt(subject);
    if (!check.checkAll())
        return recommendUpgrade(
            Win11NotReady,
            QObject::tr("Windows 10 support ends soon! Your device may not be compatible with Windows 11."),
            {QObject::tr("See upgrade options")});
    return recommendUpgrade(Win11Ready,
                            QObject::tr("Windows 10 support ends soon! Your PC is ready for Windows 11."),
                            {QObject::tr("Learn more")});
}
