// The expected calls of each tool on a faulty host: those of the tool's row without the calls that cannot be
// made, up to the one that decides about another answer. The table contains the exceptions.
#include "tests/faults/Fault.h"
#include "tests/tools/ToolRow.h"

namespace {

const QString kCloseGuide = "window.closeGuide";
const QString kDisks = "deviceMgr.disks";
const QString kObjection = "clone.invalidInfo";
const QString kPreOs = "bootablemedia.isAlreadyEnable";

struct CallEffect
{
    const char* member; ///< "object.member", or "object"
    unsigned faults;
    QStringList tools;
    QStringList calls;
};

QStringList without(QStringList tools, const QStringList& others)
{
    for (const QString& other : others)
        tools.removeAll(other);
    return tools;
}

QStringList both(const QStringList& tools, const QStringList& others)
{
    QStringList common;
    for (const QString& tool : tools) {
        if (others.contains(tool))
            common << tool;
    }
    return common;
}

// These tools close the guide before they need the bridge.
QStringList toolsThatCloseTheGuideFirst()
{
    return without(toolsThatCall("clone.cloneType"), {"CloneOSDataFromDisk"}) +
           both(toolsThatCall("aibridge.sigConvertResult"), toolsThatCall(kCloseGuide)) +
           without(toolsThatCall("__zormain.doToolBox"), {"Windows11UpgradeCheck"});
}

const std::vector<CallEffect>& callEffects()
{
    static const QStringList clones = toolsThatCall("clone.cloneType");
    static const QStringList byLetter = without(clones, {"CloneOSDataFromDisk", "CloneDiskToDisk"});
    static const QStringList prepared{kDisks, kDisks, kCloseGuide, kDisks, "clone.cloneType"};
    static const QStringList opened{kCloseGuide, "clone.cloneType", "aibridge.sigCloneResult"};
    static const std::vector<CallEffect> effects{
        {"", NoBridge, toolsThatCloseTheGuideFirst(), {kCloseGuide}},
        {"", NoEngine, {"CloneOSDataFromDisk"}, {}},
        // The page is examined for both members before the first objection is requested.
        {"clone.invalidInfo", NoMember, clones, prepared},
        {"clone.invalidInfo", Refuses, toolsThatCall(kObjection),
         prepared + QStringList{kDisks, kObjection, "aibridge.sigCloneResult"}},
        {"deviceMgr.disks", WrongValue, without(clones, {"CloneOSDataFromDisk"}),
         prepared + QStringList{"aibridge.sigCloneResult"}},
        {"deviceMgr.disks", WrongValue, {"CloneOSDataFromDisk"}, {kDisks}},
        // A partition that is not found has no disk index: the guide opens at its first step.
        {"deviceMgr", NoObject, byLetter, opened},
        {"deviceMgr.disks", kNotCalled, byLetter, opened},
        {"deviceMgr", NoObject, {"CloneDiskToDisk"}, {kCloseGuide, "clone.cloneType"}},
        {"deviceMgr.disks", kNotCalled, {"CloneDiskToDisk"}, {kCloseGuide, "clone.cloneType"}},
        {"deviceMgr", NoObject, {"CloneOSDataFromDisk"}, {}},
        {"deviceMgr.disks", kNotCalled, {"CloneOSDataFromDisk"}, {}},
    };
    return effects;
}

bool isBroken(const QString& call, const FaultCase& host)
{
    const QString object = call.section('.', 0, 0);
    if (host.fault == NoEngine)
        return object != "window" && object != "__qml_executer" && object != "aibridge";
    return host.member.name.isEmpty() ? object == host.member.object : call == host.member.where();
}

bool isOut(const QString& call, const FaultCase& host)
{
    for (const Member& member : allMembers()) {
        if (member.where() == call)
            return isSkipped(member, host);
    }
    return false;
}

// A mood that the tool cannot read counts as Free.
Mood visibleMood(const std::string& method, const FaultCase& host)
{
    const bool isGate = method == "PreProcessing";
    const QString asked = !isGate ? kPreOs : host.mood == Busy ? "__zormain.busy" : "window.popuped";
    const bool isUnanswered = isBroken(asked, host) && (host.fault == NoEngine || host.fault == NoObject ||
                                                        (host.fault & kNoAnswer) != 0);
    return isUnanswered ? Free : host.mood;
}

QStringList wholeCalls(const std::string& method, Mood mood)
{
    if (method == "PreProcessing" && mood != Free)
        return {};
    if (method == "InstallAndEnablePreOS" && mood == Busy)
        return {kPreOs};
    if (method == "DisablePreOS" && mood == Busy)
        return {kPreOs, kCloseGuide, "__zormain.dobmfunction"};
    QStringList calls;
    for (const QString& call : toolRow(method).calls)
        calls << call.section('@', 0, 0);
    return calls;
}

} // namespace

QStringList expectedCalls(const std::string& method, const FaultCase& host)
{
    const QString tool = QString::fromStdString(method);
    const QString where = host.member.name.isEmpty() ? host.member.object : host.member.where();
    for (const CallEffect& effect : callEffects()) {
        if (where == effect.member && (effect.faults & host.fault) != 0 && effect.tools.contains(tool))
            return effect.calls;
    }
    if (host.fault == NoBridge)
        return {};
    const Mood mood = visibleMood(method, host);
    const bool isStopped = expectedAnswer(method, host) != expectedAnswer(method, {Member(), Whole, mood});
    QStringList calls;
    for (const QString& call : wholeCalls(method, mood)) {
        const bool isLast = isStopped && isBroken(call, host) && call != kDisks;
        if (!isOut(call, host))
            calls << call;
        if (isLast)
            break;
    }
    return calls;
}
