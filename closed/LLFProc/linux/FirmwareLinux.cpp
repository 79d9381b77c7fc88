#include "closed/LLFProc/linux/FirmwareLinux.h"

#include <QtCore/QFileInfo>

FirmwareCalls firmwareCallsOf(const QString& root)
{
    FirmwareCalls calls;
    calls.type = [root](quint32* type) {
        *type = QFileInfo::exists(root + QLatin1String("/sys/firmware/efi")) ? 2 : 1;
        return true;
    };
    return calls;
}

FirmwareCalls systemFirmwareCalls()
{
    return firmwareCallsOf(QString());
}
