// Boot media and the pre-OS environment.
#include "tools/HostPages.h"
#include "tools/Reply.h"
#include "tools/ToolBridge.h"
#include "tools/ZorHandle.h"

namespace {

const QString kIsBurn = QStringLiteral("isBurn");

} // namespace

void CZorHandle::runBootMediaTask(std::string& answer)
{
    if (bridge->pages.doBmFunForAI(paramsCopy()))
        answer = reply(true);
}

void CZorHandle::CreateBootableISO(std::string& answer)
{
    answer = reply(false);
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(QStringLiteral("createToFile"), QVariant(true));
    setParam(kIsBurn, QVariant(false));
    runBootMediaTask(answer);
}

void CZorHandle::CreateBootableUsbByDisk(std::string& answer, int32_t diskIndex)
{
    answer = reply(false);
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(QStringLiteral("diskIndex"), QVariant(diskIndex));
    setParam(kIsBurn, QVariant(false));
    runBootMediaTask(answer);
}

void CZorHandle::CreateBootableUsbByDriveLetter(std::string& answer, const std::string& driveLetter)
{
    answer = reply(false);
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(QStringLiteral("usbDriveLetter"), QVariant(normalisedLetter(driveLetter)));
    setParam(kIsBurn, QVariant(false));
    runBootMediaTask(answer);
}

void CZorHandle::CreateWindowsInstallerMedia(std::string& answer)
{
    answer = reply(false);
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(kIsBurn, QVariant(true));
    runBootMediaTask(answer);
}

void CZorHandle::InstallAndEnablePreOS(std::string& answer)
{
    answer = reply(false);
    if (bridge == nullptr || bridge->pages.isAlreadyPreOS())
        return;
    ResetParams();
    setParam(QStringLiteral("isInstallPreOs"), QVariant(true));
    runBootMediaTask(answer);
}

void CZorHandle::DisablePreOS(std::string& answer)
{
    answer = reply(false);
    if (bridge == nullptr || !bridge->pages.isAlreadyPreOS())
        return;
    // Unlike InstallAndEnablePreOS, this tool answers before the task runs, and the task does not change the
    // answer.
    answer = reply(true);
    ResetParams();
    setParam(QStringLiteral("isDisablePreOs"), QVariant(true));
    bridge->pages.doBmFunForAI(paramsCopy());
}
