#include "recscan/HostUrl.h"

#include "plugin/HostAccess.h"

bool openUrlOnHost(QString url)
{
    return callWindowMethod("openUrl", QVariant(url)).toBool();
}
