// The rows of the disk bars: content, layout, and minimal changes.
#include "host/objects/DiskModel.h"
#include "host/objects/DiskText.h"
#include "host/objects/Timeline.h"
#include "tests/host/MachineText.h"
#include "tests/support/Answers.h"

#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <functional>

namespace {

using host::layoutBar;

TEST(BarLayout, WideEnough_IsToScale)
{
    const auto pieces = layoutBar({100, 300, 100}, 504, 10, 2);
    ASSERT_EQ(pieces.size(), 3u);
    EXPECT_DOUBLE_EQ(pieces[0].width, 100);
    EXPECT_DOUBLE_EQ(pieces[1].width, 300);
    EXPECT_DOUBLE_EQ(pieces[1].x, 102);
    EXPECT_DOUBLE_EQ(pieces[2].x + pieces[2].width, 504);
}

TEST(BarLayout, TinyPieces_GetTheMinimumWidthAndTheRestStaysInProportion)
{
    const auto pieces = layoutBar({1, 1000000, 2000000, 1}, 1000, 20, 0);
    EXPECT_DOUBLE_EQ(pieces[0].width, 20);
    EXPECT_DOUBLE_EQ(pieces[3].width, 20);
    EXPECT_DOUBLE_EQ(pieces[1].width, 320);
    EXPECT_DOUBLE_EQ(pieces[2].width, 640);
}

// The second piece would be wide enough if the first were not widened.
TEST(BarLayout, PieceNarrowedBelowTheMinimumByAnother_IsWidened)
{
    const auto pieces = layoutBar({0, 20, 80}, 100, 20, 0);
    EXPECT_DOUBLE_EQ(pieces[0].width, 20);
    EXPECT_DOUBLE_EQ(pieces[1].width, 20);
    EXPECT_DOUBLE_EQ(pieces[2].width, 60);
}

TEST(BarLayout, TooNarrow_KeepsTheGapsAndGivesEachPieceHalfOfTheAverage)
{
    const auto pieces = layoutBar({1, 4, 15}, 34, 18, 2);
    EXPECT_DOUBLE_EQ(pieces[0].width, 5);
    EXPECT_DOUBLE_EQ(pieces[1].x, 7);
    EXPECT_NEAR(pieces[1].width, 25.0 * 4 / 19, 1e-9);
    EXPECT_NEAR(pieces[2].x + pieces[2].width, 34, 1e-9);
    EXPECT_TRUE(layoutBar({}, 100, 18, 2).empty());
    EXPECT_DOUBLE_EQ(layoutBar({1, 1}, 0, 18, 2)[0].width, 0);
}

TEST(BarLayout, FiveHundredPieces_AreAllVisibleAndFillTheBar)
{
    std::vector<qint64> sizes(500, 1);
    sizes[250] = 1000;
    const auto pieces = layoutBar(sizes, 700, 18, 2);
    for (const host::BarPiece& piece : pieces)
        EXPECT_GT(piece.width, 0.5);
    EXPECT_GT(pieces[250].width, 100);
    EXPECT_NEAR(pieces[499].x + pieces[499].width, 700, 1e-6);
}

TEST(DiskText, Sizes_AreShort)
{
    EXPECT_EQ(host::sizeText(499289948160), "465 GB");
    EXPECT_EQ(host::sizeText(1000204886016), "931.5 GB");
    EXPECT_EQ(host::sizeText(16777216), "16 MB");
}

TEST(DiskText, EachFlag_HasItsWord)
{
    host::Partition entry;
    entry.isPrimary = false;
    entry.isActive = entry.isHidden = entry.isBoot = entry.readonly = true;
    entry.bltState = 3;
    EXPECT_EQ(host::entryFlags(entry),
              QStringList({"Boot", "Active", "Hidden", "Read-only", "Logical", "BitLocker locked"}));
    entry.bltState = 2;
    EXPECT_TRUE(host::entryFlags(entry).contains("BitLocker unlocked"));
    host::Disk disk;
    disk.isOffline = disk.readonly = true;
    EXPECT_EQ(host::diskFlags(disk, true), QStringList({"Health errors", "Offline", "Read-only"}));
}

class DiskModelTest : public testing::Test
{
protected:
    QVariant entry(int disk, int row, int role) const
    {
        return segments(disk)->data(segments(disk)->index(row), role);
    }
    host::SegmentModel* segments(int disk) const
    {
        return qobject_cast<host::SegmentModel*>(model.segments(disk));
    }
    void change(const std::function<void(host::Machine&)>& edit)
    {
        host::Machine next = *backend->machine();
        edit(next);
        backend->change(next);
    }

