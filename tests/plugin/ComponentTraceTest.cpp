// The order of a component's loading: the manager's check-points among the steps of the component.
#include "tests/plugin/ComponentFolder.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

// The lines of a run, with the line number of each check-point cut off. The numbers must ascend.
QStringList traceOf(const ComponentFolder& folder, const QStringList& orders)
{
    const QString word = QStringLiteral("check-point");
    QStringList trace;
    int previous = 0;
    for (const QString& line : folder.run(orders).lines) {
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

// The signal destroyed is connected twice: by the engine's context, and by the manager's registration.
TEST(ComponentTrace, Success_PassesSevenCheckPointsAndConnectsTheLanguageBeforeTheSignal)
{
    ComponentFolder folder;
    folder.library("Traced", "TracedComponent");
    EXPECT_EQ(
        traceOf(folder, {"language", "trace", "load:Traced"}),
        lines({"check-point", "library", "check-point", "getInstance", "check-point", "check-point",
               "setEngine", "destroyed connected", "init", "check-point", "destroyed connected",
               "language connected", "check-point", "new 'Traced' ''", "check-point", "loaded Traced"}));
}

TEST(ComponentTrace, Tree_ConnectsTheLanguageOnceMoreAfterTheSignal)
{
    ComponentFolder folder;
    folder.list("", {{1, "Traced"}});
    folder.library("Traced", "TracedComponent");
    const QStringList trace = traceOf(folder, {"language", "trace", "tree"});
    EXPECT_EQ(trace.mid(trace.lastIndexOf("destroyed connected")),
              lines({"destroyed connected", "language connected", "check-point", "new 'Traced' ''",
                     "check-point", "language connected"}));
}

TEST(ComponentTrace, MissingLibraryOrFactory_PassesTheFirstCheckPointOnly)
{
    ComponentFolder folder;
    folder.library("Odd", "NoFactory");
    EXPECT_EQ(traceOf(folder, {"trace", "load:Absent"}), lines({"check-point", "loaded nothing"}));
    EXPECT_EQ(traceOf(folder, {"trace", "load:Odd"}), lines({"check-point", "loaded nothing"}));
}

TEST(ComponentTrace, FactoryThatReturnsNull_PassesTheCheckPointsAroundItsCall)
{
    ComponentFolder folder;
    folder.library("Null", "NullFactory");
    EXPECT_EQ(traceOf(folder, {"trace", "load:Null"}),
              lines({"check-point", "check-point", "asked for nothing", "check-point", "loaded nothing"}));
}

} // namespace
