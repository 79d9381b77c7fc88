// The component manager with real libraries; each test uses its own application folder.
#include "tests/plugin/ComponentFolder.h"
#include "tests/support/Printing.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace {

QString s(const char* text)
{
    return QString::fromUtf8(text);
}

QStringList strings(std::initializer_list<const char*> list)
{
    QStringList result;
    for (const char* text : list)
        result.append(s(text));
    return result;
}

QJsonArray componentsOf(const ComponentFolder::Run& run)
{
    const QStringList lines = run.linesWith(s("components"));
    return lines.isEmpty() ? QJsonArray() : QJsonDocument::fromJson(lines.last().mid(11).toUtf8()).array();
}

QStringList namesOf(const ComponentFolder::Run& run)
{
    QStringList names;
    for (const QJsonValue& entry : componentsOf(run))
        names.append(entry.toObject().value(s("name")).toString());
    return names;
}

TEST(ComponentMgr, LoadComponent_CreatesInitialisesRegistersAndSignals)
{
    ComponentFolder folder;
    folder.addLibrary(s("One"));
    EXPECT_EQ(folder.run({s("engine"), s("load:One")}).lines,
              strings({"created One", "engine One set", "init One", "new 'One' ''", "loaded One"}));
}

TEST(ComponentMgr, WithoutAnEngine_ComponentsAreStillLoaded)
{
    ComponentFolder folder;
    folder.addLibrary(s("One"));
    EXPECT_EQ(folder.run({s("load:One")}).lines,
              strings({"created One", "engine One null", "init One", "new 'One' ''", "loaded One"}));
}

TEST(ComponentMgr, ComponentWithAParent_IsLoadedFromTheParentsFolderUnderBothNames)
{
    ComponentFolder folder;
    folder.addLibrary(s("Disk/DiskHealth"));
    folder.addLibrary(s("Disk/Health"));
    folder.addLibrary(s("Health"));
    const auto run = folder.run({s("load:Health:Disk")});
    EXPECT_EQ(run.linesWith(s("created")), strings({"created DiskHealth"}));
    EXPECT_EQ(run.linesWith(s("new")), strings({"new 'Health' 'Disk'"}));
}

TEST(ComponentMgr, Tree_DescendsIntoEachComponentsFolder)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "A"}, {2, "B"}});
    folder.addLibrary(s("A"));
    folder.addLibrary(s("B"));
    folder.writeList(s("A"), {{1, "Sub"}});
    folder.addLibrary(s("A/ASub"));
    folder.writeList(s("Sub"), {{1, "Deep"}});
    folder.addLibrary(s("Sub/SubDeep"));
    const auto run = folder.run({s("engine"), s("tree"), s("components")});
    EXPECT_EQ(run.linesWith(s("new")),
              strings({"new 'A' ''", "new 'Sub' 'A'", "new 'Deep' 'Sub'", "new 'B' ''"}));
    EXPECT_EQ(namesOf(run), strings({"A", "ASub", "SubDeep", "B"}));
    EXPECT_TRUE(run.linesWith(s("changed")).isEmpty());
}

TEST(ComponentMgr, TreeOfOneComponent_ReadsOnlyItsFoldersList)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "A"}});
    folder.addLibrary(s("A"));
    folder.writeList(s("A"), {{1, "Sub"}});
    folder.addLibrary(s("A/ASub"));
    EXPECT_EQ(folder.run({s("tree:A")}).linesWith(s("new")), strings({"new 'Sub' 'A'"}));
}

TEST(ComponentMgr, GapsInTheNumbering_DoNotEndTheWalk)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "A"}, {2, "B"}, {7, "C"}, {99, "D"}});
    for (const char* name : {"A", "B", "C", "D"})
        folder.addLibrary(s(name));
    EXPECT_EQ(folder.run({s("tree")}).linesWith(s("created")),
              strings({"created A", "created B", "created C", "created D"}));
}

