// Each recommendation of a case in the user's language: text and buttons are translated as whole strings
// before their placeholders are replaced.
#include "tests/recscan/ExpectedTexts.h"
#include "tests/recscan/ScanFixture.h"
#include "tests/recscan/TextTranslator.h"

#include <ostream>

namespace {

// The machine on which the case fires.
enum class Situation {
    NeedsGpt,
    NotReady,
    Ready,
    DiskSmart,
    RoomBeside,
    RoomElsewhere,
    DriveShort,
    LargeMbr,
    LargeFat32,
    BootEntries,
    Unaligned,
    BitLockerSystem,
    SlowBoot,
    Raw,
    Locked
};

struct Row
{
    const char* name;
    int index;
    Situation situation;
    const char* source;
    const char* value; ///< of each placeholder
    QStringList buttons;
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

class TranslatedTexts : public ScanFixture, public testing::WithParamInterface<Row>
{
protected:
    void enableWin11(bool gpt)
    {
        host.spec("partitionmanager").answer("isWin11CheckerEnable", true);
        host.spec("deviceMgr").answer("bootDisks", QVariantList{QVariantMap{{"isGPT", gpt}}});
    }
    void prepare(Situation situation)
    {
        const QVariantMap full = partitionMap(0, "C", 10 * kGib, 9 * kGib);
        switch (situation) {
        case Situation::NeedsGpt:
            return enableWin11(false);
        case Situation::NotReady:
            return enableWin11(true);
        case Situation::Ready:
            passReadinessChecks();
            return enableWin11(true);
        case Situation::DiskSmart:
            host.spec("partitionmanager").answer("hasDiskSmartInfoError", true);
            return;
        case Situation::BootEntries:
            return installBootChecker("echo FindErrorItem\nexit 1\n");
        default:
            machine = machineFor(situation, full);
        }
    }
    static QVariantList machineFor(Situation situation, const QVariantMap& full)
    {
        switch (situation) {
        case Situation::RoomBeside:
            return {diskMap(0, {full, partitionMap(0, "D", 100 * kGib, 0)})};
        case Situation::RoomElsewhere:
            return {diskMap(0, {full}), diskMap(1, {partitionMap(1, "E", 100 * kGib, 0)})};
        case Situation::DriveShort:
            return {
                diskMap(0, {partitionMap(0, "D", 10 * kGib, 9 * kGib), partitionMap(0, "E", 100 * kGib, 0)})};
        case Situation::LargeMbr:
            return {diskMap(2, {}, {{"isGPT", false}, {"size", qlonglong(2199023255553)}})};
        case Situation::LargeFat32:
            return {diskMap(2, {partitionMap(2, "F", 34359738369, 0, {{"fsString", "FAT32"}})},
                            {{"isUSB", true}})};
        case Situation::BitLockerSystem:
            return {diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib, {{"bltState", 1}})})};
        case Situation::SlowBoot:
            return {diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib)}, {{"isSSD", false}})};
        case Situation::Locked:
            return {diskMap(1, {partitionMap(1, "G", kGib, 0, {{"bltState", 3}})})};
        default:
            return {diskMap(5, {partitionMap(5, "G", kGib, 0)})};
        }
    }
};

TEST_P(TranslatedTexts, TextAndButtonsOfTheCase)
{
    const Row& row = GetParam();
    host.spec("toolbox").answer("check4kAlign", false);
    host.spec("partitionrecovery").answer("isRawPart", true);
    prepare(row.situation);
    const InstalledTranslator translator(row.buttons + QStringList(row.source));
    const QVariantMap record = scanFrom(row.index);
    QVariantList buttons;
    for (const QString& button : row.buttons)
        buttons << translated(button);
    EXPECT_EQ(record.value("msg"),
              QVariant(translated(row.source).replace("%1", row.value).replace("%2", row.value)));
    EXPECT_EQ(record.value("buttons"), QVariant(buttons));
}

const QStringList kUsual = {"Accept", "Cancel"};

INSTANTIATE_TEST_SUITE_P(
    All, TranslatedTexts,
    testing::Values(
        Row{"NeedsGpt", 0, Situation::NeedsGpt, kTextNeedsGpt, "", {"Convert today", "Cancel"}},
        Row{"NotReady", 0, Situation::NotReady, kTextNotReady, "", {"See upgrade options"}},
        Row{"Ready", 0, Situation::Ready, kTextReady, "", {"Learn more"}},
        Row{"DiskSmart", 1, Situation::DiskSmart, kTextDiskSmart, "0", kUsual},
        Row{"SystemDriveRoomBeside", 2, Situation::RoomBeside, kTextSmartLayoutSystem, "C", kUsual},
        Row{"SystemDriveRoomElsewhere", 2, Situation::RoomElsewhere, kTextMigrate, "C", kUsual},
        Row{"Drive", 3, Situation::DriveShort, kTextSmartLayout, "D", kUsual},
        Row{"LargeMbrDisk", 4, Situation::LargeMbr, kTextWastedMbr, "2", kUsual},
        Row{"LargeFat32Drive", 5, Situation::LargeFat32, kTextFat32, "2", kUsual},
        Row{"BootEntries", 6, Situation::BootEntries, kTextBootEntries, "", kUsual},
        Row{"UnalignedSsd", 7, Situation::Unaligned, kText4k, "5", kUsual},
        Row{"BitLockerSystemDrive", 8, Situation::BitLockerSystem, kTextBitLockerUsb, "C", kUsual},
        Row{"SlowBootDisk", 9, Situation::SlowBoot, kTextSlowBoot, "", {"Got it"}},
        Row{"RawPartition", 10, Situation::Raw, kTextRaw, "", kUsual},
        Row{"LockedDrive", 11, Situation::Locked, kTextLocked, "G", kUsual}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
