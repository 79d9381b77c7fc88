#include "host/objects/GuidePages.h"

#include "host/machine/GuidedTasks.h"
#include "host/objects/DiskText.h"

#include <algorithm>

namespace host {

namespace {

const QStringList kCloneSteps = {QStringLiteral("Source"), QStringLiteral("Destination"),
                                 QStringLiteral("Start")};
const QStringList kConvertSteps = {QStringLiteral("Check"), QStringLiteral("Start")};
const QStringList kCloneKinds = {QStringLiteral("system, from its drive"),
                                 QStringLiteral("system, from its disk"), QStringLiteral("disk to disk"),
                                 QStringLiteral("partition to partition")};

QVariantMap fact(const QString& name, const QString& value)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}};
}

QString textOf(const QVariantMap& map, const char* key)
{
    return map.value(QLatin1String(key)).toString();
}

bool isSet(const QVariantMap& map, const char* key)
{
    return map.value(QLatin1String(key)).toBool();
}

QString targetText(const QVariantMap& task, const char* letterKey)
{
    const QString letter = textOf(task, letterKey);
    if (!letter.isEmpty())
        return QStringLiteral("drive %1").arg(letter);
    const int diskIndex = task.value(QStringLiteral("diskIndex"), -1).toInt();
    return diskIndex >= 0 ? QStringLiteral("disk %1").arg(diskIndex) : QStringLiteral("to be chosen");
}

QString healthText(const Disk& disk, bool hasErrors)
{
    if (disk.isOffline)
        return QStringLiteral("unknown, the disk is offline");
    return hasErrors || disk.isBad ? QStringLiteral("the disk reports errors") : QStringLiteral("good");
}

} // namespace

QString recordText(const QVariantMap& record)
{
    QStringList parts;
    for (const char* key : {"diskInterface", "fsString", "label"})
        parts.append(textOf(record, key));
    if (record.contains(QStringLiteral("size")))
        parts.append(sizeText(record.value(QStringLiteral("size")).toLongLong()));
    const qint64 used = record.value(QStringLiteral("usedSize")).toLongLong();
    if (used > 0)
        parts.append(QStringLiteral("%1 used").arg(sizeText(used)));
    parts.removeAll(QString());
    const QString name = describeRecord(record);
    return parts.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, parts.join(QStringLiteral(", ")));
}

GuidePage clonePage(const QVariantMap& result)
{
    const QVariantMap source = result.value(QStringLiteral("source")).toMap();
    const QVariantMap destination = result.value(QStringLiteral("destination")).toMap();
    GuidePage page;
    page.title = QStringLiteral("Clone: %1 to %2").arg(describeRecord(source), describeRecord(destination));
    page.steps = kCloneSteps;
    page.step = std::clamp(result.value(QStringLiteral("goToPageIndex")).toInt() - 1, 0, 2);
    page.objection = textOf(result, "errMsg");
    page.facts = {fact(QStringLiteral("Kind"),
                       kCloneKinds.value(result.value(QStringLiteral("cloneType"), -1).toInt())),
                  fact(QStringLiteral("Source"), recordText(source)),
                  fact(QStringLiteral("Destination"), recordText(destination))};
    return page;
}

GuidePage convertPage(const QVariantMap& task, const QString& objection)
{
    const QVariantMap record = task.value(QStringLiteral("info")).toMap();
    const QString target = conversionName(task.value(QStringLiteral("funIdx"), -1).toInt());
    GuidePage page;
    page.title = QStringLiteral("Convert: %1 to %2").arg(describeRecord(record), target);
    page.steps = kConvertSteps;
    page.step = objection.isEmpty() ? 1 : 0;
    page.objection = objection;
    page.facts = {fact(QStringLiteral("Target"), recordText(record)),
                  fact(QStringLiteral("Becomes"), target)};
    return page;
}

GuidePage recoveryPage(const QVariantMap& task)
{
    GuidePage page;
    const QString target = targetText(task, "driveLetter");
    page.title = QStringLiteral("Partition recovery: %1").arg(target);
    page.facts = {fact(QStringLiteral("Search in"), target)};
    return page;
}

GuidePage mediaPage(const QVariantMap& task)
{
    const bool toFile = isSet(task, "createToFile");
    const QString kind = toFile                  ? QStringLiteral("ISO file")
                         : isSet(task, "isBurn") ? QStringLiteral("Windows installer")
                                                 : QStringLiteral("USB disk");
    GuidePage page;
    page.isDialog = true;
    page.title = QStringLiteral("Boot media: %1").arg(kind);
    page.facts = {fact(QStringLiteral("Medium"), kind)};
    if (!toFile)
        page.facts.append(fact(QStringLiteral("Target"), targetText(task, "usbDriveLetter")));
    return page;
}

GuidePage healthPage(const Machine& machine, int diskIndex)
{
    GuidePage page;
    page.isDialog = true;
    page.title = QStringLiteral("Disk health: disk %1").arg(diskIndex);
    const Disk* disk = machine.disk(diskIndex);
    if (disk == nullptr) {
        page.text = QStringLiteral("There is no such disk.");
        return page;
    }
    page.facts = {fact(QStringLiteral("Disk"), diskKindText(*disk)),
                  fact(QStringLiteral("Capacity"), sizeText(disk->size)),
                  fact(QStringLiteral("Serial number"),
                       disk->serialNO.isEmpty() ? QStringLiteral("unknown") : disk->serialNO),
                  fact(QStringLiteral("Health"), healthText(*disk, machine.smartErrors.contains(diskIndex)))};
    return page;
}

GuidePage toolboxPage(const QString& name, const QVariantMap& record)
{
    static const QMap<QString, QString> titles = {
        {QStringLiteral("passwordReset"), QStringLiteral("Reset a Windows password")},
        {QStringLiteral("bootRepair"), QStringLiteral("Repair the Windows start")},
        {QStringLiteral("writeProtection"), QStringLiteral("Set or clear write protection")},
        {QStringLiteral("rebuildMbr"), QStringLiteral("Rebuild the MBR")},
        {QStringLiteral("align4k"), QStringLiteral("Align to 4 KiB")},
        {QStringLiteral("windows11Check"), QStringLiteral("Check for Windows 11")},
        {QStringLiteral("badSectors"), QStringLiteral("Look for bad sectors")},
        {QStringLiteral("bitLockerKey"), QStringLiteral("Find the BitLocker recovery key")},
        {QStringLiteral("checkFileSystem"), QStringLiteral("Check the file system")}};
    GuidePage page;
    page.isDialog = true;
    page.title = QStringLiteral("Toolbox: %1").arg(name);
    page.facts = {fact(QStringLiteral("Function"), titles.value(name, name))};
    if (!record.isEmpty())
        page.facts.append(fact(QStringLiteral("Target"), recordText(record)));
    return page;
}

} // namespace host
