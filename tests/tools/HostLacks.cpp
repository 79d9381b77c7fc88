#include "tests/tools/HostLacks.h"

#include <ostream>

namespace {

using Rows = std::vector<LackRow>;

const QString kQueued = "Task Queued";
const QString kNotValid = "Task NotValid";
const QString kPage = "partitionmanager.doFunFromAI";
const QString kGuide = "window.closeGuide";
const QString kDisks = "deviceMgr.disks";
const QString kBox = "__zormain.doToolBox";

// The same rows for each of several tools.
Rows forEach(const std::vector<const char*>& methods, const Rows& pattern)
{
    Rows rows;
    for (const char* method : methods) {
        for (LackRow row : pattern) {
            row.method = method;
            rows.push_back(row);
        }
    }
    return rows;
}

Rows pageRows()
{
    return forEach({"OpenDiskLayoutEditor",
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
                    "AllocateSpaceFromPartitionToNewPartition"},
                   {{"", "bridge", kNotValid, {}},
                    {"", "engine", kNotValid, {}},
                    {"", "-partitionmanager", kNotValid, {}},
                    {"", "-partitionmanager.doFunFromAI", kNotValid, {}},
                    {"", "no partitionmanager.doFunFromAI", kNotValid, {kPage}},
                    {"", "-window", kQueued, {kPage, kPage}},
                    {"", "-window.closeGuide", kQueued, {kPage, kPage}}});
}

// What all clone tools share once both records were looked up.
Rows clonePageRows()
{
    const QStringList asked{kDisks, kDisks, kGuide, kDisks};
    const QStringList written = asked + QStringList{"clone.cloneType"};
    const QStringList judged{kDisks,
                             kDisks,
                             kDisks,
                             "clone.cloneType",
                             kDisks,
                             "clone.invalidInfo",
                             kDisks,
                             "clone.invalidInfo",
                             "aibridge.sigCloneResult"};
    const QStringList refused = written + QStringList{kDisks, "clone.invalidInfo", "aibridge.sigCloneResult"};
    return {{"", "-clone", "", asked},
            {"", "-clone.cloneType", "", asked},
            {"", "-clone.invalidInfo", "", written},
            {"", "no clone.invalidInfo", kQueued, refused},
            {"", "-window", kQueued, judged},
            {"", "-window.closeGuide", kQueued, judged}};
}

Rows cloneRows()
{
    const QStringList opened{kGuide, "clone.cloneType", "aibridge.sigCloneResult"};
    Rows rows = forEach({"CloneOSDataFromDisk", "CloneOSDataFromPartition", "CloneDiskToDisk",
                         "ClonePartitionToPartition", "ClonePartitionToDisk"},
                        clonePageRows());
    const Rows byLetter = forEach({"CloneOSDataFromCurrent", "CloneOSDataFromPartition",
                                   "ClonePartitionToPartition", "ClonePartitionToDisk"},
                                  {{"", "bridge", kNotValid, {kGuide}},
                                   {"", "engine", "", {kGuide}},
                                   {"", "-deviceMgr", kQueued, opened},
                                   {"", "-deviceMgr.disks", kQueued, opened}});
    const QString notListed = "It seems that disk0 is not exist";
    const Rows byDisk =
        forEach({"CloneDiskToDisk"}, {{"", "bridge", kNotValid, {kGuide}},
                                      {"", "engine", "", {kGuide}},
                                      {"", "-deviceMgr", notListed, {kGuide, "clone.cloneType"}},
                                      {"", "-deviceMgr.disks", notListed, {kGuide, "clone.cloneType"}}});
    // Its own check comes before anything else, the bridge's included.
    const QString notSystem = "It seems that disk0 is not os disk";
    const Rows bySystemDisk = forEach({"CloneOSDataFromDisk"}, {{"", "bridge", notSystem, {}},
                                                                {"", "engine", notSystem, {}},
                                                                {"", "-deviceMgr", notSystem, {}},
                                                                {"", "-deviceMgr.disks", notSystem, {}}});
    for (const Rows& group : {byLetter, byDisk, bySystemDisk})
        rows.insert(rows.end(), group.begin(), group.end());
    return rows;
}

#ifndef Q_OS_WIN
// Without drive letters the running system's partition is not found, and the guide opens at its first step.
Rows cloneFromCurrentRows()
{
    const QStringList asked{kDisks, kDisks, kGuide, kDisks};
    const QStringList opened{kDisks, kDisks, kDisks, "clone.cloneType", "aibridge.sigCloneResult"};
    return forEach({"CloneOSDataFromCurrent"},
                   {{"", "-clone", "", asked},
                    {"", "-clone.cloneType", "", asked},
                    {"", "-clone.invalidInfo", "", asked + QStringList{"clone.cloneType"}},
                    {"", "-window", kQueued, opened},
                    {"", "-window.closeGuide", kQueued, opened}});
}
#else
Rows cloneFromCurrentRows()
{
    return forEach({"CloneOSDataFromCurrent"}, clonePageRows());
}
#endif

Rows conversionRows()
{
    const QString told = "aibridge.sigConvertResult";
    Rows rows =
        forEach({"ConvertDiskToGpt", "ConvertDiskToMbr", "ConvertDiskToBasic", "ConvertDiskToDynamic"},
                {{"", "bridge", kNotValid, {kGuide}},
                 {"", "engine", kQueued, {kGuide, told}},
                 {"", "-deviceMgr", kQueued, {kGuide, told}},
                 {"", "-deviceMgr.disks", kQueued, {kGuide, told}},
                 {"", "-window", kQueued, {kDisks, told}},
                 {"", "-window.closeGuide", kQueued, {kDisks, told}}});
    const Rows partitions =
        forEach({"ConvertPartitionToNtfs", "ConvertPartitionToFat", "ConvertPartitionToExfat"},
                {{"", "bridge", kNotValid, {}},
                 {"", "engine", kQueued, {told}},
                 {"", "-deviceMgr", kQueued, {told}},
                 {"", "-deviceMgr.disks", kQueued, {told}},
                 {"", "-window", kQueued, {kDisks, told}}});
    rows.insert(rows.end(), partitions.begin(), partitions.end());
    return rows;
}

Rows askedMediaRows()
{
    const QString ask = "__zormain.createBootMediaEnabled";
    const QString run = "__zormain.dobmfunction";
    return forEach({"CreateBootableISO", "CreateBootableUsbByDisk", "CreateBootableUsbByDriveLetter"},
                   {{"", "bridge", kNotValid, {}},
                    {"", "engine", kNotValid, {kGuide}},
                    {"", "-__zormain", kNotValid, {kGuide}},
                    {"", "-__zormain.createBootMediaEnabled", kNotValid, {kGuide}},
                    {"", "no __zormain.createBootMediaEnabled", kNotValid, {kGuide, ask}},
                    {"", "-__zormain.dobmfunction", kQueued, {kGuide, ask}},
                    {"", "-window", kQueued, {ask, run}},
                    {"", "-window.closeGuide", kQueued, {ask, run}}});
}

Rows otherMediaRows()
{
    const QString is = "bootablemedia.isAlreadyEnable";
    const QString run = "__zormain.dobmfunction";
    Rows rows = forEach({"CreateWindowsInstallerMedia"},
                        {{"", "bridge", kNotValid, {}},
                         {"", "engine", kQueued, {kGuide}},
                         {"", "-__zormain", kQueued, {kGuide}},
                         {"", "-__zormain.dobmfunction", kQueued, {kGuide}},
                         {"", "no __zormain.createBootMediaEnabled", kQueued, {kGuide, run}},
                         {"", "-window", kQueued, {run}},
                         {"", "-window.closeGuide", kQueued, {run}}});
    const Rows install =
        forEach({"InstallAndEnablePreOS"}, {{"", "bridge", kNotValid, {}},
                                            {"", "engine", kQueued, {kGuide}},
                                            {"", "-bootablemedia", kQueued, {kGuide, run}},
                                            {"", "-bootablemedia.isAlreadyEnable", kQueued, {kGuide, run}},
                                            {"", "yes bootablemedia.isAlreadyEnable", kNotValid, {is}},
                                            {"", "-__zormain", kQueued, {is, kGuide}},
                                            {"", "-__zormain.dobmfunction", kQueued, {is, kGuide}},
                                            {"", "-window", kQueued, {is, run}},
                                            {"", "-window.closeGuide", kQueued, {is, run}}});
    const QString there = "yes bootablemedia.isAlreadyEnable";
    const Rows disable =
        forEach({"DisablePreOS"}, {{"", "bridge", kNotValid, {}},
                                   {"", "engine", kNotValid, {}},
                                   {"", "-bootablemedia", kNotValid, {}},
                                   {"", "-bootablemedia.isAlreadyEnable", kNotValid, {}},
                                   {"", there, kQueued, {is, kGuide, run}},
                                   {"", there + " & -__zormain", kQueued, {is, kGuide}},
                                   {"", there + " & -__zormain.dobmfunction", kQueued, {is, kGuide}},
                                   {"", there + " & -window", kQueued, {is, run}},
                                   {"", there + " & -window.closeGuide", kQueued, {is, run}}});
    for (const Rows& group : {install, disable})
        rows.insert(rows.end(), group.begin(), group.end());
    return rows;
}

Rows recoveryRows()
{
    const QString valid = "partitionrecovery.isDiskIndexValid";
    const QString health = "__zormain.opendiskhealth";
    Rows rows = forEach({"RecoverLostPartition"},
                        {{"", "bridge", kNotValid, {}},
                         {"", "engine", kNotValid, {kGuide}},
                         {"", "-partitionrecovery", kNotValid, {kGuide}},
                         {"", "-partitionrecovery.isDiskIndexValid", kNotValid, {kGuide}},
                         {"", "no partitionrecovery.isDiskIndexValid", kNotValid, {kGuide, valid}},
                         {"", "-__zormain", kNotValid, {kGuide, valid}},
                         {"", "-__zormain.doprfunction", kNotValid, {kGuide, valid}},
                         {"", "-window", kQueued, {valid, "__zormain.doprfunction"}},
                         {"", "-window.closeGuide", kQueued, {valid, "__zormain.doprfunction"}}});
    const Rows healthRows =
        forEach({"DiskHealthCheck"}, {{"", "bridge", kNotValid, {}},
                                      {"", "engine", kNotValid, {kGuide}},
                                      {"", "-__zormain", kNotValid, {kGuide}},
                                      {"", "-__zormain.opendiskhealth", kNotValid, {kGuide}},
                                      {"", "-window", kQueued, {health}},
                                      {"", "-window.closeGuide", kQueued, {health}}});
    const Rows off = forEach({"RepairRawOrDamagedPartition"},
                             {{"", "bridge", kNotValid, {}}, {"", "engine", kNotValid, {}}});
    for (const Rows& group : {healthRows, off})
        rows.insert(rows.end(), group.begin(), group.end());
    return rows;
}

Rows recordToolRows()
{
    return forEach({"ToggleWriteProtection", "RebuildMbr", "AlignDiskTo4k", "ScanDiskBadSectors",
                    "ScanPartitionBadSectors", "RetrieveBitLockerRecoveryKey", "CheckPartitionFileSystem"},
                   {{"", "bridge", kNotValid, {kGuide}},
                    {"", "engine", kNotValid, {kGuide}},
                    {"", "-deviceMgr", kQueued, {kGuide, kBox}},
                    {"", "-deviceMgr.disks", kQueued, {kGuide, kBox}},
                    {"", "-__zormain", kNotValid, {kDisks, kGuide}},
                    {"", "-__zormain.doToolBox", kNotValid, {kDisks, kGuide}},
                    {"", "no __zormain.doToolBox", kNotValid, {kDisks, kGuide, kBox}},
                    {"", "-window", kQueued, {kDisks, kBox}},
                    {"", "-window.closeGuide", kQueued, {kDisks, kBox}}});
}

Rows gatedBoxRows(const char* method, const QString& gate)
{
    return forEach({method}, {{"", "bridge", kNotValid, {kGuide}},
                              {"", "engine", kNotValid, {kGuide}},
                              {"", "-__zormain", kNotValid, {kGuide}},
                              {"", "-" + gate, kNotValid, {kGuide}},
                              {"", "no " + gate, kNotValid, {kGuide, gate}},
                              {"", "-__zormain.doToolBox", kQueued, {kGuide, gate}},
                              {"", "no __zormain.doToolBox", kNotValid, {kGuide, gate, kBox}},
                              {"", "-window", kQueued, {gate, kBox}},
                              {"", "-window.closeGuide", kQueued, {gate, kBox}}});
}

Rows upgradeCheckRows()
{
    const QString enabled = "partitionmanager.isWin11CheckerEnable";
    return forEach({"Windows11UpgradeCheck"},
                   {{"", "bridge", kNotValid, {}},
                    {"", "engine", kNotValid, {}},
                    {"", "-partitionmanager", kNotValid, {}},
                    {"", "-" + enabled, kNotValid, {}},
                    {"", "no " + enabled, kNotValid, {enabled}},
                    {"", "-__zormain", kNotValid, {enabled, kGuide}},
                    {"", "-__zormain.doToolBox", kNotValid, {enabled, kGuide}},
                    {"", "no __zormain.doToolBox", kNotValid, {enabled, kGuide, kBox}},
                    {"", "-window", kQueued, {enabled, kBox}},
                    {"", "-window.closeGuide", kQueued, {enabled, kBox}}});
}

Rows readAndGateLacks()
{
    const QString told = "aibridge.sigAbout2CallFun";
    const QString event = "__qml_executer.sendUserInfo";
    return {{"Init", "bridge", "true", {}},
            {"Init", "engine", "true", {}},
            {"PostProcessing", "bridge", "true", {}},
            {"PostProcessing", "engine", "true", {"aibridge.sigAfterCallFun"}},
            {"PreProcessing", "bridge", "false ", {}},
            {"PreProcessing", "engine", "true ", {event, told}},
            {"PreProcessing", "-__zormain", "true ", {event, told}},
            {"PreProcessing", "-__zormain.busy", "true ", {event, told}},
            {"PreProcessing", "-window", "true ", {told}},
            {"PreProcessing", "-window.popuped", "true ", {event, told}},
            {"PreProcessing", "-__qml_executer", "true ", {told}},
            {"PreProcessing", "-__qml_executer.sendUserInfo", "true ", {told}},
            {"PreProcessing",
             "yes window.popuped",
             "false An operation is currently in progress, please wait a few moments and try again. If you "
             "need further "
             "assistance, please let me know!",
             {}},
            {"PreProcessing",
             "yes __zormain.busy",
             "false One or more tasks are currently in execution, please wait a few moments and try again. "
             "If you need "
             "further assistance, please let me know!",
             {}},
            {"ListAllDisks", "bridge", "", {}},
            {"ListAllDisks", "engine", "0/1 1/3", {}},
            {"ListPartitionsOnDisk", "bridge", "", {}},
            {"ListPartitionsOnDisk", "engine", "1/E:/100 1//1000 1//9000", {}},
            {"GetPartitionInfo", "bridge", "0//0", {}},
            {"GetPartitionInfo", "engine", "1/E:/100", {}},
            {"GetAllPartitionInfo", "bridge", "", {}},
            {"GetAllPartitionInfo", "engine", "0/C:/5000 1/E:/100 1//1000 1//9000", {}}};
}

bool isProperty(const QString& member)
{
    return member == "busy" || member == "popuped";
}

void setAnswer(FakeSpec& object, const QString& member, bool yes)
{
    if (isProperty(member))
        object.reading(member.toLatin1(), [yes](const QVariantList&) { return QVariant(yes); });
    else if (member == "invalidInfo")
        object.answer("invalidInfo", QVariant(yes ? QString() : QStringLiteral("no room")));
    else
        object.answer(member.toLatin1(), QVariant(yes));
}

} // namespace