TEST(ComponentMgr, GroupsOutside1To99_AreIgnored)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{0, "A"}, {99, "B"}, {100, "C"}, {101, "D"}});
    for (const char* name : {"A", "B", "C", "D"})
        folder.addLibrary(s(name));
    EXPECT_EQ(folder.run({s("tree")}).linesWith(s("created")), strings({"created B"}));
}

TEST(ComponentMgr, GroupWithoutAName_IsSkipped)
{
    ComponentFolder folder;
    folder.writeFile(s("components.ini"),
                     "[COMPONENT1]\nother=A\n[COMPONENT2]\nname=B\n[COMPONENT03]\nname=A\n");
    folder.addLibrary(s("A"));
    folder.addLibrary(s("B"));
    EXPECT_EQ(folder.run({s("tree")}).linesWith(s("created")), strings({"created B"}));
}

TEST(ComponentMgr, MissingList_EndsThatBranchWithoutOutput)
{
    ComponentFolder folder;
    EXPECT_EQ(folder.run({s("tree"), s("tree:Nowhere")}).lines, QStringList());
}

TEST(ComponentMgr, NamesInTheList_AreUtf8)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "\xc3\x9c\x62\x65r"}});
    folder.addLibrary(s("\xc3\x9c\x62\x65r"));
    EXPECT_EQ(folder.run({s("tree")}).linesWith(s("new")), strings({"new '\xc3\x9c\x62\x65r' ''"}));
}

TEST(ComponentMgr, LibraryThatFailsToLoad_ReturnsNullAndTheWalkContinues)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "Text"}, {2, "Absent"}, {3, "Good"}});
    folder.writeFile(s("Text.so"), "not a library\n");
    folder.addLibrary(s("Good"));
    const auto run = folder.run({s("language"), s("tree"), s("load:Text"), s("load:Absent")});
    EXPECT_EQ(run.linesWith(s("new")), strings({"new 'Good' ''"}));
    EXPECT_EQ(run.linesWith(s("loaded")), strings({"loaded null", "loaded null"}));
}

TEST(ComponentMgr, FolderOfAComponentThatFailsToLoad_IsStillWalked)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "Absent"}});
    folder.writeList(s("Absent"), {{1, "Sub"}});
    folder.addLibrary(s("Absent/AbsentSub"));
    EXPECT_EQ(folder.run({s("language"), s("tree")}).linesWith(s("new")), strings({"new 'Sub' 'Absent'"}));
}

TEST(ComponentMgr, LibraryWithoutAFactory_ReturnsNull)
{
    ComponentFolder folder;
    folder.addLibrary(s("Odd"), s("NoFactory"));
    EXPECT_EQ(folder.run({s("engine"), s("load:Odd"), s("components")}).lines,
              strings({"loaded null", "components []"}));
}

TEST(ComponentMgr, FactoryThatReturnsNull_AddsNoComponent)
{
    ComponentFolder folder;
    folder.addLibrary(s("Odd"), s("NullFactory"));
    EXPECT_EQ(folder.run({s("engine"), s("load:Odd"), s("components")}).lines,
              strings({"factory called", "loaded null", "components []"}));
}

TEST(ComponentMgr, DllFile_IsPreferredToSoFile)
{
    ComponentFolder folder;
    folder.addLibrary(s("Both"), s("Component"), s(".dll"));
    folder.addLibrary(s("Both"), s("NullFactory"), s(".so"));
    EXPECT_EQ(folder.run({s("load:Both")}).linesWith(s("loaded")), strings({"loaded Both"}));
}

TEST(ComponentMgr, ListOfNames_LoadsEachAndSignalsOnceAtTheEnd)
{
    ComponentFolder folder;
    folder.addLibrary(s("A"));
    folder.addLibrary(s("B"));
    folder.writeList(s("A"), {{1, "Sub"}});
    folder.addLibrary(s("A/ASub"));
    const auto run = folder.run({s("list:A,Absent,B")});
    EXPECT_EQ(run.linesWith(s("new")), strings({"new 'A' ''", "new 'B' ''"}));
    EXPECT_EQ(run.lines.last(), s("changed"));
    EXPECT_EQ(run.linesWith(s("changed")).size(), 1);
}

