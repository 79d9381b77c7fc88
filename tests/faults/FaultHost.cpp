#include "tests/faults/FaultHost.h"

#include "tests/tools/ToolRow.h"

// The pause of the gate has passed.
class FaultHost::OpenGate : public CZorHandle
{
    qint64 sinceLastCall() const override { return 2000; }
};

namespace {

const char* const kPage = R"(
import QtQml 2.15
QtObject {
    property int thrown: 0
    function broken() { ++thrown; throw new Error("a page that is broken") }
}
)";

FakeBody answering(const QVariant& value)
{
    return [value](const QVariantList&) { return value; };
}

QByteArray otherParameters(const Member& member)
{
    return member.parameters.isEmpty() ? QByteArray("QByteArray") : member.parameters + ",QByteArray";
}

QByteArray otherTypes(const Member& member)
{
    return "QByteArray" + QByteArray(",QByteArray").repeated(member.parameters.count(','));
}

QVariant wrongValue(const Member& member)
{
    return member.type == "QVariantList" ? QVariant(QVariantList{5, "text", QVariantList{QVariantMap()}})
                                         : QVariant(QVariantList{true, 1});
}

} // namespace

FaultHost::FaultHost(const FaultCase& row, const std::function<void(RecordingHost&)>& prepare)
    : fault_(row.fault), tools_(std::make_shared<OpenGate>())
{
    pages_.loadData(kPage);
    host_.spec("deviceMgr").answer("disks", QVariant(machine::disks()));
    host_.spec("toolbox").answer("check4kAlign", QVariant(false));
    host_.spec("partitionrecovery").answer("isRawPart", QVariant(true));
    // The library connects components only to signals, and the recording host declares a method instead.
    host_.spec("multilanguage").remove("sigCurrentLanguageChanged").signal("sigCurrentLanguageChanged()");
    setMood(row.mood);
    if (prepare)
        prepare(host_);
    if (row.fault == NoObject)
        host_.without(row.member.object);
    else if (!row.member.name.isEmpty())
        breakMember(row);
}

FaultHost::~FaultHost()
{
    server_.reset();
}

void FaultHost::setMood(Mood mood)
{
    host_.spec("__zormain").reading("busy", answering(mood == Busy));
    host_.spec("bootablemedia").answer("isAlreadyEnable", QVariant(mood == Busy));
    host_.spec("window").reading("popuped", answering(mood == Covered));
}

void FaultHost::breakMember(const FaultCase& row)
{
    const Member& member = row.member;
    FakeSpec& spec = host_.spec(member.object);
    const QByteArray signature = member.name + '(' + member.parameters + ')';
    const FakeBody yes = answering(true);
    if (row.fault == Throws) {
        spec.answer(member.name, throwing());
        return;
    }
    if (row.fault == Refuses) {
        spec.answer(member.name, member.type == "QString" ? QVariant("no room") : QVariant(false));
        return;
    }
    spec.remove(member.name);
    switch (row.fault) {
    case OtherSignature:
        if (member.isSignal) {
            spec.signal(member.name + "(QByteArray)");
            break;
        }
        spec.method(member.name + '(' + otherParameters(member) + ')', member.type, yes);
        break;
    case OtherTypes:
        spec.method(member.name + '(' + otherTypes(member) + ')', member.type, yes);
        break;
    case OtherResult:
        if (member.isProperty)
            spec.property(member.name, "QVariantList", QVariantList{true});
        else
            spec.method(signature, "QByteArray", yes);
        break;
    case NoResult:
        spec.method(signature, {}, yes);
        break;
    case WrongValue:
        if (member.isProperty)
            spec.property(member.name, "QVariant", wrongValue(member));
        else
            spec.method(signature, member.type, answering(wrongValue(member)));
        break;
    default:
        break;
    }
}

FakeBody FaultHost::throwing()
{
    QObject* page = pages_.rootObjects().first();
    return [page](const QVariantList&) {
        QVariant answer;
        QMetaObject::invokeMethod(page, "broken", Q_RETURN_ARG(QVariant, answer));
        return answer;
    };
}

void FaultHost::build()
{
    if (fault_ == NoEngine)
        host_.buildWithoutEngine();
    else
        host_.build();
    if (fault_ != NoBridge)
        tools_->setBridge(host_.toolBridge());
    host_.bridge()->setDiskInfo(machine::inventory());
    recordSignals(host_.bridge(), host_.recorder());
}

void FaultHost::serve()
{
    server_ = std::make_unique<HandlerServer>(tools_);
}

int FaultHost::thrown() const
{
    return const_cast<QQmlApplicationEngine&>(pages_).rootObjects().first()->property("thrown").toInt();
}
