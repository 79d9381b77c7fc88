// A slow host member: the tool waits for it and answers as usual, and the other connections are served
// meanwhile.
#include "tests/faults/Calls.h"
#include "tests/faults/FaultHost.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/RawClient.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

// Blocks a caller until it is released.
class Hold
{
public:
    void comeIn()
    {
        std::unique_lock<std::mutex> lock(mutex_);
        inside_ = true;
        changed_.notify_all();
        if (!changed_.wait_for(lock, limit, [this] { return open_; }))
            overdue_ = true;
        inside_ = false;
    }
    /// True as soon as a caller is blocked, false if the tool has returned without a call.
    bool waitInside()
    {
        std::unique_lock<std::mutex> lock(mutex_);
        return changed_.wait_for(lock, limit, [this] { return inside_ || ended_; }) && inside_;
    }
    void letGo() { set(open_); }
    void end() { set(ended_); }
    void close()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        open_ = ended_ = false;
    }
    bool isOverdue() const { return overdue_; }

private:
    static constexpr std::chrono::seconds limit{20};

    void set(bool& flag)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        flag = true;
        changed_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    bool inside_ = false;
    bool open_ = false;
    bool ended_ = false;
    bool overdue_ = false;
};

FaultCase wholeHost()
{
    return {Member(), Whole, Free};
}

class Slow : public testing::TestWithParam<Member>
{
protected:
    // The body of the member in a host without a fault, after a wait.
    void hold(FaultHost& host)
    {
        FakeSpec& spec = host.host().spec(GetParam().object);
        FakeBody plain;
        for (const FakeMember& member : spec.members()) {
            if (member.name.split('(').first() == GetParam().name)
                plain = member.body;
        }
        spec.answer(GetParam().name, [this, plain](const QVariantList& arguments) {
            if (served_)
                hold_.comeIn();
            return plain ? plain(arguments) : QVariant();
        });
    }

    // Calls a tool on one connection and, while it is blocked, reads on another. True if it was blocked.
    bool callWithAnother(int port, const std::string& method)
    {
        hold_.close();
        bool heldUp = false;
        std::thread other([&] {
            RawClient reader(port);
            heldUp = hold_.waitInside();
            const QString letters = calls::answerOf(reader.ask(calls::encode("GetPartitionInfo", 7)));
            EXPECT_EQ(letters, QString("1/E:/100/raw")) << method;
            hold_.letGo();
        });
        RawClient client(port);
        EXPECT_EQ(calls::answerOf(client.ask(calls::encode(method, 8))), expectedAnswer(method, wholeHost()))
            << method;
        hold_.end();
        other.join();
        return heldUp;
    }

    Hold hold_;
    std::atomic<bool> served_{false};
};

TEST_P(Slow, Member_DelaysOnlyItsTools)
{
    FaultHost host(wholeHost());
    hold(host);
    host.build();
    host.serve();
    served_ = true;
    int heldUp = 0;
    runOnOtherThread([&] {
        for (const std::string& method : calls::methods())
            heldUp += callWithAnother(host.port(), method) ? 1 : 0;
    });
    EXPECT_FALSE(hold_.isOverdue());
    const QStringList reachedByTools = {"partitionmanager.doFunFromAI",
                                        "partitionmanager.isWin11CheckerEnable",
                                        "partitionrecovery.isDiskIndexValid",
                                        "bootablemedia.isAlreadyEnable",
                                        "clone.invalidInfo",
                                        "__zormain.doprfunction",
                                        "__zormain.createBootMediaEnabled",
                                        "__zormain.dobmfunction",
                                        "__zormain.opendiskhealth",
                                        "__zormain.passwordResetEnabled",
                                        "__zormain.bootrepairEnabled",
                                        "__zormain.doToolBox",
                                        "__qml_executer.sendUserInfo",
                                        "window.closeGuide",
                                        "deviceMgr.disks"};
    EXPECT_EQ(heldUp > 0, reachedByTools.contains(GetParam().where())) << heldUp;
}

std::vector<Member> calledMembers()
{
    std::vector<Member> members;
    for (const Member& member : allMembers()) {
        if (!member.isProperty)
            members.push_back(member);
    }
    return members;
}

INSTANTIATE_TEST_SUITE_P(Host, Slow, testing::ValuesIn(calledMembers()), [](const auto& row) {
    return (row.param.object + '_' + row.param.name).toStdString();
});

} // namespace
