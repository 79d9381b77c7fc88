// The table of the tools in the documentation: the methods, their order and their arguments are those of the
// interface file, and the host members are those that the tools call.
#include "tests/support/Interface.h"
#include "tests/tools/ToolRow.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <gtest/gtest.h>

namespace {

struct DocRow
{
    QString method;
    QString arguments;
    QString asked;
    QString answers;
    QString data;
};

std::vector<DocRow> docRows()
{
    QFile file(qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + "/docs/tools.md");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    std::vector<DocRow> rows;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        const QStringList cells = line.split(" | ");
        if (line.startsWith("| `") && cells.size() == 5)
            rows.push_back({cells[0].mid(2).remove('`'), cells[1], cells[2], cells[3], cells[4].chopped(2)});
    }
    return rows;
}

// "name type" of each argument, in order.
QStringList argumentsIn(const QString& cell)
{
    static const QRegularExpression pattern("`(\\w+)` (i32|i64|string|bool):");
    QStringList found;
    auto it = pattern.globalMatch(cell);
    while (it.hasNext()) {
        const auto match = it.next();
        found << match.captured(1) + ' ' + match.captured(2);
    }
    return found;
}

QStringList membersIn(const QString& cell)
{
    static const QRegularExpression pattern("`(\\w+\\.\\w+)`");
    QStringList found;
    auto it = pattern.globalMatch(cell);
    while (it.hasNext())
        found << it.next().captured(1);
    return found;
}

TEST(ToolsDoc, HasOneRowForEachMethodInTheInterfacesOrder)
{
    QStringList documented;
    for (const DocRow& row : docRows())
        documented << row.method;
    QStringList methods;
    for (const InterfaceMethod& method : interfaceMethods())
        methods << QString::fromStdString(method.name);
    EXPECT_EQ(documented.join('\n').toStdString(), methods.join('\n').toStdString());
}

TEST(ToolsDoc, NamesTheArgumentsOfTheInterfaceWithTheirTypesInOrder)
{
    const std::vector<InterfaceMethod> methods = interfaceMethods();
    const std::vector<DocRow> rows = docRows();
    ASSERT_EQ(rows.size(), methods.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        QStringList expected;
        for (const InterfaceArgument& argument : methods[i].arguments)
            expected << QString::fromStdString(argument.name + ' ' + argument.type);
        EXPECT_EQ(argumentsIn(rows[i].arguments), expected) << methods[i].name;
        EXPECT_EQ(rows[i].arguments == "none", expected.isEmpty()) << methods[i].name;
    }
}

TEST(ToolsDoc, NamesTheHostMembersThatEachToolCallsAndNoUnknownOnes)
{
    QSet<QString> known;
    for (const ToolRow& row : allToolRows()) {
        for (const QString& call : row.calls)
            known.insert(call.section('@', 0, 0));
    }
    for (const DocRow& row : docRows()) {
        const QStringList members = membersIn(row.asked);
        for (const QString& member : members)
            EXPECT_TRUE(known.contains(member)) << row.method.toStdString() << ' ' << member.toStdString();
        for (const QString& call : toolRow(row.method.toStdString()).calls)
            EXPECT_TRUE(members.contains(call.section('@', 0, 0)))
                << row.method.toStdString() << ' ' << call.toStdString();
    }
}

TEST(ToolsDoc, TheFunctionNumbersOfThePage_AreThoseSent)
{
    static const QRegularExpression documented("as an order: function (\\d+)$");
    static const QRegularExpression sent("doFunFromAI@app list\\[int:(\\d+),");
    std::size_t pageTools = 0;
    for (const DocRow& row : docRows()) {
        const QString number = documented.match(row.asked).captured(1);
        const QStringList calls = toolRow(row.method.toStdString()).calls;
        EXPECT_EQ(number, calls.isEmpty() ? QString() : sent.match(calls.last()).captured(1))
            << row.method.toStdString();
        pageTools += number.isEmpty() ? 0 : 1;
    }
    EXPECT_EQ(pageTools, partitionPageRows().size());
}

TEST(ToolsDoc, ListsForEachToolWhetherItChangesDataAndItsAnswers)
{
    const QStringList kinds{"no", "no, opens a page", "changes", "destroys"};
    for (const DocRow& row : docRows()) {
        EXPECT_TRUE(kinds.contains(row.data)) << row.method.toStdString() << ' ' << row.data.toStdString();
        const QString answer = toolRow(row.method.toStdString()).answer;
        const bool named = row.answers.contains('"' + answer + '"');
        EXPECT_TRUE(named || !answer.startsWith("Task ")) << row.method.toStdString();
        EXPECT_FALSE(row.answers.isEmpty());
    }
}

} // namespace
