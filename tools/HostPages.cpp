#include "tools/HostPages.h"

#include "inventory/Inventory.h"
#include "plugin/ComponentBase.h"
#include "plugin/HostCall.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

const QString kIsBurn = QStringLiteral("isBurn");

HostMethod partitionPage(const HostPages& pages)
{
    return HostMethod(contextObject(pages.engine(), QStringLiteral("partitionmanager")), "doFunFromAI");
}

// Calls a function of the main object and discards its result. Returns true if the method exists.
bool callMainObject(const HostPages& pages, const char* method, const QVariantMap& info)
{
    const HostMethod function(pages.mainObject(), method);
    if (!function.isValid())
        return false;
    function.order(ConnectionRule::Call, QVariant(info));
    return true;
}

} // namespace

void closeGuide()
{
    callWindowMethod("closeGuide", QVariant());
}

HostPages::HostPages(const CComponentBase& component, const Inventory& inventory)
    : component_(component), inventory_(inventory)
{
}

QQmlApplicationEngine* HostPages::engine() const
{
    return component_.engine();
}

QObject* HostPages::mainObject() const
{
    return findRootChild(engine(), QStringLiteral("__zormain"));
}

bool HostPages::isFunValidForAI(int functionIndex, QVariantMap params) const
{
    params[QStringLiteral("TestFunValid")] = true;
    return partitionPage(*this).call<bool>(ConnectionRule::Call, functionIndex, params).value_or(false);
}

void HostPages::doFunFromAI(int functionIndex, const QVariantMap& params) const
{
    const HostMethod page = partitionPage(*this);
    // An open guide is closed even if the page is missing.
    closeGuide();
    page.order(ConnectionRule::Call, functionIndex, params);
}

bool HostPages::doPrFunForAI(bool isPartRecov, QVariantMap info) const
{
    closeGuide();
    info[QStringLiteral("isPartRecov")] = isPartRecov;
    // Only an agent's call is checked. A call on the application thread is the user's own action.
    if (isPartRecov && !isApplicationThread()) {
        QObject* recovery = contextObject(engine(), QStringLiteral("partitionrecovery"));
        if (!callHost<bool>(recovery, "isDiskIndexValid", ConnectionRule::Call, QVariant(info))
                 .value_or(false))
            return false;
    }
    return callMainObject(*this, "doprfunction", info);
}

bool HostPages::openDiskHealth(int diskIndex) const
{
    closeGuide();
    if (!isApplicationThread() && !inventory_.hasPartitions(diskIndex))
        return false;
    return callMainObject(*this, "opendiskhealth", {{QStringLiteral("diskIndex"), diskIndex}});
}

bool HostPages::isBmFunValid(const QVariantMap& info) const
{
    // The host checks only tasks whose key isBurn exists and is false.
    if (!info.contains(kIsBurn) || info.value(kIsBurn).toBool())
        return true;
    return callHost<QVariant>(mainObject(), "createBootMediaEnabled", ConnectionRule::Call, QVariant(info))
        .value_or(QVariant())
        .toBool();
}

bool HostPages::doBmFunForAI(const QVariantMap& info) const
{
    closeGuide();
    const bool valid = isBmFunValid(info);
    if (valid)
        orderHost(mainObject(), "dobmfunction", ConnectionRule::Call, QVariant(info));
    return valid;
}

bool HostPages::isAlreadyPreOS() const
{
    QObject* media = contextObject(engine(), QStringLiteral("bootablemedia"));
    return callHost<bool>(media, "isAlreadyEnable", ConnectionRule::Call).value_or(false);
}
