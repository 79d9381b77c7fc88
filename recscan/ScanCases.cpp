#include "recscan/ScanCases.h"

#include "ZORNativePlugin.h"

namespace {

using Check = std::optional<Recommendation> (*)(const ScanSubject&);
using Action = void (*)(ZORNativePluginIf& tools, std::string& answer, const QVariantMap& params);

struct CaseRow
{
    RecActionIndex index;
    Check check;
    Action action; ///< null: nothing to do, or implemented in Win11Action.cpp
};

int diskOf(const QVariantMap& params)
{
    return params.value(QStringLiteral("diskIndex")).toInt();
}

std::string driveOf(const QVariantMap& params)
{
    return params.value(QStringLiteral("driveLetter")).toString().toStdString();
}

using Tools = ZORNativePluginIf;
using Params = QVariantMap;

constexpr CaseRow kCases[] = {
    {ActionWin10EndOfSupport, checkWin10EndOfSupport, nullptr},
    {ActionDiskHealth, checkDiskSmart,
     [](Tools& t, std::string& a, const Params& p) { t.DiskHealthCheck(a, diskOf(p)); }},
    {ActionMigrateData, checkSystemDriveSpace,
     [](Tools& t, std::string& a, const Params&) { t.MigrateSystemDriveData(a); }},
    {ActionSmartLayout, checkDriveSpace,
     [](Tools& t, std::string& a, const Params& p) { t.SmartSpaceAdjustment(a, driveOf(p)); }},
    {ActionConvertToGpt, checkWastedMbrSpace,
     [](Tools& t, std::string& a, const Params& p) { t.ConvertDiskToGpt(a, diskOf(p)); }},
    {ActionConvertToExfat, checkLargeFat32External,
     [](Tools& t, std::string& a, const Params& p) { t.ConvertPartitionToExfat(a, driveOf(p)); }},
    {ActionRepairBoot, checkBootEntries,
     [](Tools& t, std::string& a, const Params&) { t.RepairWindowsBoot(a); }},
    {ActionAlign4k, check4kAlignment,
     [](Tools& t, std::string& a, const Params& p) { t.AlignDiskTo4k(a, diskOf(p)); }},
    {ActionCreateUsb, checkBitLockerUsb,
     [](Tools& t, std::string& a, const Params&) { t.CreateBootableUsbByDisk(a, -1); }},
    {ActionNone, checkSlowBootDisk, nullptr},
    {ActionRepairRaw, checkRawPartition,
     [](Tools& t, std::string& a, const Params& p) { t.RepairRawOrDamagedPartition(a, driveOf(p)); }},
    {ActionFindBitLockerKey, checkBitLockerLocked,
     [](Tools& t, std::string& a, const Params& p) { t.RetrieveBitLockerRecoveryKey(a, driveOf(p)); }},
};

constexpr bool rowsAreInOrder()
{
    int index = 0;
    for (const CaseRow& row : kCases) {
        if (row.index != index++)
            return false;
    }
    return index == kCaseCount;
}
static_assert(rowsAreInOrder(), "each number of RecActionIndex has one row, in order");

const CaseRow* caseAt(int index)
{
    return index >= 0 && index < kCaseCount ? &kCases[index] : nullptr;
}

} // namespace

std::optional<Recommendation> runScanCase(int index, const ScanSubject& subject)
{
    const CaseRow* row = caseAt(index);
    return row == nullptr ? std::nullopt : row->check(subject);
}

void runCaseAction(ZORNativePluginIf& tools, int index, const QVariantMap& actionParams)
{
    const CaseRow* row = caseAt(index);
    std::string answer;
    if (row != nullptr && row->action != nullptr)
        row->action(tools, answer, actionParams);
}
