// The expected outcome of scans and answers on a faulty host. The table is independent of the code. Where it
// has no row, only the call of the broken member is skipped.
#include "tests/faults/Journeys.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <iterator>

namespace {

struct Effect
{
    const char* member; ///< "object.member", or "object"
    unsigned faults;
    const char* journey;
    const char* outcome;
};

const Effect kEffects[] = {
    // Without the question the case does not fire, and the next cases are tried.
    {"partitionmanager", NoObject, "UpgradeOptions", "sendUserInfo |  | "},
    {"partitionmanager.isWin11CheckerEnable", kNotCalled, "UpgradeOptions",
     "hasDiskSmartInfoError sendUserInfo |  | "},
    {"partitionmanager.isWin11CheckerEnable", Throws, "UpgradeOptions",
     "isWin11CheckerEnable hasDiskSmartInfoError sendUserInfo |  | "},
    // An unknown boot disk is not a GPT disk; the conversion is that of the system drive's disk.
    {"deviceMgr", NoObject, "UpgradeOptions",
     "isWin11CheckerEnable sendUserInfo | Windows 10 support ends soon! To install Windows 11, | closeGuide "
     "sigConvertResult:0:0/1"},
    {"deviceMgr.bootDisks", kNotCalled, "UpgradeOptions",
     "isWin11CheckerEnable sendUserInfo | Windows 10 support ends soon! To install Windows 11, | closeGuide "
     "disks sigConvertResult:0:0/3"},
    {"deviceMgr.bootDisks", WrongValue, "UpgradeOptions",
     "isWin11CheckerEnable bootDisks sendUserInfo | Windows 10 support ends soon! To install Windows 11, | "
     "closeGuide disks sigConvertResult:0:0/3"},

    {"partitionmanager", NoObject, "DiskSmart", "sendUserInfo |  | "},
    {"partitionmanager.hasDiskSmartInfoError", kNotCalled, "DiskSmart", "sendUserInfo |  | "},

    // A page that cannot be called counts as a rejection.
    {"partitionmanager", NoObject, "SmartLayout", "sendUserInfo |  | "},
    {"partitionmanager.doFunFromAI", kNotCalled, "SmartLayout", "sendUserInfo |  | "},
    {"partitionmanager.doFunFromAI", Throws, "SmartLayout", "doFunFromAI sendUserInfo |  | "},
    {"partitionmanager", NoObject, "DriveSpace", "sendUserInfo |  | "},
    {"partitionmanager.doFunFromAI", kNotCalled, "DriveSpace", "sendUserInfo |  | "},
    {"partitionmanager.doFunFromAI", Throws, "DriveSpace", "doFunFromAI sendUserInfo |  | "},
    {"partitionmanager", NoObject, "DataMigration",
     "sendUserInfo | Drive C has low space. We recommend using the | "},
    {"partitionmanager.doFunFromAI", kNotCalled, "DataMigration",
     "sendUserInfo | Drive C has low space. We recommend using the | "},
    {"partitionmanager.doFunFromAI", Throws, "DataMigration",
     "sendUserInfo | Drive C has low space. We recommend using the | doFunFromAI"},

    // A disk or partition that the host does not list has a bare record.
    {"deviceMgr", NoObject, "WastedMbr",
     "sendUserInfo | Due to incorrect partition table settings on disk 1, | closeGuide "
     "sigConvertResult:0:1/1"},
    {"deviceMgr.disks", kNotCalled, "WastedMbr",
     "sendUserInfo | Due to incorrect partition table settings on disk 1, | closeGuide "
     "sigConvertResult:0:1/1"},
    {"deviceMgr.disks", WrongValue, "WastedMbr",
     "sendUserInfo | Due to incorrect partition table settings on disk 1, | closeGuide disks "
     "sigConvertResult:0:1/1"},
    {"deviceMgr", NoObject, "LargeFat32",
     "sendUserInfo | We recommend converting the file system of the large | sigConvertResult:6:-1/2"},
    {"deviceMgr.disks", kNotCalled, "LargeFat32",
     "sendUserInfo | We recommend converting the file system of the large | sigConvertResult:6:-1/2"},
    {"deviceMgr.disks", WrongValue, "LargeFat32",
     "sendUserInfo | We recommend converting the file system of the large | disks sigConvertResult:6:-1/2"},

    {"__zormain.bootrepairEnabled", kNotCalled, "BootEntries",
     "sendUserInfo | Invalid or duplicate boot entries were found in the | closeGuide"},
    {"__zormain.bootrepairEnabled", WrongValue | Throws, "BootEntries",
     "sendUserInfo | Invalid or duplicate boot entries were found in the | closeGuide bootrepairEnabled"},

    // Aligned and not raw unless the host has answered otherwise.
    {"toolbox", NoObject, "Alignment", "sendUserInfo |  | "},
    {"toolbox.check4kAlign", kNotCalled, "Alignment", "sendUserInfo |  | "},
    {"partitionrecovery", NoObject, "RawPartition", "sendUserInfo |  | "},
    {"partitionrecovery.isRawPart", kNoAnswer, "RawPartition", "sendUserInfo |  | "},

    {"__zormain.createBootMediaEnabled", kNotCalled, "BitLockerUsb",
     "sendUserInfo | For users with BitLocker encryption on C drive, we | closeGuide"},
    {"__zormain.createBootMediaEnabled", WrongValue | Throws, "BitLockerUsb",
     "sendUserInfo | For users with BitLocker encryption on C drive, we | closeGuide createBootMediaEnabled"},

    // A missing index reads as 0.
    {"deviceMgr", NoObject, "CheckerPage", "sendUserInfo |  | closeGuide sigConvertResult:0:0/1"},
    {"deviceMgr.bootDisks", kNotCalled, "CheckerPage",
     "sendUserInfo |  | closeGuide disks sigConvertResult:0:0/3"},
    {"deviceMgr.bootDisks", WrongValue, "CheckerPage",
     "sendUserInfo |  | bootDisks closeGuide disks sigConvertResult:0:0/3"},
    {"deviceMgr.disks", kNotCalled, "CheckerPage",
     "sendUserInfo |  | bootDisks closeGuide sigConvertResult:0:1/1"},
    {"deviceMgr.disks", WrongValue, "CheckerPage",
     "sendUserInfo |  | bootDisks closeGuide disks sigConvertResult:0:1/1"},

    // Valid unless the host objects; a missing first method ends the check.
    {"diskconverter", NoObject, "ConversionCheck", " | true true true"},
    {"diskconverter.isFunValid", NoMember, "ConversionCheck", " | true true true"},
    {"diskconverter.isFunValid", kNotCalled, "ConversionCheck",
     "isMBR2GPTValid isGPT2MBRValid | false false true"},
    {"diskconverter.isFunValid", Throws, "ConversionCheck",
     "isFunValid isFunValid isFunValid | false false false"},
    {"diskconverter.isMBR2GPTValid", kNotCalled, "ConversionCheck",
     "isFunValid isFunValid isGPT2MBRValid isFunValid | true false true"},
    {"diskconverter.isMBR2GPTValid", Throws, "ConversionCheck",
     "isFunValid isMBR2GPTValid isFunValid isGPT2MBRValid isFunValid | true false true"},
    {"diskconverter.isGPT2MBRValid", kNotCalled, "ConversionCheck",
     "isFunValid isMBR2GPTValid isFunValid isFunValid | false true true"},
    {"diskconverter.isGPT2MBRValid", Throws, "ConversionCheck",
     "isFunValid isMBR2GPTValid isFunValid isGPT2MBRValid isFunValid | false true true"},

    // A missing page or disk rejects the clone. An objection that cannot be requested counts as missing. An
    // order that could not be delivered counts as given if its method exists.
    {"clone", NoObject, "PageCalls", "closeGuide disks closeGuide doprfunction | no signal | true"},
    {"clone.cloneType", NoMember | OtherSignature, "PageCalls",
     "closeGuide disks closeGuide doprfunction | no signal | true"},
    {"clone.invalidInfo", NoMember, "PageCalls",
     "closeGuide disks cloneType closeGuide doprfunction | no signal | true"},
    {"clone.invalidInfo", kNotCalled, "PageCalls",
     "closeGuide disks cloneType disks disks closeGuide doprfunction | 3: | true"},
    {"clone.invalidInfo", Throws, "PageCalls",
     "closeGuide disks cloneType disks invalidInfo disks invalidInfo closeGuide doprfunction | 3: | true"},
    {"deviceMgr", NoObject, "PageCalls", "closeGuide cloneType closeGuide doprfunction | no signal | true"},
    {"deviceMgr.disks", kNotCalled, "PageCalls",
     "closeGuide cloneType closeGuide doprfunction | no signal | true"},
    {"__zormain", NoObject, "PageCalls",
     "closeGuide disks cloneType disks invalidInfo closeGuide | 1:no good | false"},
    {"__zormain.doprfunction", NoMember, "PageCalls",
     "closeGuide disks cloneType disks invalidInfo closeGuide | 1:no good | false"},

    {"multilanguage", NoObject, "Language", "onTranslate 0"},
    {"multilanguage.sigCurrentLanguageChanged", kNotCalled, "Language", "onTranslate 0"},
};

QString withoutSkipped(QString part, const FaultCase& row)
{
    QStringList calls = part.split(' ', Qt::SkipEmptyParts);
    for (const Member& member : allMembers()) {
        if (isSkipped(member, row))
            calls.removeAll(QString::fromLatin1(member.name));
    }
    return calls.join(' ');
}

QString whereOf(const FaultCase& row)
{
    return row.member.name.isEmpty() ? row.member.object : row.member.where();
}

} // namespace

QString expectedOutcome(const std::string& journey, const QString& whole, const FaultCase& row)
{
    for (const Effect& effect : kEffects) {
        if (journey == effect.journey && whereOf(row) == effect.member && (row.fault & effect.faults) != 0)
            return effect.outcome;
    }
    const QStringList parts = whole.split(" | ");
    if (parts.size() < 3)
        return whole;
    return withoutSkipped(parts[0], row) + " | " + parts[1] + " | " + withoutSkipped(parts[2], row);
}

bool reaches(const std::string& journey, const QString& whole, const FaultCase& row)
{
    const QStringList called = whole.split(' ');
    for (const Member& member : allMembers()) {
        const bool broken =
            row.fault == NoObject ? member.object == row.member.object : member.where() == row.member.where();
        if (broken && called.contains(QString::fromLatin1(member.name)))
            return true;
    }
    return std::any_of(std::begin(kEffects), std::end(kEffects), [&](const Effect& effect) {
        return journey == effect.journey && whereOf(row) == effect.member;
    });
}
