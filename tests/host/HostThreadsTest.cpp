// Members that the library calls on its own threads while the machine changes on the application thread.
#include "host/objects/Scene.h"
#include "plugin/HostCall.h"
#include "tests/host/MachineText.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

constexpr int kRounds = 200;

// Calls each direct method and reads each property once.
bool readAll(const host::Scene& scene, QObject* manager, QObject* devices, QObject* recovery,
             QObject* toolbox)
{
    Q_UNUSED(scene)
    const QVariantList disks =
        callHost<QVariantList>(devices, "disks", ConnectionRule::Direct, 1, false).value_or(QVariantList());
    const QVariantList boot = callHost<QVariantList>(devices, "bootDisks", ConnectionRule::Direct, 0, true)
                                  .value_or(QVariantList());
    const QVariantMap disk = disks.value(0).toMap();
    const QVariantMap partition = disk.value("partitions").toList().value(2).toMap();
    const bool called =
        callHost<bool>(toolbox, "check4kAlign", ConnectionRule::Direct, QVariant(disk)).has_value() &&
        callHost<bool>(recovery, "isRawPart", ConnectionRule::Direct, QVariant(partition)).has_value() &&
        callHost<bool>(manager, "hasDiskSmartInfoError", ConnectionRule::Direct, 1).value_or(false);
    readWindowProperty("popuped");
    // Each label was set together with the used size of its drive.
    const bool whole =
        partition.value("label").toString() == "Data" ||
        partition.value("usedSize").toLongLong() == partition.value("label").toString().toLongLong();
    return called && whole && disks.size() == 6 && boot.size() == 1;
}

TEST(HostThreads, DirectCallsAndReads_DuringChanges_SeeAConsistentMachine)
{
    host::Scene scene(simulated(testMachine()), -1);
    QObject* manager = contextObject(&scene.engine(), "partitionmanager");
    QObject* devices = contextObject(&scene.engine(), "deviceMgr");
    QObject* recovery = contextObject(&scene.engine(), "partitionrecovery");
    QObject* toolbox = contextObject(&scene.engine(), "toolbox");
    QObject* clone = contextObject(&scene.engine(), "clone");
    QObject* main = findRootChild(&scene.engine(), "__zormain");
    std::atomic<int> running{3};
    std::atomic<int> bad{0};
    std::vector<std::thread> readers;
    for (int number = 0; number < 3; ++number) {
        readers.emplace_back([&, number] {
            for (int round = 0; round < kRounds; ++round) {
                bad += readAll(scene, manager, devices, recovery, toolbox) ? 0 : 1;
                main->property("busy");
                clone->setProperty("cloneType", number);
            }
            --running;
        });
    }
    qint64 used = 0;
    while (running > 0) {
        host::Machine next = *scene.core().machine();
        next.partition("D")->usedSize = ++used;
        next.partition("D")->label = QString::number(used);
        scene.core().backend().change(next);
    }
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(bad, 0);
}

TEST(HostThreads, Order_ReturnsAtOnceAndKeepsTheHostBusyUntilItEnds)
{
    host::Scene scene(simulated(testMachine()), -1);
    QObject* manager = contextObject(&scene.engine(), "partitionmanager");
    runOnOtherThread([&] {
        orderHost(manager, "doFunFromAI", ConnectionRule::Call, 31,
                  QVariantMap{{"driveLetter", "D"}, {"newLabel", "Late"}});
    });
    EXPECT_TRUE(pumpUntil([&] { return !scene.core().status().isBusy(); }));
    EXPECT_EQ(scene.core().machine()->partition("D")->label, "Late");
}

TEST(HostThreads, Orders_RunInSequence)
{
    host::Scene scene(simulated(testMachine()), -1);
    scene.core().orders().order(30, {{"driveLetter", "D"}, {"newDriveLetter", "Q:"}});
    scene.core().orders().order(31, {{"driveLetter", "Q"}, {"newLabel", "Moved"}});
    EXPECT_TRUE(scene.core().status().isBusy());
    EXPECT_EQ(scene.core().machine()->partition("D")->label, "Data");
    EXPECT_TRUE(pumpUntil([&] { return !scene.core().status().isBusy(); }));
    ASSERT_NE(scene.core().machine()->partition("Q"), nullptr);
    EXPECT_EQ(scene.core().machine()->partition("Q")->label, "Moved");
}

TEST(HostThreads, OrderMadeImpossibleByAnEarlierOne_FailsAndChangesNothing)
{
    host::Scene scene(simulated(testMachine()), -1);
    scene.core().orders().order(16, {{"driveLetter", "D"}});
    scene.core().orders().order(31, {{"driveLetter", "D"}, {"newLabel", "Gone"}});
    EXPECT_TRUE(pumpUntil([&] { return !scene.core().status().isBusy(); }));
    EXPECT_EQ(scene.core().machine()->partition("D"), nullptr);
}

} // namespace
