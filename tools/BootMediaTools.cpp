// Boot media and the pre-OS environment.
#include "plugin/AIBridge.h"
#include "plugin/HostCall.h"
#include "service/ZorHandle.h"
#include "tools/ToolBox.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

const QString kIsBurn = QStringLiteral("isBurn");

} // namespace

bool AIBridge::isBmFunValid(QVariantMap info)
{
    // Only a task that carries the key with the value false is put to the host.
    if (!info.contains(kIsBurn) || info.value(kIsBurn).toBool())
        return true;
    return callHost<QVariant>(hostMainObject(*this), "createBootMediaEnabled", ConnectionRule::Call,
                              QVariant(info))
        .value_or(QVariant())
        .toBool();
}

bool AIBridge::doBmFunForAI(QVariantMap info)
{
    closeGuide();
    const bool valid = isBmFunValid(info);
    // A host without the method does nothing, and that is no refusal.
    if (valid)
        orderHost(hostMainObject(*this), "dobmfunction", ConnectionRule::Call, QVariant(info));
    return valid;
}

bool AIBridge::isAlreadyPreOS()
{
    QObject* media = contextObject(engine(), QStringLiteral("bootablemedia"));
    return callHost<bool>(media, "isAlreadyEnable", ConnectionRule::Call).value_or(false);
}

void CZorHandle::runBootMediaTask(std::string& answer)
{
    if (bridge->doBmFunForAI(paramsCopy()))
        answer = kTaskQueued;
}

void CZorHandle::CreateBootableISO(std::string& answer)
{
    answer = kTaskNotValid;
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(QStringLiteral("createToFile"), QVariant(true));
    setParam(kIsBurn, QVariant(false));
    runBootMediaTask(answer);
}

void CZorHandle::CreateBootableUsbByDisk(std::string& answer, int32_t diskIndex)
{
    answer = kTaskNotValid;
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(QStringLiteral("diskIndex"), QVariant(diskIndex));
    setParam(kIsBurn, QVariant(false));
    runBootMediaTask(answer);
}

void CZorHandle::CreateBootableUsbByDriveLetter(std::string& answer, const std::string& driveLetter)
{
    answer = kTaskNotValid;
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(QStringLiteral("usbDriveLetter"), QVariant(normalisedLetter(driveLetter)));
    setParam(kIsBurn, QVariant(false));
    runBootMediaTask(answer);
}

void CZorHandle::CreateWindowsInstallerMedia(std::string& answer)
{
    answer = kTaskNotValid;
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(kIsBurn, QVariant(true));
    runBootMediaTask(answer);
}

void CZorHandle::InstallAndEnablePreOS(std::string& answer)
{
    answer = kTaskNotValid;
    if (bridge == nullptr || bridge->isAlreadyPreOS())
        return;
    ResetParams();
    setParam(QStringLiteral("isInstallPreOs"), QVariant(true));
    runBootMediaTask(answer);
}

void CZorHandle::DisablePreOS(std::string& answer)
{
    answer = kTaskNotValid;
    if (bridge == nullptr || !bridge->isAlreadyPreOS())
        return;
    // Unlike its mirror, this tool answers before the task is run, and the task does not change the answer.
    answer = kTaskQueued;
    ResetParams();
    setParam(QStringLiteral("isDisablePreOs"), QVariant(true));
    bridge->doBmFunForAI(paramsCopy());
}
