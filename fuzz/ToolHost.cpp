#include "fuzz/ToolHost.h"

#include "fuzz/Fuzz.h"

// The mood sets the time since the last call.
class ToolHost::Tools : public CZorHandle
{
public:
    explicit Tools(const ToolHost* host) : host_(host) {}

protected:
    qint64 sinceLastCall() const override { return (host_->mood_ & TooSoon) != 0 ? 1999 : 2000; }

private:
    const ToolHost* host_;
};

QVariantList ToolHost::inventory()
{
    const QVariantMap c{
        {"diskIndex", 0}, {"driveLetter", "C:"}, {"size", 5000}, {"isBoot", true}, {"defBoot", true}};
    const QVariantMap e{{"diskIndex", 1}, {"driveLetter", "E:"}, {"size", 100}};
    const QVariantMap space{{"diskIndex", 1}, {"unallocated", true}, {"size", 9000}};
    return {QVariantMap{{"diskIndex", 0}, {"isBoot", true}, {"partitions", QVariantList{c}}},
            QVariantMap{{"diskIndex", 1}, {"isBoot", false}, {"partitions", QVariantList{e, space}}}};
}

ToolHost::ToolHost() : disks_(inventory()), tools_(std::make_shared<Tools>(this))
{
    fillSpecs();
    host_.build();
    tools_->setBridge(host_.toolBridge());
    host_.bridge()->setDiskInfo(inventory());
    host_.recorder().clear();
}

void ToolHost::fillSpecs()
{
    const FakeBody yes = [this](const QVariantList&) { return QVariant((mood_ & SaysNo) == 0); };
    const FakeBody disks = [this](const QVariantList&) { return disks_; };
    host_.spec("partitionmanager").answer("doFunFromAI", yes).answer("isWin11CheckerEnable", yes);
    host_.spec("partitionrecovery").answer("isDiskIndexValid", yes);
    host_.spec("bootablemedia").answer("isAlreadyEnable", [this](const QVariantList&) {
        return has(PreOsThere);
    });
    host_.spec("deviceMgr").answer("disks", disks).answer("bootDisks", disks);
    host_.spec("clone").answer("invalidInfo", [this](const QVariantList&) {
        return QVariant((mood_ & SaysNo) != 0 ? QStringLiteral("no room") : QString());
    });
    for (const char* question :
         {"createBootMediaEnabled", "passwordResetEnabled", "bootrepairEnabled", "doToolBox"})
        host_.spec("__zormain").answer(question, yes);
    host_.spec("__zormain").reading("busy", [this](const QVariantList&) { return has(Busy); });
    host_.spec("window").reading("popuped", [this](const QVariantList&) { return has(Popuped); });
}

void ToolHost::setMood(unsigned mood)
{
    mood_ = mood;
    host_.bridge()->CComponentBase::setEngine((mood & NoEngine) != 0 ? nullptr : host_.engine());
}

void ToolHost::checkCalls()
{
    QVariantList question;
    for (const HostCallRecord& call : host_.recorder().calls()) {
        if (call.member != QLatin1String("doFunFromAI"))
            continue;
        QVariantMap map = call.arguments.at(1).toMap();
        const bool asked = map.take(QStringLiteral("TestFunValid")).toBool();
        require(asked == call.withResult, "a question contains TestFunValid, an order does not");
        const QVariantList plain{call.arguments.at(0), map};
        if (call.withResult)
            question = plain;
        else
            require(typed(plain) == typed(question), "an order has the parameters of its question");
    }
    host_.recorder().clear();
}
