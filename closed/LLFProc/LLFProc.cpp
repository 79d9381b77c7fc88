#include "closed/LLFProc/LLFProc.h"

#include <QtCore/QFileInfo>

bool MayBeSupportUEFI()
{
    const QString forced = qEnvironmentVariable("AIBRIDGE_UEFI");
    if (forced == QLatin1String("0") || forced == QLatin1String("1"))
        return forced == QLatin1String("1");
    return QFileInfo::exists(QStringLiteral("/sys/firmware/efi"));
}