TEST(ComponentMgr, SameNameTwice_CreatesTwoComponents)
{
    ComponentFolder folder;
    folder.addLibrary(s("A"));
    EXPECT_EQ(namesOf(folder.run({s("list:A,A"), s("components")})), strings({"A", "A"}));
}

TEST(ComponentMgr, Component_IsFoundCaseInsensitively)
{
    ComponentFolder folder;
    folder.addLibrary(s("AIProbe"));
    const auto run = folder.run(
        {s("load:AIProbe"), s("find:AIPROBE"), s("find:aiprobe"), s("find:AIProbe"), s("find:AIProb")});
    EXPECT_EQ(run.linesWith(s("found")),
              strings({"found AIProbe", "found AIProbe", "found AIProbe", "found null"}));
}

TEST(ComponentMgr, Components_HaveSevenKeysAndConsecutiveIds)
{
    ComponentFolder folder;
    folder.addLibrary(s("A"));
    folder.addLibrary(s("B"));
    const QJsonArray list = componentsOf(folder.run({s("list:A,B"), s("components")}));
    ASSERT_EQ(list.size(), 2);
    const QJsonObject second = list.at(1).toObject();
    EXPECT_EQ(second.keys(),
              strings({"canLayout", "component", "id", "name", "resProperty", "source", "text"}));
    EXPECT_EQ(list.at(0).toObject().value(s("id")), QJsonValue(0));
    EXPECT_EQ(second.value(s("id")), QJsonValue(1));
    EXPECT_EQ(second.value(s("name")), QJsonValue(s("B")));
    EXPECT_EQ(second.value(s("text")), QJsonValue(s("Name of B")));
    EXPECT_EQ(second.value(s("source")), QJsonValue(s("qrc:/qml/B.qml")));
    EXPECT_EQ(second.value(s("component")), QJsonValue(s("B")));
    EXPECT_EQ(second.value(s("canLayout")), QJsonValue(true));
    EXPECT_EQ(second.value(s("resProperty")).toObject(), (QJsonObject{{s("of"), s("B")}}));
}

TEST(ComponentMgr, LanguageSignal_ReachesAComponentOfTheTreeTwice)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "A"}});
    folder.addLibrary(s("A"));
    const auto run = folder.run({s("language"), s("tree"), s("switch")});
    EXPECT_EQ(run.linesWith(s("translate")), strings({"translate A", "translate A"}));
}

TEST(ComponentMgr, LanguageSignal_ReachesAComponentOutsideTheTreeOnce)
{
    ComponentFolder folder;
    folder.addLibrary(s("A"));
    folder.addLibrary(s("B"));
    const auto run = folder.run({s("language"), s("load:A"), s("list:B"), s("switch")});
    EXPECT_EQ(run.linesWith(s("translate")), strings({"translate A", "translate B"}));
}

TEST(ComponentMgr, LanguageObjectLoadedByTheWalk_IsConnectedOncePerComponent)
{
    // The walk looks the language object up before it loads it, so only loading a component connects it.
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "Multilanguage"}, {2, "A"}});
    folder.addLibrary(s("Multilanguage"));
    folder.addLibrary(s("A"));
    const auto run = folder.run({s("engine"), s("tree"), s("switchFromQml")});
    EXPECT_EQ(run.linesWith(s("translate")), strings({"translate Multilanguage", "translate A"}));
}

TEST(ComponentMgr, WithoutALanguageObject_ComponentsAreLoaded)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "A"}});
    folder.addLibrary(s("A"));
    const auto run = folder.run({s("engine"), s("tree"), s("switch")});
    EXPECT_EQ(run.linesWith(s("new")).size(), 1);
    EXPECT_TRUE(run.linesWith(s("translate")).isEmpty());
}

