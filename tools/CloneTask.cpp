#include "tools/CloneTask.h"

#include "plugin/HostCall.h"
#include "tools/HostPages.h"
#include "tools/HostRecords.h"
#include "tools/Reply.h"
#include "tools/ToolBridge.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

const QString kDiskIndex = QStringLiteral("diskIndex");
const QString kCloneType = QStringLiteral("cloneType");
const QString kDefBoot = QStringLiteral("defBoot");
const QString kIsDiskItem = QStringLiteral("isDiskItem");
const QString kIsBoot = QStringLiteral("isBoot");

// Steps of the clone guide.
enum Page { PageSource = 1, PageDestination = 2, PageOptions = 3 };

bool hasDiskIndex(const QVariantMap& record)
{
    return record.contains(kDiskIndex) && record.value(kDiskIndex).toInt() != -1;
}

QString missingDiskText(const QVariantMap& record)
{
    return QStringLiteral("It seems that disk%1 is not exist").arg(record.value(kDiskIndex).toInt());
}

// Result of the validation: whether the clone result is emitted, the step that the guide opens at, and the
// error message.
struct Validation
{
    QString errMsg;
    int page = PageSource;
    bool queued = false;
};

// If the host does not list the record's disk, fills @p validation and returns false.
bool isListed(const ToolBridge* bridge, const QVariantMap& record, Validation& validation)
{
    if (hostHasDisk(&bridge->pages, record.value(kDiskIndex).toInt(), SelectForClone))
        return true;
    validation.queued = false;
    validation.errMsg = missingDiskText(record);
    return false;
}

QString rejection(const HostMethod& invalidInfo, const QVariantMap& source, const QVariantMap& destination,
                  int step, const QVariantMap& defBoot)
{
    return invalidInfo.call<QString>(ConnectionRule::Call, source, destination, step, defBoot)
        .value_or(QString());
}

Validation validate(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                    QVariantMap& result)
{
    Validation validation;
    if (bridge->pages.engine() == nullptr || !applyCloneType(bridge, source, destination, result))
        return validation;
    const HostMethod invalidInfo(contextObject(bridge->pages.engine(), QStringLiteral("clone")),
                                 "invalidInfo");
    if (!invalidInfo.isValid())
        return validation;
    validation.queued = true;
    const QVariantMap defBoot = result.value(kDefBoot).toMap();
    if (!hasDiskIndex(source) || !isListed(bridge, source, validation))
        return validation;
    validation.errMsg = rejection(invalidInfo, source, QVariantMap(), PageSource, defBoot);
    if (!validation.errMsg.isEmpty() || !hasDiskIndex(destination) ||
        !isListed(bridge, destination, validation))
        return validation;
    validation.page = PageDestination;
    validation.errMsg = rejection(invalidInfo, source, destination, PageDestination, defBoot);
    if (validation.errMsg.isEmpty())
        validation.page = PageOptions;
    return validation;
}

} // namespace

int deduceCloneType(const QVariantMap& source, const QVariantMap& destination)
{
    const bool usable = hasDiskIndex(source) && hasDiskIndex(destination) && source.contains(kIsDiskItem) &&
                        source.contains(kIsBoot) && destination.contains(kIsDiskItem) &&
                        destination.contains(kIsBoot);
    if (usable) {
        const bool disk = source.value(kIsDiskItem).toBool();
        const bool system = source.value(kIsBoot).toBool() && destination.value(kIsDiskItem).toBool();
        const int candidate =
            system ? (disk ? CloneSystemDisk : CloneSystemPartition) : (disk ? CloneDisk : ClonePartition);
        Q_UNUSED(candidate)
    }
    return -1;
}

bool applyCloneType(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                    QVariantMap& result)
{
    QObject* clone =
        bridge == nullptr ? nullptr : contextObject(bridge->pages.engine(), QStringLiteral("clone"));
    const QMetaProperty property = findHostProperty(clone, "cloneType");
    if (clone == nullptr || !property.isValid())
        return false;
    int type = deduceCloneType(source, destination);
    if (type == -1)
        type = destination.value(kCloneType).toInt();
    property.write(clone, type);
    result[kCloneType] = type;
    return true;
}

bool validateCloneTask(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                       QVariantMap& result)
{
    if (bridge == nullptr)
        return false;
    const Validation validation = validate(bridge, source, destination, result);
    result[QStringLiteral("source")] = source;
    result[QStringLiteral("destination")] = destination;
    result[QStringLiteral("errMsg")] = validation.errMsg;
    result[QStringLiteral("goToPageIndex")] = validation.page;
    if (validation.queued)
        bridge->events.emitCloneResult(QVariant(result));
    return validation.queued;
}

std::string runCloneTask(const ToolBridge* bridge, const QVariantMap& source, const QVariantMap& destination,
                         int selector)
{
    closeGuide();
    if (bridge == nullptr)
        return reply(false);
    QVariantMap result{{kDefBoot, findDefaultBootPartition(&bridge->pages, selector, SelectNone)}};
    if (validateCloneTask(bridge, source, destination, result))
        return reply(true);
    return result.value(QStringLiteral("errMsg")).toString().toStdString();
}
