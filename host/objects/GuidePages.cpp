#include "host/objects/GuidePages.h"

#include "host/machine/Conversions.h"
#include "host/machine/Toolbox.h"
#include "host/objects/DiskText.h"
#include "host/objects/HostCore.h"

#include <algorithm>

namespace host {

namespace {

// By cloneType.
constexpr const char* kCloneKinds[] = {QT_TRANSLATE_NOOP("Sandbox", "system, from its drive"),
                                       QT_TRANSLATE_NOOP("Sandbox", "system, from its disk"),
                                       QT_TRANSLATE_NOOP("Sandbox", "disk to disk"),
                                       QT_TRANSLATE_NOOP("Sandbox", "partition to partition")};
constexpr int kCloneKindCount = 4;

QVariantMap fact(const char* name, const Text& value)
{
    return {{QStringLiteral("name"), Text(name).translated()}, {QStringLiteral("value"), value.translated()}};
}

QStringList translatedAll(std::initializer_list<const char*> texts)
{
    QStringList all;
    for (const char* text : texts)
        all.append(Text(text).translated());
    return all;
}

Text cloneKind(int cloneType)
{
    return cloneType >= 0 && cloneType < kCloneKindCount ? Text(kCloneKinds[cloneType]) : Text();
}

QString textOf(const QVariantMap& map, const char* key)
{
    return map.value(QLatin1String(key)).toString();
}

bool isSet(const QVariantMap& map, const char* key)
{
    return map.value(QLatin1String(key)).toBool();
}

Text targetText(const QVariantMap& task, const char* letterKey)
{
    const QString letter = textOf(task, letterKey);
    if (!letter.isEmpty())
        return {QT_TRANSLATE_NOOP("Sandbox", "drive %1"), {letter}};
    const int diskIndex = task.value(QStringLiteral("diskIndex"), -1).toInt();
    return diskIndex >= 0 ? Text(QT_TRANSLATE_NOOP("Sandbox", "disk %1"), {QString::number(diskIndex)})
                          : Text(QT_TRANSLATE_NOOP("Sandbox", "to be chosen"));
}

Text healthText(const Disk& disk, bool hasErrors)
{
    if (disk.isOffline)
        return QT_TRANSLATE_NOOP("Sandbox", "unknown, the disk is offline");
    return hasErrors || disk.isBad ? QT_TRANSLATE_NOOP("Sandbox", "the disk reports errors")
                                   : QT_TRANSLATE_NOOP("Sandbox", "good");
}

Text mediaKind(const QVariantMap& task)
{
    if (isSet(task, "createToFile"))
        return QT_TRANSLATE_NOOP("Sandbox", "ISO file");
    return isSet(task, "isBurn") ? QT_TRANSLATE_NOOP("Sandbox", "Windows installer")
                                 : QT_TRANSLATE_NOOP("Sandbox", "USB disk");
}

// A record's words and sizes: "drive D (NTFS, Data, 300 GB, 120 GB used)".
QString recordText(const QVariantMap& record)
{
    QStringList parts;
    for (const char* key : {"diskInterface", "fsString", "label"})
        parts.append(textOf(record, key));
    if (record.contains(QStringLiteral("size")))
        parts.append(sizeText(record.value(QStringLiteral("size")).toLongLong()));
    const qint64 used = record.value(QStringLiteral("usedSize")).toLongLong();
    if (used > 0)
        parts.append(Text(QT_TRANSLATE_NOOP("Sandbox", "%1 used"), {sizeText(used)}).translated());
    parts.removeAll(QString());
    const QString name = describeRecord(record).translated();
    return parts.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, parts.join(QStringLiteral(", ")));
}

GuidePage clonePage(const QVariantMap& result)
{
    const QVariantMap source = result.value(QStringLiteral("source")).toMap();
    const QVariantMap destination = result.value(QStringLiteral("destination")).toMap();
    GuidePage page;
    page.steps =
        translatedAll({QT_TRANSLATE_NOOP("Sandbox", "Source"), QT_TRANSLATE_NOOP("Sandbox", "Destination"),
                       QT_TRANSLATE_NOOP("Sandbox", "Start")});
    page.step = std::clamp(result.value(QStringLiteral("goToPageIndex")).toInt() - 1, 0, 2);
    page.rejection = Text::returned(textOf(result, "errMsg")).translated();
    page.facts = {fact(QT_TRANSLATE_NOOP("Sandbox", "Kind"),
                       cloneKind(result.value(QStringLiteral("cloneType"), -1).toInt())),
                  fact(QT_TRANSLATE_NOOP("Sandbox", "Source"), recordText(source)),
                  fact(QT_TRANSLATE_NOOP("Sandbox", "Destination"), recordText(destination))};
    return page;
}

GuidePage convertPage(const QVariantMap& record, const Text& target, const Rejection& rejection)
{
    GuidePage page;
    page.steps =
        translatedAll({QT_TRANSLATE_NOOP("Sandbox", "Check"), QT_TRANSLATE_NOOP("Sandbox", "Start")});
    page.step = rejection ? 0 : 1;
    page.rejection = rejection ? rejection->translated() : QString();
    page.facts = {fact(QT_TRANSLATE_NOOP("Sandbox", "Target"), recordText(record)),
                  fact(QT_TRANSLATE_NOOP("Sandbox", "Becomes"), target)};
    return page;
}

GuidePage recoveryPage(const QVariantMap& task)
{
    GuidePage page;
    page.facts = {fact(QT_TRANSLATE_NOOP("Sandbox", "Search in"), targetText(task, "driveLetter"))};
    return page;
}

GuidePage mediaPage(const QVariantMap& task)
{
    GuidePage page;
    page.isDialog = true;
    page.facts = {fact(QT_TRANSLATE_NOOP("Sandbox", "Medium"), mediaKind(task))};
    if (!isSet(task, "createToFile"))
        page.facts.append(fact(QT_TRANSLATE_NOOP("Sandbox", "Target"), targetText(task, "usbDriveLetter")));
    return page;
}

GuidePage healthPage(const Machine& machine, int diskIndex)
{
    GuidePage page;
    page.isDialog = true;
    const Disk* disk = machine.disk(diskIndex);
    if (disk == nullptr) {
        page.text = Text(QT_TRANSLATE_NOOP("Sandbox", "The disk does not exist.")).translated();
        return page;
    }
    page.facts = {
        fact(QT_TRANSLATE_NOOP("Sandbox", "Disk"), diskKindText(*disk)),
        fact(QT_TRANSLATE_NOOP("Sandbox", "Capacity"), sizeText(disk->size)),
        fact(QT_TRANSLATE_NOOP("Sandbox", "Serial number"),
             disk->serialNO.isEmpty() ? Text(QT_TRANSLATE_NOOP("Sandbox", "unknown")) : Text(disk->serialNO)),
        fact(QT_TRANSLATE_NOOP("Sandbox", "Health"),
             healthText(*disk, machine.smartErrors.contains(diskIndex)))};
    return page;
}

GuidePage toolboxPage(const QString& name, const QVariantMap& record)
{
    static const QMap<QString, Text> titles = {
        {QStringLiteral("passwordReset"), QT_TRANSLATE_NOOP("Sandbox", "Reset a Windows password")},
        {QStringLiteral("bootRepair"), QT_TRANSLATE_NOOP("Sandbox", "Repair the Windows start")},
        {QStringLiteral("writeProtection"), QT_TRANSLATE_NOOP("Sandbox", "Set or clear write protection")},
        {QStringLiteral("rebuildMbr"), QT_TRANSLATE_NOOP("Sandbox", "Rebuild the MBR")},
        {QStringLiteral("align4k"), QT_TRANSLATE_NOOP("Sandbox", "Align to 4 KiB")},
        {QStringLiteral("windows11Check"), QT_TRANSLATE_NOOP("Sandbox", "Check for Windows 11")},
        {QStringLiteral("badSectors"), QT_TRANSLATE_NOOP("Sandbox", "Look for bad sectors")},
        {QStringLiteral("bitLockerKey"), QT_TRANSLATE_NOOP("Sandbox", "Find the BitLocker recovery key")},
        {QStringLiteral("checkFileSystem"), QT_TRANSLATE_NOOP("Sandbox", "Check the file system")}};
    GuidePage page;
    page.isDialog = true;
    page.facts = {fact(QT_TRANSLATE_NOOP("Sandbox", "Function"), titles.value(name, name))};
    if (!record.isEmpty())
        page.facts.append(fact(QT_TRANSLATE_NOOP("Sandbox", "Target"), recordText(record)));
    return page;
}

QString cloneSummary(const QVariantMap& result)
{
    const QString rejection = textOf(result, "errMsg");
    const QString step = QStringLiteral("step %1").arg(result.value(QStringLiteral("goToPageIndex")).toInt());
    return rejection.isEmpty() ? step : QStringLiteral("%1: %2").arg(step, rejection);
}

} // namespace