    std::unique_ptr<host::Backend> backend = simulated(testMachine());
    host::DiskModel model{*backend};
};

TEST_F(DiskModelTest, Rows_AreTheDisksWithTheirEntries)
{
    ASSERT_EQ(model.rowCount(), 6);
    EXPECT_EQ(model.data(model.index(0), host::DiskModel::NameRole), "Disk 0");
    EXPECT_EQ(model.data(model.index(0), host::DiskModel::SizeRole), "200 GB");
    EXPECT_EQ(model.data(model.index(1), host::DiskModel::FlagsRole).toStringList(),
              QStringList({"Health errors"}));
    EXPECT_TRUE(model.data(model.index(4), host::DiskModel::AlarmRole).toBool());
    EXPECT_EQ(entry(0, 1, host::SegmentModel::TitleRole), "C: Windows");
    EXPECT_EQ(entry(0, 1, host::SegmentModel::SubtitleRole), "NTFS  100 GB");
    EXPECT_DOUBLE_EQ(entry(0, 1, host::SegmentModel::ShareRole).toDouble(), 0.5);
    EXPECT_TRUE(entry(0, 3, host::SegmentModel::FreeRole).toBool());
    EXPECT_EQ(model.segments(6), nullptr);
}

TEST_F(DiskModelTest, ChangedLabel_ChangesOneRowOfOneDisk)
{
    QSignalSpy rows(segments(0), &QAbstractItemModel::dataChanged);
    QSignalSpy others(segments(1), &QAbstractItemModel::dataChanged);
    QSignalSpy disks(&model, &QAbstractItemModel::dataChanged);
    change([](host::Machine& machine) { machine.partition("D")->label = "Photos"; });
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0][0].toModelIndex().row(), 2);
    EXPECT_EQ(entry(0, 2, host::SegmentModel::TitleRole), "D: Photos");
    EXPECT_EQ(others.size(), 0);
    EXPECT_EQ(disks.size(), 0);
}

