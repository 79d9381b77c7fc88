#include "recscan/RecAction.h"

#include "closed/UIUtility/UIUtility.h"
#include "plugin/HostAccess.h"
#include "recscan/ActionIndex.h"
#include "tools/HostRecords.h"

#include "ZORNativePlugin.h"

namespace {

void openConfiguredUrl(const QString& key)
{
    openUrlOnHost(UIUtility::instance()->GetFireBaseConfigString(key, QString()));
}

} // namespace

bool openUrlOnHost(const QString& url)
{
    return callWindowMethod("openUrl", QVariant(url)).toBool();
}

bool isCalledByWin11Checker(const QVariantMap& answer)
{
    return answer.value(QStringLiteral("callByWin11Checker")).toBool();
}

void runWin11Action(ZORNativePluginIf& tools, const HostPages* pages, const QVariantMap& answer,
                    const QVariantMap& actionParams)
{
    switch (answer.value(QStringLiteral("checkResultType")).toInt()) {
    case Win11Ready:
        openConfiguredUrl(QStringLiteral("url_win11_hw_ready"));
        break;
    case Win11NotReady:
        openConfiguredUrl(QStringLiteral("url_win11_hw_not_ready"));
        break;
    case Win11NeedsGpt: {
        const QVariantMap target = isCalledByWin11Checker(answer) ? getBootDisk(pages) : actionParams;
        std::string reply;
        tools.ConvertDiskToGpt(reply, target.value(QStringLiteral("diskIndex")).toInt());
        break;
    }
    default:
        break;
    }
}
