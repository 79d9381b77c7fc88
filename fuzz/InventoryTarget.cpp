// Input from the host: inventories and lists of disks as trees of values of any type and depth, with all
// their readers.
#include "fuzz/EveryMethod.h"
#include "fuzz/Fuzz.h"
#include "fuzz/ToolHost.h"
#include "fuzz/Tree.h"
#include "recscan/ActionIndex.h"
#include "recscan/RecScanThread.h"
#include "recscan/ScanCases.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/ScratchApplication.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>

namespace {

template <class Record> void checkOnTheWire(const Record& record)
{
    const auto memory = std::make_shared<apache::thrift::transport::TMemoryBuffer>();
    apache::thrift::protocol::TBinaryProtocol protocol(memory);
    record.write(&protocol);
    Record read;
    read.read(&protocol);
    require(read == record, "a record is unchanged after encoding and decoding");
}

void readInventory(AIBridge& bridge, const QVariantList& info, const std::string& letter)
{
    std::vector<DiskInfo> disks;
    std::vector<PartitionInfo> partitions;
    bridge.getDiskInfo(disks);
    bridge.getAllPartitionInfo(partitions);
    require(disks.size() == static_cast<std::size_t>(info.size()), "each entry becomes a disk");
    std::size_t count = 0;
    for (const DiskInfo& disk : disks) {
        count += static_cast<std::size_t>(disk.partitionCount);
        require(disk.isGpt != disk.isMbr, "a disk is GPT or MBR");
        checkOnTheWire(disk);
        std::vector<PartitionInfo> some;
        bridge.getPartitionInfo(some, disk.diskIndex);
        require(bridge.findOneUnallocatedPartition(disk.diskIndex, disk.totalCapacity) >= 0, "a place");
    }
    require(count == partitions.size(), "each partition is listed");
    for (const PartitionInfo& partition : partitions) {
        require(partition.isPrimary != partition.isLogical, "a partition is primary or logical");
        checkOnTheWire(partition);
    }
    PartitionInfo one;
    bridge.getPartitionInfo(one, letter);
    bridge.getPartitionSize(letter);
}

// All cases except those that start programs.
void scan(AIBridge& bridge, QQmlEngine* engine)
{
    ScanSubject subject;
    subject.pages = AIBridgeAccess::pages(&bridge);
    subject.engine = engine;
    bridge.getDiskInfo(subject.disks);
    std::vector<PartitionInfo> partitions;
    bridge.getAllPartitionInfo(partitions);
    for (const PartitionInfo& partition : partitions) {
        subject.partitionsByDisk[partition.diskIndex].push_back(partition);
        if (!partition.driveLetter.empty())
            subject.partitionsByLetter[partition.driveLetter.front()] = partition;
    }
    for (int index = 0; index < kCaseCount; ++index) {
        if (index != ActionWin10EndOfSupport && index != ActionRepairBoot)
            runScanCase(index, subject);
    }
}

void answerRecommendation(ToolHost& host, const QVariant& answer)
{
    RecScanThread thread(&host.bridge(), *AIBridgeAccess::pages(&host.bridge()));
    thread.setToolHandler(host.tools());
    thread.performRecAction(answer.toMap());
}

} // namespace

void fuzzOne(Bytes input)
{
    static const ScratchApplication application;
    static ToolHost* const host = new ToolHost;
    host->setMood(input.byte());
    const auto disk = static_cast<qint8>(input.byte());
    const auto other = static_cast<qint8>(input.byte());
    const std::string letter = input.text(input.byte() % 8);
    const QVariant info = tree::read(input);
    host->bridge().setDiskInfo(info.toList());
    readInventory(host->bridge(), info.toList(), letter);
    scan(host->bridge(), host->host().engine());
    host->setDisks(tree::read(input));
    callEveryMethod(*host->tools(), disk, other, letter);
    answerRecommendation(*host, tree::read(input));
    host->checkCalls();

    // After any input, the next inventory must be read correctly.
    host->bridge().setDiskInfo(ToolHost::inventory());
    host->host().recorder().clear();
    require(host->bridge().getPartitionSize("e") == 100, "the next inventory is read correctly");
}
