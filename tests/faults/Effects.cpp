// The expected answer of each tool on a faulty host. The table is independent of the code: a missing name
// reads as false, and an order that cannot be delivered has no effect.
#include "tests/faults/Fault.h"
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"

#include <QtCore/QStringList>

namespace {

const QString kQueued = answers::queued;
const QString kNotValid = answers::notValid;
const QString kInProgress = "false " + answers::inProgress.text();
const QString kInExecution = "false " + answers::inExecution.text();

QStringList pageTools()
{
    return toolsThatCall("partitionmanager.doFunFromAI");
}

QStringList cloneTools()
{
    return toolsThatCall("clone.cloneType");
}

QStringList askedMediaTools()
{
    return toolsThatCall("__zormain.createBootMediaEnabled");
}

QStringList gatedBoxTools()
{
    return toolsThatCall("__zormain.passwordResetEnabled") + toolsThatCall("__zormain.bootrepairEnabled");
}

QStringList otherBoxTools()
{
    QStringList tools = toolsThatCall("__zormain.doToolBox");
    for (const QString& gated : gatedBoxTools())
        tools.removeAll(gated);
    return tools;
}

struct Effect
{
    const char* member; ///< "object.member", or "object"
    unsigned faults;
    QStringList tools;
    QString answer;
    unsigned moods = AnyMood;
};

// The answers other than queued of a host without a fault.
const std::vector<Effect>& wholeAnswers()
{
    static const std::vector<Effect> answers = {
        {"", Whole, {"Init", "PostProcessing"}, "true"},
        {"", Whole, {"PreProcessing"}, "true ", Free},
        {"", Whole, {"PreProcessing"}, kInExecution, Busy},
        {"", Whole, {"PreProcessing"}, kInProgress, Covered},
        {"", Whole, {"RepairRawOrDamagedPartition"}, kNotValid},
        {"", Whole, {"InstallAndEnablePreOS"}, kNotValid, Busy},
        {"", Whole, {"DisablePreOS"}, kNotValid, Free | Covered},
        {"", Whole, {"ListAllDisks"}, "0/1/unaligned 1/3/unaligned"},
        {"", Whole, {"ListPartitionsOnDisk"}, "1/E:/100/raw 1//1000/raw 1//9000/raw"},
        {"", Whole, {"GetPartitionInfo"}, "1/E:/100/raw"},
        {"", Whole, {"GetAllPartitionInfo"}, "0/C:/5000/raw 1/E:/100/raw 1//1000/raw 1//9000/raw"},
    };
    return answers;
}

std::vector<Effect> inventoryEffects()
{
    return {
        // Aligned and not raw unless the host has answered otherwise.
        {"toolbox", NoObject, {"ListAllDisks"}, "0/1 1/3"},
        {"toolbox.check4kAlign", kNotCalled, {"ListAllDisks"}, "0/1 1/3"},
        {"partitionrecovery", NoObject, {"ListPartitionsOnDisk"}, "1/E:/100 1//1000 1//9000"},
        {"partitionrecovery", NoObject, {"GetPartitionInfo"}, "1/E:/100"},
        {"partitionrecovery", NoObject, {"GetAllPartitionInfo"}, "0/C:/5000 1/E:/100 1//1000 1//9000"},
        {"partitionrecovery.isRawPart", kNoAnswer, {"ListPartitionsOnDisk"}, "1/E:/100 1//1000 1//9000"},
        {"partitionrecovery.isRawPart", kNoAnswer, {"GetPartitionInfo"}, "1/E:/100"},
        {"partitionrecovery.isRawPart",
         kNoAnswer,
         {"GetAllPartitionInfo"},
         "0/C:/5000 1/E:/100 1//1000 1//9000"},
    };
}

std::vector<Effect> pageEffects()
{
    return {
        {"partitionmanager", NoObject, pageTools() + QStringList{"Windows11UpgradeCheck"}, kNotValid},
        {"partitionmanager.doFunFromAI", kNoAnswer, pageTools(), kNotValid},
        {"partitionmanager.isWin11CheckerEnable", kNoAnswer, {"Windows11UpgradeCheck"}, kNotValid},
    };
}

std::vector<Effect> cloneEffects()
{
    const QString notListed = "It seems that disk0 is not exist";
    const QString notSystem = "It seems that disk0 is not os disk";
    return {
        {"deviceMgr", NoObject, {"CloneDiskToDisk"}, notListed},
        {"deviceMgr", NoObject, {"CloneOSDataFromDisk"}, notSystem},
        {"deviceMgr.disks", kNotCalled, {"CloneDiskToDisk"}, notListed},
        // An entry that is not a map has the index 0, like a disk, but is not a system disk.
        {"deviceMgr.disks", kNotCalled | WrongValue, {"CloneOSDataFromDisk"}, notSystem},
        {"clone", NoObject, cloneTools(), ""},
        {"clone.cloneType", NoMember | OtherSignature, cloneTools(), ""},
        {"clone.invalidInfo", NoMember, cloneTools(), ""},
    };
}

std::vector<Effect> mainObjectEffects()
{
    const QStringList health = {"DiskHealthCheck"};
    const QStringList recover = {"RecoverLostPartition"};
    return {
        {"__zormain", NoObject, {"PreProcessing"}, "true ", Busy},
        {"__zormain", NoObject, askedMediaTools() + gatedBoxTools() + otherBoxTools() + health + recover,
         kNotValid},
        {"__zormain.busy", kNoAnswer, {"PreProcessing"}, "true ", Busy},
        {"__zormain.doprfunction", NoMember, recover, kNotValid},
        {"__zormain.createBootMediaEnabled", kNoAnswer, askedMediaTools(), kNotValid},
        {"__zormain.opendiskhealth", NoMember, health, kNotValid},
        {"__zormain.passwordResetEnabled", kNoAnswer, {"PasswordReset"}, kNotValid},
        {"__zormain.bootrepairEnabled", kNoAnswer, {"RepairWindowsBoot"}, kNotValid},
        {"__zormain.doToolBox", kNoAnswer, otherBoxTools(), kNotValid},
        // Without the method, the answer of its gate counts.
        {"__zormain.doToolBox", kNoAnswer & ~unsigned(NoMember), gatedBoxTools(), kNotValid},
    };
}

std::vector<Effect> otherEffects()
{
    return {
        {"partitionrecovery", NoObject, {"RecoverLostPartition"}, kNotValid},
        {"partitionrecovery.isDiskIndexValid", kNoAnswer, {"RecoverLostPartition"}, kNotValid},
        {"bootablemedia", NoObject, {"InstallAndEnablePreOS"}, kQueued},
        {"bootablemedia", NoObject, {"DisablePreOS"}, kNotValid},
        {"bootablemedia.isAlreadyEnable", kNoAnswer, {"InstallAndEnablePreOS"}, kQueued},
        {"bootablemedia.isAlreadyEnable", kNoAnswer, {"DisablePreOS"}, kNotValid},
        {"window", NoObject, {"PreProcessing"}, "true ", Covered},
        {"window.popuped", kNoAnswer, {"PreProcessing"}, "true ", Covered},
    };
}

// CloneOSDataFromDisk makes its own check even without a bridge.
std::vector<Effect> bridgeEffects()
{
    const QString notSystem = "It seems that disk0 is not os disk";
    return {
        {"", NoBridge, {"Init", "PostProcessing"}, "true"},
        {"", NoBridge, {"PreProcessing"}, "false "},
        {"", NoBridge, {"ListAllDisks", "ListPartitionsOnDisk", "GetAllPartitionInfo"}, ""},
        {"", NoBridge, {"GetPartitionInfo"}, "0//0"},
        {"", NoBridge | NoEngine, {"CloneOSDataFromDisk"}, notSystem},
        {"", NoEngine, cloneTools(), ""},
    };
}

const std::vector<Effect>& effects()
{
    static const std::vector<Effect> all = [] {
        std::vector<Effect> rows;
        for (const auto& group : {bridgeEffects(), inventoryEffects(), pageEffects(), cloneEffects(),
                                  mainObjectEffects(), otherEffects()})
            rows.insert(rows.end(), group.begin(), group.end());
        return rows;
    }();
    return all;
}

// Without an engine, only the window and its children are found.
bool isMet(const Effect& effect, const FaultCase& host)
{
    if (host.fault == NoEngine && (effect.faults & NoObject) != 0)
        return QLatin1String(effect.member) != "window";
    const QString where = host.member.name.isEmpty() ? host.member.object : host.member.where();
    return where == effect.member && (effect.faults & host.fault) != 0;
}

} // namespace

QString expectedAnswer(const std::string& method, const FaultCase& host)
{
    const QString tool = QString::fromStdString(method);
    for (const Effect& effect : effects()) {
        if (isMet(effect, host) && (effect.moods & host.mood) != 0 && effect.tools.contains(tool))
            return effect.answer;
    }
    if (host.fault == NoBridge)
        return kNotValid;
    for (const Effect& answer : wholeAnswers()) {
        if ((answer.moods & host.mood) != 0 && answer.tools.contains(tool))
            return answer.answer;
    }
    return kQueued;
}
