// Every tool against every faulty host, on a connection thread and on the application thread: the documented
// answer after the documented calls and no others.
#include "tests/faults/FaultHost.h"
#include "tests/support/Printing.h"
#include "tests/support/Threads.h"
#include "tests/tools/ToolRow.h"

#include <gtest/gtest.h>

#include <set>

namespace {

// The checks for agents are not made on the application thread, so their faults have no effect.
FaultCase withoutChecksForAgents(const ToolRow& tool, const FaultCase& host)
{
    const bool isCheck =
        !tool.onlyForAgents.isEmpty() && (host.member.object + '.').startsWith(tool.onlyForAgents);
    return isCheck ? FaultCase{Member(), Whole, host.mood} : host;
}

class HostCalls : public testing::TestWithParam<FaultCase>
{
protected:
    // Calls the tool and leaves its calls of the host in the recorder.
    QString answerOf(const ToolRow& tool)
    {
        host.host().recorder().clear();
        return tool.call(host.tools());
    }
    QStringList calls() { return host.host().recorder().sequence(); }

    FaultHost host{GetParam()};
};

TEST_P(HostCalls, FromAConnectionThread_EveryToolAnswersAndCallsAsDocumented)
{
    host.build();
    runOnOtherThread([&] {
        for (const ToolRow& tool : allToolRows()) {
            EXPECT_EQ(answerOf(tool), expectedAnswer(tool.method, GetParam())) << tool.method;
            EXPECT_EQ(calls(), expectedCalls(tool.method, GetParam())) << tool.method;
        }
    });
}

TEST_P(HostCalls, FromTheApplicationThread_EveryToolAnswersTheSameButForTheChecksForAgents)
{
    host.build();
    for (const ToolRow& tool : allToolRows()) {
        const FaultCase seen = withoutChecksForAgents(tool, GetParam());
        QStringList expected;
        for (const QString& call : expectedCalls(tool.method, seen)) {
            if (tool.onlyForAgents.isEmpty() || !call.startsWith(tool.onlyForAgents))
                expected << call;
        }
        EXPECT_EQ(answerOf(tool), expectedAnswer(tool.method, seen)) << tool.method;
        EXPECT_EQ(calls(), expected) << tool.method;
    }
}

INSTANTIATE_TEST_SUITE_P(Host, HostCalls, testing::ValuesIn(sampled(toolFaultCases())),
                         [](const auto& row) { return row.param.name(); });

// Each object and member that a tool calls is also missing in one of the cases.
TEST(HostCallsRows, EveryMemberThatATableRowReaches_IsAmongTheFaults)
{
    std::set<QString> members;
    for (const Member& member : allMembers())
        members.insert(member.where());
    for (const ToolRow& row : allToolRows()) {
        for (const QString& call : row.calls) {
            const QString member = call.section('@', 0, 0);
            EXPECT_TRUE(member.startsWith("aibridge.") || members.count(member) != 0) << row.method;
        }
    }
}

} // namespace
