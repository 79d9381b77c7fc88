// The expected answer of each tool on a faulty host. The table is independent of the code: a missing name
// reads as false, and an order that cannot be delivered has no effect.
#include "tests/faults/Fault.h"
#include "tests/support/Answers.h"

#include <QtCore/QStringList>

namespace {

const QString kQueued = answers::queued;
const QString kNotValid = answers::notValid;
const QString kInProgress = "false " + answers::inProgress.text();
const QString kInExecution = "false " + answers::inExecution.text();

const QStringList kPage = {"OpenDiskLayoutEditor",
                           "DeleteAllPartitions",
                           "InitializeDiskToMbr",
                           "InitializeDiskToGpt",
                           "WipeDisk",
                           "AutoCreatePartitions",
                           "DiskBringOnline",
                           "LowLevelFormat",
                           "SmartSpaceAdjustment",
                           "ShowBitLockerStatus",
                           "OpenPartitionLayoutEditor",
                           "MigrateSystemDriveData",
                           "EjectUsb",
                           "DeletePartition",
                           "ConvertPartitionToPrimary",
                           "ConvertPartitionToLogical",
                           "SetPartitionActive",
                           "SetPartitionHidden",
                           "ResizePartition",
                           "FormatPartition",
                           "SplitPartition",
                           "WipePartition",
                           "ChangePartitionClusterSize",
                           "ChangePartitionDriveLetter",
                           "ChangePartitionLabel",
                           "ResizePartitionRelative",
                           "CreatePartition",
                           "MergePartitions",
                           "AllocateSpaceFromPartitionToPartition",
                           "AllocateSpaceFromPartitionToNewPartition"};
const QStringList kClone = {"CloneOSDataFromCurrent", "CloneOSDataFromDisk",       "CloneOSDataFromPartition",
                            "CloneDiskToDisk",        "ClonePartitionToPartition", "ClonePartitionToDisk"};
const QStringList kAskedMedia = {"CreateBootableISO", "CreateBootableUsbByDisk",
                                 "CreateBootableUsbByDriveLetter"};
const QStringList kGatedBox = {"PasswordReset", "RepairWindowsBoot"};
const QStringList kOtherBox = {"ToggleWriteProtection",
                               "RebuildMbr",
                               "AlignDiskTo4k",
                               "ScanDiskBadSectors",
                               "ScanPartitionBadSectors",
                               "RetrieveBitLockerRecoveryKey",
                               "CheckPartitionFileSystem",
                               "Windows11UpgradeCheck"};
const QStringList kPartitionLists = {"ListPartitionsOnDisk", "GetAllPartitionInfo", "GetPartitionInfo"};

struct Effect
{
    const char* member; ///< "object.member", or "object"
    unsigned faults;
    QStringList tools;
    QString answer;
    unsigned moods = AnyMood;
};

// The answers of a host with nothing amiss that are not "Task Queued".
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
        // Aligned unless the host has said otherwise, and not raw unless it has said so.
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
        {"partitionmanager", NoObject, kPage + QStringList{"Windows11UpgradeCheck"}, kNotValid},
        {"partitionmanager.doFunFromAI", kNoAnswer, kPage, kNotValid},
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
        // An entry that is no map has the index 0 like a disk, but is no system disk and names no disk later.
        {"deviceMgr.disks", kNotCalled | WrongValue, {"CloneOSDataFromDisk"}, notSystem},
        {"clone", NoObject, kClone, ""},
        {"clone.cloneType", NoMember | OtherSignature, kClone, ""},
        {"clone.invalidInfo", NoMember, kClone, ""},
    };
}

std::vector<Effect> mainObjectEffects()
{
    const QStringList health = {"DiskHealthCheck"};
    const QStringList recover = {"RecoverLostPartition"};
    return {
        {"__zormain", NoObject, {"PreProcessing"}, "true ", Busy},
        {"__zormain", NoObject, kAskedMedia + kGatedBox + kOtherBox + health + recover, kNotValid},
        {"__zormain.busy", kNoAnswer, {"PreProcessing"}, "true ", Busy},
        {"__zormain.doprfunction", NoMember, recover, kNotValid},
        {"__zormain.createBootMediaEnabled", kNoAnswer, kAskedMedia, kNotValid},
        {"__zormain.opendiskhealth", NoMember, health, kNotValid},
        {"__zormain.passwordResetEnabled", kNoAnswer, {"PasswordReset"}, kNotValid},
        {"__zormain.bootrepairEnabled", kNoAnswer, {"RepairWindowsBoot"}, kNotValid},
        {"__zormain.doToolBox", kNoAnswer, kOtherBox, kNotValid},
        // Without the method the answer of the gate before it stands.
        {"__zormain.doToolBox", kNoAnswer & ~unsigned(NoMember), kGatedBox, kNotValid},
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

const std::vector<Effect>& effects()
{
    static const std::vector<Effect> all = [] {
        std::vector<Effect> rows;
        for (const auto& group :
             {inventoryEffects(), pageEffects(), cloneEffects(), mainObjectEffects(), otherEffects()})
            rows.insert(rows.end(), group.begin(), group.end());
        return rows;
    }();
    return all;
}

} // namespace

QString expectedAnswer(const std::string& method, const FaultCase& host)
{
    const QString tool = QString::fromStdString(method);
    const QString where = host.member.name.isEmpty() ? host.member.object : host.member.where();
    for (const Effect& effect : effects()) {
        if (where == effect.member && (effect.faults & host.fault) != 0 && (effect.moods & host.mood) != 0 &&
            effect.tools.contains(tool))
            return effect.answer;
    }
    for (const Effect& answer : wholeAnswers()) {
        if ((answer.moods & host.mood) != 0 && answer.tools.contains(tool))
            return answer.answer;
    }
    return kQueued;
}
