// One agent of a soak: calls random tools, several at a time, over successive connections, and compares each
// answer with the expected one. Exit code 1 at the first wrong or missing answer.
//
// soak_agent PORT SEED SECONDS LIMIT FILE   LIMIT: seconds per call; FILE: lock for tools with parameters
// soak_agent PORT SEED half                 sends a partial message and waits until it is killed
#include "tests/faults/Calls.h"
#include "tests/support/Answers.h"
#include "tests/support/RawClient.h"
#include "tests/tools/ToolRow.h"

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

// True for tools that use the handler's shared parameters. The gate would serialise their calls.
bool hasParameters(const std::string& method)
{
    static const QStringList sharing =
        toolsThatCall("partitionmanager.doFunFromAI") + toolsThatCall("__zormain.dobmfunction") +
        toolsThatCall("__zormain.doprfunction") + toolsThatCall("bootablemedia.isAlreadyEnable");
    return sharing.contains(QString::fromStdString(method));
}

// True if the list has @p count records, all from one inventory.
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
    return text == toolRow(method).answer;
}

class FileLock
{
public:
    explicit FileLock(const char* file) : file_(::open(file, O_RDWR | O_CREAT, 0600)) {}
    ~FileLock() { ::close(file_); }
    void lock() { ::flock(file_, LOCK_EX); }
    void unlock() { ::flock(file_, LOCK_UN); }

private:
    int file_;
};

class Agent
{
public:
    Agent(int port, unsigned seed, int limitMs, const char* lockFile)
        : port_(port), limitMs_(limitMs), random_(seed), lock_(lockFile)
    {
    }

    void runUntil(Clock::time_point end)
    {
        while (Clock::now() < end) {
            RawClient client(port_);
            ++connections_;
            for (int remaining = 1 + int(random_() % 60); remaining > 0 && Clock::now() < end; --remaining)
                callSome(client);
            if (random_() % 4 == 0)
                client.send(calls::encode("ListAllDisks", 1).substr(0, 1 + random_() % 20));
        }
    }
    void report() const { std::printf("calls %ld connections %ld\n", calls_, connections_); }

private:
    void callSome(RawClient& client)
    {
        std::vector<std::string> methods;
        bool needsLock = false;
        for (int remaining = 1 + int(random_() % 4); remaining > 0; --remaining) {
            methods.push_back(all_[random_() % all_.size()]);
            needsLock = needsLock || hasParameters(methods.back());
        }
        if (needsLock)
            lock_.lock();
        std::string bytes;
        for (const std::string& method : methods)
            bytes += calls::encode(method, ++sequence_);
        client.send(bytes);
        sequence_ -= static_cast<int>(methods.size());
        for (const std::string& method : methods)
            receive(client, method);
        if (needsLock)
            lock_.unlock();
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
    std::mt19937 random_;
    FileLock lock_;
    const std::vector<std::string> all_ = calls::methods();
    int sequence_ = 0;
    long calls_ = 0;
    long connections_ = 0;
};

int sendPartialMessage(int port, unsigned seed)
{
    const std::string whole = calls::encode("FormatPartition", 1);
    RawClient client(port);
    client.send(calls::encode("GetAllPartitionInfo", 1));
    client.send(whole.substr(0, seed % whole.size()));
    std::puts("sent");
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
        return sendPartialMessage(port, seed);
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