TEST(ComponentMgr, DestroyedComponent_IsRemovedFromTheList)
{
    ComponentFolder folder;
    for (const char* name : {"A", "B", "C"})
        folder.addLibrary(s(name));
    const auto run = folder.run({s("list:A,B,C"), s("delete:B"), s("components"), s("find:B")});
    EXPECT_EQ(namesOf(run), strings({"A", "C"}));
    EXPECT_EQ(run.linesWith(s("found")), strings({"found null"}));
    EXPECT_EQ(componentsOf(run).at(1).toObject().value(s("id")), QJsonValue(1));
}

TEST(ComponentMgr, DestroyedAfterAnEarlierRemoval_RemovesTheEntryAtItsOriginalIndex)
{
    // A, B, C and D are registered at 0 to 3. Without A, C is at B's original index: C's entry is removed,
    // and B's remains without an object.
    ComponentFolder folder;
    for (const char* name : {"A", "B", "C", "D"})
        folder.addLibrary(s(name));
    const auto run = folder.run({s("list:A,B,C,D"), s("delete:A"), s("delete:B"), s("components"),
                                 s("find:C"), s("find:B"), s("find:D"), s("close")});
    EXPECT_EQ(namesOf(run), strings({"D"}));
    EXPECT_EQ(componentsOf(run).at(0).toObject().value(s("id")), QJsonValue(0));
    EXPECT_EQ(run.linesWith(s("found")), strings({"found null", "found null", "found D"}));
    EXPECT_EQ(run.linesWith(s("release")), strings({"release D"}));
    EXPECT_EQ(run.lines.last(), s("destroyed D"));
}

TEST(ComponentMgr, DestroyedWithAnOriginalIndexPastTheEnd_LeavesNoDanglingEntry)
{
    ComponentFolder folder;
    for (const char* name : {"A", "B", "C"})
        folder.addLibrary(s(name));
    const auto run = folder.run({s("list:A,B,C"), s("delete:A"), s("delete:C"), s("components"), s("find:C"),
                                 s("find:B"), s("close")});
    EXPECT_EQ(namesOf(run), strings({"B"}));
    EXPECT_EQ(run.linesWith(s("release")), strings({"release B"}));
    EXPECT_FALSE(run.lines.contains(s("CRASHED")));
}

TEST(ComponentMgr, LoadedAfterARemoval_IsRegisteredAtTheCurrentListSize)
{
    // A and B are registered at 0 and 1. Without A, C is registered at 1, its actual index, so that its
    // destruction removes its own entry.
    ComponentFolder folder;
    for (const char* name : {"A", "B", "C"})
        folder.addLibrary(s(name));
    const auto run = folder.run({s("list:A,B"), s("delete:A"), s("load:C"), s("delete:C"), s("components")});
    EXPECT_EQ(namesOf(run), strings({"B"}));
}

TEST(ComponentMgr, Destruction_ReleasesEachComponentBeforeDeletingIt)
{
    ComponentFolder folder;
    folder.addLibrary(s("A"));
    folder.addLibrary(s("B"));
    const auto run = folder.run({s("engine"), s("list:A,B"), s("close"), s("components")});
    EXPECT_EQ(run.lines.mid(run.lines.indexOf(s("changed")) + 1),
              strings({"release A", "release B", "closed", "destroyed A", "destroyed B", "components []"}));
}

TEST(ComponentMgr, ReleaseThatDestroysAnotherComponent_DoesNotAccessIt)
{
    ComponentFolder folder;
    folder.addLibrary(s("Deleter"));
    folder.addLibrary(s("A"));
    folder.addLibrary(s("B"));
    const auto run = folder.run({s("list:Deleter,A,B"), s("deleteOnRelease:A"), s("close")});
    EXPECT_EQ(run.lines.mid(run.lines.indexOf(s("changed")) + 1),
              strings({"release Deleter", "destroyed A", "release B", "closed", "destroyed Deleter",
                       "destroyed B"}));
}