Guide cloneGuide(const QVariantMap& result)
{
    const QVariantMap source = result.value(QStringLiteral("source")).toMap();
    const QVariantMap destination = result.value(QStringLiteral("destination")).toMap();
    return {{QT_TRANSLATE_NOOP("Sandbox", "Clone: %1 to %2"),
             {describeRecord(source), describeRecord(destination)}},
            cloneSummary(result),
            cloneWork(result.value(QStringLiteral("cloneType")).toInt(), source, destination),
            [result] { return clonePage(result); }};
}

Rejection conversionRejection(const Backend& backend, std::optional<Conversion> conversion,
                              const QVariantMap& record)
{
    if (!conversion)
        return conversionRejection(*backend.machine(), conversion, record);
    const Function function = conversionWork(*conversion, record).function;
    return backend.taskRejection(static_cast<int>(function), record);
}

Guide convertGuide(const Backend& backend, const QVariantMap& task)
{
    const auto conversion = conversionOf(task.value(QStringLiteral("funIdx")).toInt());
    const QVariantMap record = task.value(QStringLiteral("info")).toMap();
    const Rejection rejection = conversionRejection(backend, conversion, record);
    const Text target = conversion ? conversionName(*conversion) : Text();
    return {{QT_TRANSLATE_NOOP("Sandbox", "Convert: %1 to %2"), {describeRecord(record), target}},
            rejection.value_or(Text()),
            conversion ? std::optional<GuidedWork>(conversionWork(*conversion, record)) : std::nullopt,
            [record, target, rejection] { return convertPage(record, target, rejection); }};
}

