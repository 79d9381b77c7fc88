#include "closed/LLFProc/LLFProc.h"

#include "closed/LLFProc/Firmware.h"

#include <QtCore/QString>

bool MayBeSupportUEFI()
{
    const QString forced = qEnvironmentVariable("AIBRIDGE_UEFI");
    if (forced == QLatin1String("0") || forced == QLatin1String("1"))
        return forced == QLatin1String("1");
    return startedThroughUefi(systemFirmwareCalls());
}
