// Every tool over the wire with every fault of every host member: the tool answers as documented, and the
// next call is served.
#include "tests/faults/Calls.h"
#include "tests/faults/FaultHost.h"
#include "tests/support/RawClient.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <set>

namespace {

class Matrix : public testing::TestWithParam<FaultCase>
{
};

TEST_P(Matrix, AllTools_AnswerAsDocumentedInSequence)
{
    FaultHost host(GetParam());
    host.build();
    host.serve();
    runOnOtherThread([&] {
        RawClient client(host.port());
        int sequence = 0;
        for (const std::string& method : calls::methods()) {
            const wire::Message reply = client.ask(calls::encode(method, ++sequence));
            EXPECT_EQ(reply.sequence, sequence);
            EXPECT_EQ(calls::answerOf(reply), expectedAnswer(method, GetParam())) << method;
        }
    });
    const bool isRun = host.host().recorder().sequence().contains(GetParam().member.where());
    EXPECT_FALSE(isRun && (GetParam().fault & (OtherSignature | OtherTypes)) != 0);
}

INSTANTIATE_TEST_SUITE_P(Host, Matrix, testing::ValuesIn(sampled(toolFaultCases())),
                         [](const auto& row) { return row.param.name(); });

TEST(MatrixRows, AQmlFunctionThatThrows_IsReached)
{
    // Shows that the rows of that fault can fail.
    FaultHost host({{"__zormain", "doToolBox", "QVariant,QVariant", "QVariant"}, Throws, Free});
    host.build();
    host.serve();
    runOnOtherThread([&] { RawClient(host.port()).ask(calls::encode("RebuildMbr", 1)); });
    EXPECT_EQ(host.thrown(), 1);
}

TEST(MatrixRows, EveryMemberOfTheWholeHost_IsAmongThem)
{
    std::set<QString> named;
    for (const Member& member : allMembers())
        named.insert(member.where());
    RecordingHost host;
    QStringList objects = RecordingHost::contextObjects();
    objects << "__zormain"
            << "__qml_executer"
            << "window";
    for (const QString& object : objects) {
        for (const FakeMember& member : host.spec(object).members())
            EXPECT_TRUE(named.count(object + '.' + member.name.split('(').first())) << member.name.data();
    }
    EXPECT_EQ(named.size(), allMembers().size());
}

} // namespace