TEST(ComponentMgr, ComponentDestroyedBySignalHandler_IsNotReturned)
{
    ComponentFolder folder;
    folder.addLibrary(s("A"));
    folder.writeList(s(""), {{1, "A"}});
    const auto run =
        folder.run({s("language"), s("deleteNew"), s("load:A"), s("tree"), s("switch"), s("components")});
    EXPECT_EQ(run.linesWith(s("loaded")), strings({"loaded null"}));
    EXPECT_EQ(run.lines.mid(run.lines.lastIndexOf(s("new 'A' ''"))),
              strings({"new 'A' ''", "destroyed A", "components []"}));
}

TEST(ComponentMgr, ListThatNamesItsOwnFolder_IsReadOnce)
{
    for (const char* name : {"", ".", "./", "A/..", "..//.//", "/"}) {
        ComponentFolder folder;
        folder.writeList(s(""), {{1, name}, {2, "B"}});
        folder.addLibrary(s("B"));
        folder.writeFile(s("A/x"), "");
        EXPECT_EQ(folder.run({s("tree")}).linesWith(s("new")), strings({"new 'B' ''"})) << name;
    }
}

TEST(ComponentMgr, ListsThatNameEachOther_AreReadOnce)
{
    ComponentFolder folder;
    folder.writeList(s(""), {{1, "A"}});
    folder.writeList(s("A"), {{1, "B"}});
    folder.writeList(s("B"), {{1, "A"}, {2, "B"}});
    folder.addLibrary(s("A"));
    folder.addLibrary(s("A/AB"));
    folder.addLibrary(s("B/BA"));
    folder.addLibrary(s("B/BB"));
    EXPECT_EQ(folder.run({s("tree")}).linesWith(s("new")),
              strings({"new 'A' ''", "new 'B' 'A'", "new 'A' 'B'", "new 'B' 'B'"}));
}

TEST(ComponentMgr, InvalidBytesBeforeTheGroups_AreSkipped)
{
    ComponentFolder folder;
    folder.writeFile(s("components.ini"),
                     QByteArray::fromHex("00ff") + "\n[[[=\n[COMPONENT1]\nname=A\n[COMPONENT2\n");
    folder.addLibrary(s("A"));
    const auto run = folder.run({s("tree"), s("components")});
    EXPECT_EQ(run.linesWith(s("new")), strings({"new 'A' ''"}));
    EXPECT_EQ(namesOf(run), strings({"A"}));
}

TEST(ComponentMgr, LoadComponent_LogsEachStepWithFunctionAndLine)
{
    ComponentFolder folder;
    folder.addLibrary(s("One"));
    const auto run = folder.run({s("load:One")});
    const QStringList steps = run.errors.filter(QRegularExpression(s("loadComponent.*\\(\\d+\\) \\d+ ms$")));
    EXPECT_EQ(steps.size(), 7) << qPrintable(run.errors.join(QLatin1Char('\n')));
}

TEST(ComponentMgr, SlowFactory_IsLoggedWithItsDurationAtTheNextCheckPoint)
{
    ComponentFolder folder;
    folder.addLibrary(s("Slow"), s("SlowFactory"));
    const auto run = folder.run({s("load:Slow")});
    const QStringList steps = run.errors.filter(QRegularExpression(s("loadComponent.* \\d+ ms$")));
    ASSERT_EQ(steps.size(), 7) << qPrintable(run.errors.join(QLatin1Char('\n')));
    // The factory sleeps for 150 ms.
    const auto match = QRegularExpression(s(" (\\d+) ms$")).match(steps.at(2));
    EXPECT_GE(match.captured(1).toInt(), 150) << qPrintable(steps.at(2));
}

} // namespace