Guide recoveryGuide(const QVariantMap& task)
{
    return {{QT_TRANSLATE_NOOP("Sandbox", "Partition recovery: %1"), {targetText(task, "driveLetter")}},
            describeParams(task),
            recoveryWork(task),
            [task] { return recoveryPage(task); }};
}

Guide mediaGuide(const QVariantMap& task)
{
    return {{QT_TRANSLATE_NOOP("Sandbox", "Boot media: %1"), {mediaKind(task)}},
            describeParams(task),
            bootMediaWork(task),
            [task] { return mediaPage(task); }};
}

Guide healthGuide(const std::shared_ptr<const Machine>& machine, int diskIndex)
{
    const bool bad = machine->smartErrors.contains(diskIndex);
    return {{QT_TRANSLATE_NOOP("Sandbox", "Disk health: disk %1"), {QString::number(diskIndex)}},
            bad ? QStringLiteral("there are errors") : QStringLiteral("good"),
            std::nullopt,
            [machine, diskIndex] { return healthPage(*machine, diskIndex); }};
}

Guide toolboxGuide(int index, const QVariantMap& record)
{
    const QString name = toolboxName(index);
    return {{QT_TRANSLATE_NOOP("Sandbox", "Toolbox: %1"), {name}},
            record.isEmpty() ? Text() : describeRecord(record),
            toolboxWork(index, record),
            [name, record] { return toolboxPage(name, record); }};
}

} // namespace host
