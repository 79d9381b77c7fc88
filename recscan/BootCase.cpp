#include "recscan/CaseTools.h"

#include "platform/Platform.h"
#include "recscan/ActionIndex.h"
#include "recscan/BootChecker.h"

#include <QtCore/QObject>

std::optional<Recommendation> checkBootEntries(const ScanSubject&)
{
    if (isArm64Machine() || !bootCheckerFindsError())
        return std::nullopt;
    return recommend(
        ActionRepairBoot,
        QObject::tr("Invalid or duplicate boot entries were found in the system boot menu. We recommend "
                    "removing them with one click! "));
}
