// The host calls during a refill of the inventory: one for each disk and one for each partition.
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"

#include <QtQml/QQmlContext>

#include <gtest/gtest.h>

namespace {

QVariantMap part(int diskIndex, const char* letter, qlonglong size = 100)
{
    return {{"diskIndex", diskIndex}, {"driveLetter", QString::fromUtf8(letter)}, {"size", size}};
}

QVariantMap region(int diskIndex, qlonglong size)
{
    return {{"diskIndex", diskIndex}, {"unallocated", true}, {"size", size}};
}

QVariantMap disk(int diskIndex, const QVariantList& partitions)
{
    return {{"diskIndex", diskIndex}, {"partitions", partitions}};
}

class InventoryHost : public testing::Test
{
protected:
    void push() { host.bridge()->setDiskInfo(info); }

    QString aligned()
    {
        std::vector<DiskInfo> records;
        host.bridge()->getDiskInfo(records);
        QString text;
        for (const DiskInfo& record : records)
            text += record.not4kAligned ? '1' : '0';
        return text;
    }

    QString raw()
    {
        std::vector<PartitionInfo> records;
        host.bridge()->getAllPartitionInfo(records);
        QString text;
        for (const PartitionInfo& record : records)
            text += record.isRawPartition ? '1' : '0';
        return text;
    }

    RecordingHost host;
    QVariantList info{disk(0, {part(0, "C:"), region(0, 5)}), QVariant(5), disk(1, {QVariant("x")})};
};

TEST_F(InventoryHost, IsCalledDiskByDiskWithTheWholeMapOnTheCallersThread)
{
    host.build();
    QThread* caller = nullptr;
    runOnOtherThread([&] {
        caller = QThread::currentThread();
        push();
    });
    const auto calls = host.recorder().calls();
    QStringList lines;
    for (const HostCallRecord& call : calls) {
        lines << call.where() + ' ' + typed(call.arguments);
        EXPECT_EQ(call.thread, caller);
        EXPECT_TRUE(call.withResult);
    }
    const QString c = "map{diskIndex=int:0,driveLetter=QString:\"C:\",size=qlonglong:100}";
    const QString space = "map{diskIndex=int:0,size=qlonglong:5,unallocated=bool:true}";
    EXPECT_EQ(lines,
              QStringList(
                  {"toolbox.check4kAlign list[map{diskIndex=int:0,partitions=list[" + c + "," + space + "]}]",
                   "partitionrecovery.isRawPart list[" + c + "]",
                   "partitionrecovery.isRawPart list[" + space + "]", "toolbox.check4kAlign list[map{}]",
                   "toolbox.check4kAlign list[map{diskIndex=int:1,partitions=list[QString:\"x\"]}]",
                   "partitionrecovery.isRawPart list[map{}]"}));
}

TEST_F(InventoryHost, Alignment_IsTheNegationOfItsAnswer)
{
    host.spec("toolbox").answer("check4kAlign", [](const QVariantList& arguments) {
        return QVariant(arguments.first().toMap().value("diskIndex").toInt() == 1);
    });
    host.build();
    push();
    EXPECT_EQ(aligned(), "110");
}

TEST_F(InventoryHost, RawPartitions_AreItsAnswers)
{
    host.spec("partitionrecovery").answer("isRawPart", [](const QVariantList& arguments) {
        return QVariant(arguments.first().toMap().contains("unallocated"));
    });
    host.build();
    push();
    EXPECT_EQ(raw(), "010");
}

TEST_F(InventoryHost, WithoutTheObjectsOrMethods_BothStayFalseAndTheRestIsFilled)
{
    host.without("toolbox").spec("partitionrecovery").remove("isRawPart");
    host.build();
    push();
    EXPECT_EQ(aligned() + ' ' + raw(), "000 000");
    EXPECT_EQ(host.bridge()->getPartitionSize("C"), 100);
}

TEST_F(InventoryHost, WithTheOtherMethodMissing_BothStayFalse)
{
    host.without("partitionrecovery").spec("toolbox").remove("check4kAlign");
    host.build();
    push();
    EXPECT_EQ(aligned() + ' ' + raw(), "000 000");
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(InventoryHost, WithMethodsOfAnotherSignature_BothStayFalse)
{
    host.spec("toolbox").remove("check4kAlign").method("check4kAlign(QVariantMap)", "bool");
    host.spec("partitionrecovery")
        .remove("isRawPart")
        .method("isRawPart(QVariant)", "QString", [](const QVariantList&) { return QVariant("true"); });
    host.build();
    push();
    EXPECT_EQ(aligned() + ' ' + raw(), "000 000");
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(InventoryHost, WithoutAnEngine_BothStayFalse)
{
    host.buildWithoutEngine();
    push();
    EXPECT_EQ(aligned() + ' ' + raw(), "000 000");
}

TEST_F(InventoryHost, TheAlignmentQuestion_IsFoundOnceForTheWholePush)
{
    host.spec("toolbox").answer("check4kAlign", [this](const QVariantList&) {
        host.engine()->rootContext()->setContextProperty("toolbox", nullptr);
        return QVariant(false);
    });
    host.build();
    push();
    EXPECT_EQ(aligned(), "111");
}

TEST_F(InventoryHost, TheRawQuestion_IsFoundOnceForEachDisk)
{
    host.spec("partitionrecovery").answer("isRawPart", [this](const QVariantList&) {
        host.engine()->rootContext()->setContextProperty("partitionrecovery", nullptr);
        return QVariant(true);
    });
    host.build();
    push();
    EXPECT_EQ(raw(), "110");
}

TEST_F(InventoryHost, AHostThatReadsTheInventoryDuringARefill_SeesThePreviousOne)
{
    QStringList seen;
    host.spec("partitionrecovery").answer("isRawPart", [&](const QVariantList&) {
        std::vector<DiskInfo> disks;
        host.bridge()->getDiskInfo(disks);
        std::vector<PartitionInfo> all;
        host.bridge()->getAllPartitionInfo(all);
        std::vector<PartitionInfo> one;
        host.bridge()->getPartitionInfo(one, 0);
        seen << QStringLiteral("%1 %2 %3 %4")
                    .arg(disks.size())
                    .arg(all.size())
                    .arg(one.size())
                    .arg(host.bridge()->getPartitionSize("C"));
        return QVariant(false);
    });
    host.build();
    host.bridge()->setDiskInfo({disk(0, {part(0, "C:", 7)})});
    EXPECT_EQ(seen, QStringList({"0 0 0 0"}));
    seen.clear();
    push();
    EXPECT_EQ(seen, QStringList({"1 1 1 7", "1 1 1 7", "1 1 1 7"}));
}

TEST_F(InventoryHost, Records_ReachTheQuestionsWithTheirOwnKeysAndNoOthers)
{
    // Neither has a key that the inventory reads. A lookup must not add one.
    info = {QVariantMap{{"own", 1}, {"partitions", QVariantList{QVariantMap{{"other", "x"}}}}}};
    host.build();
    push();
    const auto calls = host.recorder().calls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(typed(calls[0].arguments), "list[map{own=int:1,partitions=list[map{other=QString:\"x\"}]}]");
    EXPECT_EQ(typed(calls[1].arguments), "list[map{other=QString:\"x\"}]");
}

} // namespace
