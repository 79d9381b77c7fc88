// Every tool on a host that accepts everything: the host calls with their order, threads, keys and types, and
// the agent's answer.
#include "tests/support/Interface.h"
#include "tests/tools/ToolRow.h"

#include <gtest/gtest.h>

#include <map>

namespace {

class ToolTable : public testing::TestWithParam<ToolRow>
{
};

TEST_P(ToolTable, FromAConnectionThread_CallsTheHostAndAnswersAsItsRowExpects)
{
    const ToolRow& row = GetParam();
    ToolBench bench;
    bench.build();
    QString answer;
    bench.onConnectionThread([&] { answer = row.call(bench.tools()); });
    EXPECT_EQ(answer, row.answer);
    EXPECT_EQ(bench.calls().join('\n').toStdString(), row.calls.join('\n').toStdString());
}

TEST_P(ToolTable, FromTheApplicationThread_RunsDirectlyWithoutTheChecksForAgents)
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