TEST_F(DiskModelTest, NewPartition_IsOneNewRow)
{
    QSignalSpy inserted(segments(0), &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(segments(0), &QAbstractItemModel::modelReset);
    change([](host::Machine& machine) {
        host::Partition added = machine.disks[0].partitions[3];
        host::Partition& rest = machine.disks[0].partitions[3];
        added.unallocated = false;
        added.label = "New";
        added.size = kGiB;
        rest.startSector += kGiB / 512;
        rest.size -= kGiB;
        machine.disks[0].partitions.insert(machine.disks[0].partitions.begin() + 3, added);
    });
    EXPECT_EQ(inserted.size(), 1);
    EXPECT_EQ(reset.size(), 0);
    ASSERT_EQ(segments(0)->count(), 5);
    EXPECT_EQ(entry(0, 3, host::SegmentModel::TitleRole), "New");
    EXPECT_TRUE(entry(0, 4, host::SegmentModel::FreeRole).toBool());
    EXPECT_EQ(entry(0, 4, host::SegmentModel::SubtitleRole), "9 GB");
}

TEST_F(DiskModelTest, RemovedDisk_RemovesItsRowOnly)
{
    QObject* last = model.segments(5);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    change([](host::Machine& machine) { machine.disks.erase(machine.disks.begin() + 2); });
    ASSERT_EQ(removed.size(), 1);
    EXPECT_EQ(removed[0][1].toInt(), 2);
    EXPECT_EQ(model.rowCount(), 5);
    EXPECT_EQ(model.segments(4), last);
    EXPECT_EQ(model.data(model.index(2), host::DiskModel::NameRole), "Disk 3");
}

TEST_F(DiskModelTest, BarWidth_LaysTheEntriesOut)
{
    segments(0)->setBarWidth(600);
    const double last = entry(0, 3, host::SegmentModel::LeftRole).toDouble() +
                        entry(0, 3, host::SegmentModel::WidthRole).toDouble();
    EXPECT_NEAR(last, 600, 0.01);
    EXPECT_GE(entry(0, 0, host::SegmentModel::WidthRole).toDouble(), 18);
}

TEST(TimelineModel, Announcement_IsSplitAfterTheName)
{
    host::Timeline timeline;
    for (const char* call :
         {"FormatPartition driveLetter=E", "FormatPartition(E, NTFS)", "{\"tool\": 1}", ""})
        timeline.announce(call);
    const auto cell = [&](int row, int role) { return timeline.data(timeline.index(row), role).toString(); };
    EXPECT_EQ(cell(0, host::Timeline::ToolRole), "FormatPartition");
    EXPECT_EQ(cell(0, host::Timeline::ArgumentsRole), "driveLetter=E");
    EXPECT_EQ(cell(1, host::Timeline::ToolRole), "FormatPartition");
    EXPECT_EQ(cell(1, host::Timeline::ArgumentsRole), "(E, NTFS)");
    EXPECT_EQ(cell(2, host::Timeline::ToolRole), "call");
    EXPECT_EQ(cell(2, host::Timeline::ArgumentsRole), "tool=1");
    EXPECT_EQ(cell(3, host::Timeline::ToolRole), "call");
}

TEST(TimelineModel, OrderAndRejectionOutsideACall_HaveTheirOwnRows)
{
    host::Timeline timeline;
    timeline.recordOrder("FormatPartition", "driveLetter=E");
    timeline.recordRejection("DeletePartition", "driveLetter=C", "because");
    ASSERT_EQ(timeline.count(), 2);
    EXPECT_EQ(timeline.data(timeline.index(0), host::Timeline::StateRole), "queued");
    EXPECT_EQ(timeline.data(timeline.index(1), host::Timeline::StateRole), "rejected");
    EXPECT_EQ(timeline.data(timeline.index(1), host::Timeline::ReasonRole), "because");
}

TEST(TimelineModel, OrderWithinACall_BelongsToIt)
{
    host::Timeline timeline;
    timeline.announce("FormatPartition driveLetter=E");
    timeline.recordOrder("FormatPartition", "driveLetter=E");
    timeline.answer(answers::queued, true);
    EXPECT_EQ(timeline.count(), 1);
}

TEST(TimelineModel, AnswerAfterAGateRejection_BelongsToItsCall)
{
    host::Timeline timeline;
    timeline.announce("FormatPartition driveLetter=E");
    timeline.recordGateRejection("no");
    timeline.answer(answers::queued, true);
    ASSERT_EQ(timeline.count(), 2);
    EXPECT_EQ(timeline.data(timeline.index(0), host::Timeline::StateRole), "queued");
    EXPECT_EQ(timeline.data(timeline.index(1), host::Timeline::StateRole), "held");
}

TEST(TimelineModel, OldestRows_AreRemoved)
{
    host::Timeline timeline;
    for (int call = 0; call < 510; ++call)
        timeline.announce(QString("Tool%1").arg(call));
    EXPECT_EQ(timeline.count(), 500);
    EXPECT_EQ(timeline.data(timeline.index(0), host::Timeline::ToolRole), "Tool10");
}

} // namespace
