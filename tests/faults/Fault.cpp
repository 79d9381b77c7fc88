#include "tests/faults/Fault.h"

#include "tests/support/ProcessFigures.h"
#include "tests/tools/ToolRow.h"

#include <ostream>

namespace {

Member method(const char* object, const char* name, const char* parameters, const char* type)
{
    return {object, name, parameters, type, false, false, true};
}

Member direct(const char* object, const char* name, const char* parameters, const char* type)
{
    return {object, name, parameters, type, false, false, false};
}

Member property(const char* object, const char* name, const char* type)
{
    return {object, name, {}, type, true, false, false};
}

Member signal(const char* object, const char* name)
{
    return {object, name, {}, {}, false, true, true};
}

std::vector<Fault> faultsOf(const Member& member)
{
    std::vector<Fault> faults{NoMember, OtherSignature, OtherResult};
    if (member.isProperty || member.type == "QVariant" || member.type == "QVariantList")
        faults.push_back(WrongValue);
    if (!member.isProperty && !member.type.isEmpty())
        faults.push_back(NoResult);
    if (!member.parameters.isEmpty())
        faults.push_back(OtherTypes);
    if (!member.isProperty && !member.isSignal && member.onApplicationThread)
        faults.push_back(Throws);
    return faults;
}

// The host decides about the task by its answer. The answers of the window and of the event log are ignored.
bool isQuestionOfATool(const Member& member)
{
    return !member.type.isEmpty() && !member.isProperty && member.onApplicationThread &&
           member.object != "window" && member.object != "__qml_executer" &&
           !toolsThatCall(member.where()).isEmpty();
}

// The result of an order is not requested, so its declared type is not examined.
bool isOrder(const Member& member)
{
    return member.type.isEmpty() && !member.isSignal;
}

const char* nameOf(Fault fault)
{
    switch (fault) {
    case NoObject:
        return "NoObject";
    case NoMember:
        return "NoMember";
    case OtherSignature:
        return "OtherSignature";
    case OtherResult:
        return "OtherResult";
    case NoResult:
        return "NoResult";
    case WrongValue:
        return "WrongValue";
    case Throws:
        return "Throws";
    case OtherTypes:
        return "OtherTypes";
    case Refuses:
        return "Refuses";
    case NoEngine:
        return "NoEngine";
    case NoBridge:
        return "NoBridge";
    case Whole:
        break;
    }
    return "Whole";
}

const char* nameOf(Mood mood)
{
    return mood == Free ? "Free" : mood == Busy ? "Busy" : "Covered";
}

} // namespace

const std::vector<Member>& allMembers()
{
    static const std::vector<Member> members = {
        method("partitionmanager", "doFunFromAI", "int,QVariantMap", "bool"),
        method("partitionmanager", "isWin11CheckerEnable", "", "bool"),
        direct("partitionmanager", "hasDiskSmartInfoError", "int", "bool"),
        method("toolbox", "check4kAlign", "QVariant", "bool"),
        method("partitionrecovery", "isDiskIndexValid", "QVariant", "bool"),
        method("partitionrecovery", "isRawPart", "QVariant", "bool"),
        method("bootablemedia", "isAlreadyEnable", "", "bool"),
        direct("deviceMgr", "disks", "int,bool", "QVariantList"),
        direct("deviceMgr", "bootDisks", "int,bool", "QVariantList"),
        property("clone", "cloneType", "int"),
        method("clone", "invalidInfo", "QVariantMap,QVariantMap,int,QVariantMap", "QString"),
        method("diskconverter", "isFunValid", "int,QVariantMap", "bool"),
        method("diskconverter", "isGPT2MBRValid", "QVariantMap", "QString"),
        method("diskconverter", "isMBR2GPTValid", "QVariantMap", "QString"),
        signal("multilanguage", "sigCurrentLanguageChanged"),
        property("__zormain", "busy", "bool"),
        method("__zormain", "doprfunction", "QVariant", ""),
        method("__zormain", "createBootMediaEnabled", "QVariant", "QVariant"),
        method("__zormain", "dobmfunction", "QVariant", ""),
        method("__zormain", "opendiskhealth", "QVariant", ""),
        method("__zormain", "passwordResetEnabled", "", "QVariant"),
        method("__zormain", "bootrepairEnabled", "", "QVariant"),
        method("__zormain", "doToolBox", "QVariant,QVariant", "QVariant"),
        method("__qml_executer", "sendUserInfo", "QVariant,QVariant,QVariant,QVariant", "QVariant"),
        method("window", "closeGuide", "QVariant", "QVariant"),
        property("window", "popuped", "bool"),
        method("window", "openUrl", "QVariant", "QVariant"),
    };
    return members;
}

std::vector<FaultCase> allFaultCases()
{
    std::vector<FaultCase> cases;
    for (const Mood mood : {Free, Busy, Covered}) {
        cases.push_back({Member(), Whole, mood});
        QString object;
        for (const Member& member : allMembers()) {
            if (member.object != object)
                cases.push_back({{member.object, {}, {}, {}}, NoObject, mood});
            object = member.object;
            for (const Fault fault : faultsOf(member))
                cases.push_back({member, fault, mood});
        }
    }
    return cases;
}

std::vector<FaultCase> toolFaultCases()
{
    std::vector<FaultCase> cases = allFaultCases();
    for (const Mood mood : {Free, Busy, Covered}) {
        cases.push_back({Member(), NoBridge, mood});
        cases.push_back({Member(), NoEngine, mood});
        for (const Member& member : allMembers()) {
            if (isQuestionOfATool(member))
                cases.push_back({member, Refuses, mood});
        }
    }
    return cases;
}

std::vector<FaultCase> sampled(const std::vector<FaultCase>& cases)
{
    std::vector<FaultCase> chosen;
    for (const FaultCase& row : cases) {
        if (kMemoryIsOurs || row.mood == Free)
            chosen.push_back(row);
    }
    return chosen;
}

bool isSkipped(const Member& member, const FaultCase& host)
{
    const bool isInWindow = member.object == "window" || member.object == "__qml_executer";
    if (host.fault == NoEngine)
        return !isInWindow;
    if (host.fault == NoObject)
        return member.object == host.member.object || (host.member.object == "window" && isInWindow);
    const unsigned skipping = isOrder(member) ? kNotCalled & ~unsigned(OtherResult) : kNotCalled;
    return member.where() == host.member.where() && (host.fault & skipping) != 0;
}

std::string FaultCase::name() const
{
    const QString which = member.name.isEmpty() ? member.object : member.object + '_' + member.name;
    return (which + '_' + nameOf(fault) + '_' + nameOf(mood)).toStdString();
}

void PrintTo(const FaultCase& row, std::ostream* out)
{
    *out << row.name();
}
