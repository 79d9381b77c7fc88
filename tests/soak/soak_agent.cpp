// One agent of a soak: random tools, several at a time, on one connection after another, and each answer
// compared with the right one. It ends when its time is over, or with 1 at the first wrong or missing answer.
// soak_agent PORT SEED SECONDS LIMIT TURN     TURN is a file: who holds its lock may call a tool that has
// parameters soak_agent PORT SEED half                   begins a message and waits to be killed
#include "tests/faults/Calls.h"
#include "tests/support/Answers.h"
#include "tests/support/RawClient.h"

#include <QtCore/QStringList>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

// Tools that share the handler's parameters, as the gate would keep them apart.
bool hasParameters(const std::string& method)
{
    static const std::set<std::string> without = {"Init",
                                                  "PreProcessing",
                                                  "PostProcessing",
                                                  "ListAllDisks",
                                                  "ListPartitionsOnDisk",
                                                  "GetPartitionInfo",
                                                  "GetAllPartitionInfo",
                                                  "DiskHealthCheck",
                                                  "RepairRawOrDamagedPartition",
                                                  "RebuildMbr",
                                                  "AlignDiskTo4k",
                                                  "ToggleWriteProtection",
                                                  "ScanDiskBadSectors",
                                                  "ScanPartitionBadSectors",
                                                  "CheckPartitionFileSystem",
                                                  "RetrieveBitLockerRecoveryKey",
                                                  "PasswordReset",
                                                  "RepairWindowsBoot",
                                                  "Windows11UpgradeCheck",
                                                  "ConvertDiskToGpt",
                                                  "ConvertDiskToMbr",
                                                  "ConvertDiskToBasic",
                                                  "ConvertDiskToDynamic",
                                                  "ConvertPartitionToNtfs",
                                                  "ConvertPartitionToFat",
                                                  "ConvertPartitionToExfat",
                                                  "CloneOSDataFromCurrent",
                                                  "CloneOSDataFromDisk",
                                                  "CloneOSDataFromPartition",
                                                  "CloneDiskToDisk",
                                                  "ClonePartitionToPartition",
                                                  "ClonePartitionToDisk"};
    return without.count(method) == 0;
}

// All records are of one inventory, and there are as many as it has.
bool isWhole(const wire::Value& list, std::size_t count, int markField)
{
    std::set<std::string> marks;
    for (const wire::Value& record : list.items)
        marks.insert(record.field(markField).bytes);
    return list.items.size() == count && marks.size() == 1 && marks.begin()->rfind("variant-", 0) == 0;
}

bool isRight(const std::string& method, const wire::Message& reply)
{
    const wire::Value answer = reply.body.field(0);
    if (method == "ListAllDisks")
        return isWhole(answer, 24, 29);
    if (method == "ListPartitionsOnDisk")
        return isWhole(answer, 10, 44);
    if (method == "GetAllPartitionInfo")
        return isWhole(answer, 240, 44);
    if (method == "GetPartitionInfo")
        return answer.field(44).bytes.rfind("variant-", 0) == 0 && answer.field(43).bytes == "E:";
    const QString text = calls::answerOf(reply);
    if (method == "PreProcessing")
        return text == "true " || text == "false " + answers::inProgress.text();
    if (method == "Init" || method == "PostProcessing")
        return text == "true";
    if (method == "RepairRawOrDamagedPartition" || method == "DisablePreOS")
        return text == answers::notValid;
    return text == answers::queued;
}

class Turn
{
public:
    explicit Turn(const char* file) : file_(::open(file, O_RDWR | O_CREAT, 0600)) {}
    ~Turn() { ::close(file_); }
    void take() { ::flock(file_, LOCK_EX); }
    void give() { ::flock(file_, LOCK_UN); }

private:
    int file_;
};

class Agent
{
public:
    Agent(int port, unsigned seed, int limitMs, const char* turn)
        : port_(port), limitMs_(limitMs), dice_(seed), turn_(turn)
    {
    }

    void runUntil(Clock::time_point end)
    {
        while (Clock::now() < end) {
            RawClient client(port_);
            ++connections_;
            for (int left = 1 + int(dice_() % 60); left > 0 && Clock::now() < end; --left)
                callSome(client);
            if (dice_() % 4 == 0)
                client.send(calls::encode("ListAllDisks", 1).substr(0, 1 + dice_() % 20));
        }
    }
    void report() const { std::printf("calls %ld connections %ld\n", calls_, connections_); }

private:
    void callSome(RawClient& client)
    {
        std::vector<std::string> methods;
        bool turn = false;
        for (int left = 1 + int(dice_() % 4); left > 0; --left) {
            methods.push_back(all_[dice_() % all_.size()]);
            turn = turn || hasParameters(methods.back());
        }
        if (turn)
            turn_.take();
        std::string bytes;
        for (const std::string& method : methods)
            bytes += calls::encode(method, ++sequence_);
        client.send(bytes);
        sequence_ -= static_cast<int>(methods.size());
        for (const std::string& method : methods)
            receive(client, method);
        if (turn)
            turn_.give();
    }

    void receive(RawClient& client, const std::string& method)
    {
        if (!client.hasInput(limitMs_))
            throw std::runtime_error("stalled: no answer to " + method);
        const wire::Message reply = client.receive();
        if (reply.sequence != ++sequence_ || reply.name != method || !isRight(method, reply))
            throw std::runtime_error("wrong: " + method + " answered '" +
                                     calls::answerOf(reply).left(300).toStdString() + "'");
        ++calls_;
    }

    int port_;
    int limitMs_;
    std::mt19937 dice_;
    Turn turn_;
    const std::vector<std::string> all_ = calls::methods();
    int sequence_ = 0;
    long calls_ = 0;
    long connections_ = 0;
};

int beginAMessage(int port, unsigned seed)
{
    const std::string whole = calls::encode("FormatPartition", 1);
    RawClient client(port);
    client.send(calls::encode("GetAllPartitionInfo", 1));
    client.send(whole.substr(0, seed % whole.size()));
    std::puts("begun");
    std::fflush(stdout);
    ::pause();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4)
        return 2;
    const int port = std::atoi(argv[1]);
    const auto seed = static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10));
    if (argc == 4)
        return beginAMessage(port, seed);
    Agent agent(port, seed, std::atoi(argv[4]) * 1000, argv[5]);
    int code = 0;
    try {
        agent.runUntil(Clock::now() + std::chrono::seconds(std::atoi(argv[3])));
    } catch (const std::exception& failure) {
        std::printf("%s\n", failure.what());
        code = 1;
    }
    agent.report();
    return code;
}
