// Every tool against a host that lacks one object or one member, says no, or is not there at all: the
// documented answer, the calls that were made before, whether the guide was closed, and no crash.
#include "tests/tools/HostLacks.h"

#include <gtest/gtest.h>

#include <set>

namespace {

class HostLacks : public testing::TestWithParam<LackRow>
{
};

TEST_P(HostLacks, FromAConnectionThread_AnswersAndAsksNoMoreThanItsRowSays)
{
    const LackRow& row = GetParam();
    ToolBench bench;
    buildLacking(bench, row.lack);
    QString answer;
    bench.onConnectionThread([&] { answer = toolRow(row.method).call(bench.tools()); });
    EXPECT_EQ(answer, row.answer);
    EXPECT_EQ(bench.host().recorder().sequence(), row.calls);
}

TEST_P(HostLacks, FromTheApplicationThread_AnswersTheSameUnlessTheLackIsInACheckForAgents)
{
    const LackRow& row = GetParam();
    ToolBench bench;
    buildLacking(bench, row.lack);
    QStringList calls = row.calls;
    QString answer = row.answer;
    if (row.method == "RecoverLostPartition") {
        calls.removeAll("partitionrecovery.isDiskIndexValid");
        if (row.lack.contains("partitionrecovery")) {
            calls = QStringList{"window.closeGuide", "__zormain.doprfunction"};
            answer = "Task Queued";
        }
    }
    EXPECT_EQ(toolRow(row.method).call(bench.tools()), answer);
    EXPECT_EQ(bench.host().recorder().sequence(), calls);
}

std::string nameOf(const testing::TestParamInfo<LackRow>& row)
{
    QString name = QString::fromStdString(row.param.method) + "_" + row.param.lack;
    name.replace(" & ", "_and_").replace('-', "without_");
    for (QChar& letter : name) {
        if (!letter.isLetterOrNumber())
            letter = '_';
    }
    return name.toStdString();
}

INSTANTIATE_TEST_SUITE_P(AllTools, HostLacks, testing::ValuesIn(allLackRows()), nameOf);

// Every host member that a tool's straight road reaches must also have been taken away, alone and with its
// object.
TEST(HostLacksRows, CoverEveryObjectAndMemberThatATableRowReaches)
{
    std::set<std::string> lacks;
    for (const LackRow& row : allLackRows()) {
        for (const QString& part : row.lack.split(" & "))
            lacks.insert(row.method + " " + part.toStdString());
    }
    for (const ToolRow& row : allToolRows()) {
        EXPECT_TRUE(lacks.count(row.method + " bridge")) << row.method;
        EXPECT_TRUE(lacks.count(row.method + " engine")) << row.method;
        for (const QString& call : row.calls) {
            const std::string member = call.section('@', 0, 0).toStdString();
            const std::string object = member.substr(0, member.find('.'));
            if (object == "aibridge")
                continue;
            EXPECT_TRUE(lacks.count(row.method + " -" + object)) << row.method << " " << object;
            EXPECT_TRUE(lacks.count(row.method + " -" + member)) << row.method << " " << member;
        }
    }
}

} // namespace