std::vector<LackRow> allLackRows()
{
    Rows rows;
    for (const Rows& group : {pageRows(), cloneRows(), cloneFromCurrentRows(), conversionRows(),
                              askedMediaRows(), otherMediaRows(), recoveryRows(), recordToolRows(),
                              gatedBoxRows("PasswordReset", "__zormain.passwordResetEnabled"),
                              gatedBoxRows("RepairWindowsBoot", "__zormain.bootrepairEnabled"),
                              upgradeCheckRows(), readAndGateLacks()})
        rows.insert(rows.end(), group.begin(), group.end());
    return rows;
}

void buildLacking(ToolBench& bench, const QString& lack)
{
    ToolBench::Bridge bridge = ToolBench::Whole;
    for (const QString& part : lack.split(" & ")) {
        const QString name = part.section(' ', -1).remove('-');
        const QString object = name.section('.', 0, 0);
        const QString member = name.section('.', 1);
        if (part == "bridge")
            bridge = ToolBench::NoBridge;
        else if (part == "engine")
            bridge = ToolBench::NoEngine;
        else if (!part.startsWith('-'))
            setAnswer(bench.host().spec(object), member, part.startsWith("yes "));
        else if (member.isEmpty())
            bench.host().without(object);
        else
            bench.host().spec(object).remove(member.toLatin1());
    }
    bench.build(bridge);
}

void PrintTo(const LackRow& row, std::ostream* out)
{
    *out << row.method << " with " << row.lack.toStdString();
}
