// The order of the manager's check-points and the component's steps while a component loads.
#include "tests/plugin/ComponentFolder.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

// Output of a run without the line numbers of the check-points, which must ascend.
QStringList traceOf(const ComponentFolder& folder, const QStringList& commands)
{
    const QString word = QStringLiteral("check-point");
    QStringList trace;
    int previous = 0;
    for (const QString& line : folder.run(commands).lines) {
        if (!line.startsWith(word)) {
            trace.append(line);
            continue;
        }
        const int number = line.section(QLatin1Char(' '), 1).toInt();
        EXPECT_GT(number, previous);
        previous = number;
        trace.append(word);
    }
    return trace;
}

QStringList lines(std::initializer_list<const char*> list)
{
    QStringList result;
    for (const char* line : list)
        result.append(QString::fromLatin1(line));
    return result;
}

// The engine's context and the manager each connect to the signal destroyed.
TEST(ComponentTrace, Success_PassesSevenCheckPointsAndConnectsTheLanguageBeforeTheSignal)
{
    ComponentFolder folder;
    folder.addLibrary("Traced", "TracedComponent");
    EXPECT_EQ(
        traceOf(folder, {"language", "trace", "load:Traced"}),
        lines({"check-point", "library", "check-point", "getInstance", "check-point", "check-point",
               "setEngine", "destroyed connected", "init", "check-point", "destroyed connected",
               "language connected", "check-point", "new 'Traced' ''", "check-point", "loaded Traced"}));
}

TEST(ComponentTrace, Tree_ConnectsTheLanguageAgainAfterTheSignal)
{
    ComponentFolder folder;
    folder.writeList("", {{1, "Traced"}});
    folder.addLibrary("Traced", "TracedComponent");
    const QStringList trace = traceOf(folder, {"language", "trace", "tree"});
    EXPECT_EQ(trace.mid(trace.lastIndexOf("destroyed connected")),
              lines({"destroyed connected", "language connected", "check-point", "new 'Traced' ''",
                     "check-point", "language connected"}));
}

TEST(ComponentTrace, MissingLibraryOrFactory_PassesOnlyTheFirstCheckPoint)
{
    ComponentFolder folder;
    folder.addLibrary("Odd", "NoFactory");
    EXPECT_EQ(traceOf(folder, {"trace", "load:Absent"}), lines({"check-point", "loaded null"}));
    EXPECT_EQ(traceOf(folder, {"trace", "load:Odd"}), lines({"check-point", "loaded null"}));
}

TEST(ComponentTrace, FactoryThatReturnsNull_PassesTheCheckPointsAroundItsCall)
{
    ComponentFolder folder;
    folder.addLibrary("Null", "NullFactory");
    EXPECT_EQ(traceOf(folder, {"trace", "load:Null"}),
              lines({"check-point", "check-point", "factory called", "check-point", "loaded null"}));
}

} // namespace
