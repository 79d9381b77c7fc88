// Every tool on its straight road: what the host is asked, in which order, on which thread, with which keys
// of which types, and what the agent is answered.
#include "tests/support/Interface.h"
#include "tests/tools/ToolRow.h"

#include <gtest/gtest.h>

#include <map>

namespace {

class ToolTable : public testing::TestWithParam<ToolRow>
{
};

TEST_P(ToolTable, FromAConnectionThread_AsksTheHostAndAnswersAsItsRowSays)
{
    const ToolRow& row = GetParam();
    ToolBench bench;
    bench.build();
    QString answer;
    bench.onConnectionThread([&] { answer = row.call(bench.tools()); });
    EXPECT_EQ(answer, row.answer);
    EXPECT_EQ(bench.calls().join('\n').toStdString(), row.calls.join('\n').toStdString());
}

TEST_P(ToolTable, FromTheApplicationThread_GoesStraightThroughWithoutTheChecksForAgents)
{
    const ToolRow& row = GetParam();
    ToolBench bench;
    bench.build();
    QStringList expected;
    for (const QString& call : row.calls) {
        if (row.onlyForAgents.isEmpty() || !call.startsWith(row.onlyForAgents))
            expected << QString(call).replace("@caller", "@app");
    }
    EXPECT_EQ(row.call(bench.tools()), row.answer);
    EXPECT_EQ(bench.calls().join('\n').toStdString(), expected.join('\n').toStdString());
}

INSTANTIATE_TEST_SUITE_P(AllTools, ToolTable, testing::ValuesIn(allToolRows()),
                         [](const auto& row) { return row.param.method; });

TEST(ToolTableRows, AreTheMethodsOfTheInterfaceEachOnce)
{
    std::map<std::string, int> rows;
    for (const ToolRow& row : allToolRows())
        ++rows[row.method];
    std::map<std::string, int> methods;
    for (const InterfaceMethod& method : interfaceMethods())
        ++methods[method.name];
    EXPECT_EQ(rows, methods);
}

} // namespace
