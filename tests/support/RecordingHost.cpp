#include "tests/support/RecordingHost.h"

#include "tests/support/AIBridgeAccess.h"
#include <QtQml/QQmlContext>

namespace {

const QString kMain = QStringLiteral("__zormain");
const QString kWindow = QStringLiteral("window");
const QString kExecuter = QStringLiteral("__qml_executer");

} // namespace

QStringList RecordingHost::contextObjects()
{
    return {QStringLiteral("partitionmanager"),  QStringLiteral("toolbox"),
            QStringLiteral("partitionrecovery"), QStringLiteral("bootablemedia"),
            QStringLiteral("deviceMgr"),         QStringLiteral("clone"),
            QStringLiteral("diskconverter"),     QStringLiteral("multilanguage")};
}

RecordingHost::RecordingHost()
{
    const FakeBody yes = [](const QVariantList&) { return QVariant(true); };
    spec("partitionmanager")
        .method("doFunFromAI(int,QVariantMap)", "bool", yes)
        .method("isWin11CheckerEnable()", "bool", yes)
        .method("hasDiskSmartInfoError(int)", "bool");
    spec("toolbox").method("check4kAlign(QVariant)", "bool", yes);
    spec("partitionrecovery")
        .method("isDiskIndexValid(QVariant)", "bool", yes)
        .method("isRawPart(QVariant)", "bool");
    spec("bootablemedia").method("isAlreadyEnable()", "bool");
    spec("deviceMgr").method("disks(int,bool)", "QVariantList").method("bootDisks(int,bool)", "QVariantList");
    spec("clone")
        .property("cloneType", "int", -7)
        .method("invalidInfo(QVariantMap,QVariantMap,int,QVariantMap)", "QString");
    spec("diskconverter")
        .method("isFunValid(int,QVariantMap)", "bool", yes)
        .method("isGPT2MBRValid(QVariantMap)", "QString")
        .method("isMBR2GPTValid(QVariantMap)", "QString");
    spec("multilanguage").method("sigCurrentLanguageChanged()");
    spec(kMain)
        .property("busy", "bool", false)
        .method("doprfunction(QVariant)")
        .method("createBootMediaEnabled(QVariant)", "QVariant", yes)
        .method("dobmfunction(QVariant)")
        .method("opendiskhealth(QVariant)")
        .method("passwordResetEnabled()", "QVariant", yes)
        .method("bootrepairEnabled()", "QVariant", yes)
        .method("doToolBox(QVariant,QVariant)", "QVariant", yes);
    spec(kExecuter).method("sendUserInfo(QVariant,QVariant,QVariant,QVariant)", "QVariant");
    spec(kWindow)
        .property("popuped", "bool", false)
        .method("closeGuide(QVariant)", "QVariant")
        .method("openUrl(QVariant)", "QVariant", yes);
}

RecordingHost::~RecordingHost()
{
    bridge_.reset();
    engine_.reset();
}

FakeSpec& RecordingHost::spec(const QString& object)
{
    return specs_[object];
}

RecordingHost& RecordingHost::without(const QString& object)
{
    specs_.erase(object);
    return *this;
}

void RecordingHost::build()
{
    bridge_ = std::make_unique<AIBridge>();
    buildObjects();
    bridge_->setEngine(engine_.get());
}

void RecordingHost::buildWithoutEngine()
{
    bridge_ = std::make_unique<AIBridge>();
    buildObjects();
}

void RecordingHost::buildObjects()
{
    engine_ = std::make_unique<QQmlApplicationEngine>();
    engine_->loadData("import QtQml 2.15\nQtObject {}\n");
    for (const QString& name : contextObjects()) {
        if (specs_.count(name) == 0)
            continue;
        contextObjects_[name] = std::make_unique<FakeObject>(name, specs_[name], &recorder_);
        engine_->rootContext()->setContextProperty(name, contextObjects_[name].get());
    }
    if (specs_.count(kMain) != 0) {
        main_ = new FakeObject(kMain, specs_[kMain], &recorder_);
        main_->setObjectName(kMain);
        main_->setParent(engine_->rootObjects().first());
    }
    if (specs_.count(kWindow) == 0)
        return;
    window_ = std::make_unique<FakeWindow>(kWindow, specs_[kWindow], &recorder_);
    if (specs_.count(kExecuter) != 0) {
        // One level down, because a real window contains it at some depth.
        auto* content = new QObject(window_.get());
        executer_ = new FakeObject(kExecuter, specs_[kExecuter], &recorder_);
        executer_->setObjectName(kExecuter);
        executer_->setParent(content);
    }
}

FakeObject* RecordingHost::object(const QString& name)
{
    if (name == kMain)
        return main_;
    if (name == kExecuter)
        return executer_;
    const auto found = contextObjects_.find(name);
    return found == contextObjects_.end() ? nullptr : found->second.get();
}

const ToolBridge* RecordingHost::toolBridge()
{
    return AIBridgeAccess::toolBridge(bridge());
}

const HostPages* RecordingHost::pages()
{
    return AIBridgeAccess::pages(bridge());
}
