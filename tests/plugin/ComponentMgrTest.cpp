// The component manager with real libraries, each test in an application folder of its own.
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

QStringList texts(std::initializer_list<const char*> list)
{
    QStringList result;
    for (const char* text : list)
        result.append(s(text));
    return result;
}

QJsonArray componentsOf(const ComponentFolder::Run& run)
{
    const QStringList lines = run.said(s("components"));
    return lines.isEmpty() ? QJsonArray() : QJsonDocument::fromJson(lines.last().mid(11).toUtf8()).array();
}

QStringList namesOf(const ComponentFolder::Run& run)
{
    QStringList names;
    for (const QJsonValue& entry : componentsOf(run))
        names.append(entry.toObject().value(s("name")).toString());
    return names;
}

TEST(ComponentMgr, LoadComponent_MakesInitialisesFilesAndTells)
{
    ComponentFolder folder;
    folder.library(s("One"));
    EXPECT_EQ(folder.run({s("engine"), s("load:One")}).lines,
              texts({"made One", "engine One given", "init One", "new 'One' ''", "loaded One"}));
}

TEST(ComponentMgr, WithoutAnEngine_ComponentsAreLoadedAllTheSame)
{
    ComponentFolder folder;
    folder.library(s("One"));
    EXPECT_EQ(folder.run({s("load:One")}).lines,
              texts({"made One", "engine One none", "init One", "new 'One' ''", "loaded One"}));
}

TEST(ComponentMgr, ComponentWithAParent_LiesInTheParentsFolderUnderBothNames)
{
    ComponentFolder folder;
    folder.library(s("Disk/DiskHealth"));
    folder.library(s("Disk/Health"));
    folder.library(s("Health"));
    const auto run = folder.run({s("load:Health:Disk")});
    EXPECT_EQ(run.said(s("made")), texts({"made DiskHealth"}));
    EXPECT_EQ(run.said(s("new")), texts({"new 'Health' 'Disk'"}));
}

TEST(ComponentMgr, Tree_WalksIntoEachComponentsFolder)
{
    ComponentFolder folder;
    folder.list(s(""), {{1, "A"}, {2, "B"}});
    folder.library(s("A"));
    folder.library(s("B"));
    folder.list(s("A"), {{1, "Sub"}});
    folder.library(s("A/ASub"));
    folder.list(s("Sub"), {{1, "Deep"}});
    folder.library(s("Sub/SubDeep"));
    const auto run = folder.run({s("engine"), s("tree"), s("components")});
    EXPECT_EQ(run.said(s("new")), texts({"new 'A' ''", "new 'Sub' 'A'", "new 'Deep' 'Sub'", "new 'B' ''"}));
    EXPECT_EQ(namesOf(run), texts({"A", "ASub", "SubDeep", "B"}));
    EXPECT_TRUE(run.said(s("changed")).isEmpty());
}

TEST(ComponentMgr, TreeOfOneComponent_ReadsThatFoldersListOnly)
{
    ComponentFolder folder;
    folder.list(s(""), {{1, "A"}});
    folder.library(s("A"));
    folder.list(s("A"), {{1, "Sub"}});
    folder.library(s("A/ASub"));
    EXPECT_EQ(folder.run({s("tree:A")}).said(s("new")), texts({"new 'Sub' 'A'"}));
}

TEST(ComponentMgr, GapsInTheNumbering_DoNotEndTheWalk)
{
    ComponentFolder folder;
    folder.list(s(""), {{1, "A"}, {2, "B"}, {7, "C"}, {99, "D"}});
    for (const char* name : {"A", "B", "C", "D"})
        folder.library(s(name));
    EXPECT_EQ(folder.run({s("tree")}).said(s("made")), texts({"made A", "made B", "made C", "made D"}));
}

TEST(ComponentMgr, GroupsOutsideOneTo99_AreNeverRead)
{
    ComponentFolder folder;
    folder.list(s(""), {{0, "A"}, {99, "B"}, {100, "C"}, {101, "D"}});
    for (const char* name : {"A", "B", "C", "D"})
        folder.library(s(name));
    EXPECT_EQ(folder.run({s("tree")}).said(s("made")), texts({"made B"}));
}

TEST(ComponentMgr, GroupWithoutAName_IsPassedOver)
{
    ComponentFolder folder;
    folder.file(s("components.ini"), "[COMPONENT1]\nother=A\n[COMPONENT2]\nname=B\n[COMPONENT03]\nname=A\n");
    folder.library(s("A"));
    folder.library(s("B"));
    EXPECT_EQ(folder.run({s("tree")}).said(s("made")), texts({"made B"}));
}

TEST(ComponentMgr, MissingList_EndsThatBranchInSilence)
{
    ComponentFolder folder;
    EXPECT_EQ(folder.run({s("tree"), s("tree:Nowhere")}).lines, QStringList());
}

TEST(ComponentMgr, NamesInTheList_AreUtf8)
{
    ComponentFolder folder;
    folder.list(s(""), {{1, "\xc3\x9c\x62\x65r"}});
    folder.library(s("\xc3\x9c\x62\x65r"));
    EXPECT_EQ(folder.run({s("tree")}).said(s("new")), texts({"new '\xc3\x9c\x62\x65r' ''"}));
}

TEST(ComponentMgr, LibraryThatCannotBeLoaded_GivesNothingAndTheWalkGoesOn)
{
    ComponentFolder folder;
    folder.list(s(""), {{1, "Text"}, {2, "Absent"}, {3, "Good"}});
    folder.file(s("Text.so"), "this is no library\n");
    folder.library(s("Good"));
    const auto run = folder.run({s("language"), s("tree"), s("load:Text"), s("load:Absent")});
    EXPECT_EQ(run.said(s("new")), texts({"new 'Good' ''"}));
    EXPECT_EQ(run.said(s("loaded")), texts({"loaded nothing", "loaded nothing"}));
}

TEST(ComponentMgr, FolderOfAComponentThatCannotBeLoaded_IsWalkedAllTheSame)
{
    ComponentFolder folder;
    folder.list(s(""), {{1, "Absent"}});
    folder.list(s("Absent"), {{1, "Sub"}});
    folder.library(s("Absent/AbsentSub"));
    EXPECT_EQ(folder.run({s("language"), s("tree")}).said(s("new")), texts({"new 'Sub' 'Absent'"}));
}

TEST(ComponentMgr, LibraryWithoutAFactory_GivesNothing)
{
    ComponentFolder folder;
    folder.library(s("Odd"), s("NoFactory"));
    EXPECT_EQ(folder.run({s("engine"), s("load:Odd"), s("components")}).lines,
              texts({"loaded nothing", "components []"}));
}

TEST(ComponentMgr, FactoryThatGivesNull_GivesNothing)
{
    ComponentFolder folder;
    folder.library(s("Odd"), s("NullFactory"));
    EXPECT_EQ(folder.run({s("engine"), s("load:Odd"), s("components")}).lines,
              texts({"asked for nothing", "loaded nothing", "components []"}));
}

TEST(ComponentMgr, FileOfTheProductsOwnEnding_IsTakenBeforeTheSystems)
{
    ComponentFolder folder;
    folder.library(s("Both"), s("Component"), s(".dll"));
    folder.library(s("Both"), s("NullFactory"), s(".so"));
    EXPECT_EQ(folder.run({s("load:Both")}).said(s("loaded")), texts({"loaded Both"}));
}

TEST(ComponentMgr, ListOfNames_LoadsEachAndTellsOnceAtTheEnd)
{
    ComponentFolder folder;
    folder.library(s("A"));
    folder.library(s("B"));
    folder.list(s("A"), {{1, "Sub"}});
    folder.library(s("A/ASub"));
    const auto run = folder.run({s("list:A,Absent,B")});
    EXPECT_EQ(run.said(s("new")), texts({"new 'A' ''", "new 'B' ''"}));
    EXPECT_EQ(run.lines.last(), s("changed"));
    EXPECT_EQ(run.said(s("changed")).size(), 1);
}

TEST(ComponentMgr, SameNameTwice_GivesTwoComponents)
{
    ComponentFolder folder;
    folder.library(s("A"));
    EXPECT_EQ(namesOf(folder.run({s("list:A,A"), s("components")})), texts({"A", "A"}));
}

TEST(ComponentMgr, Component_IsFoundInAnyLetterCase)
{
    ComponentFolder folder;
    folder.library(s("AIProbe"));
    const auto run = folder.run(
        {s("load:AIProbe"), s("find:AIPROBE"), s("find:aiprobe"), s("find:AIProbe"), s("find:AIProb")});
    EXPECT_EQ(run.said(s("found")),
              texts({"found AIProbe", "found AIProbe", "found AIProbe", "found nothing"}));
}

TEST(ComponentMgr, Components_CarrySevenKeysAndARunningId)
{
    ComponentFolder folder;
    folder.library(s("A"));
    folder.library(s("B"));
    const QJsonArray list = componentsOf(folder.run({s("list:A,B"), s("components")}));
    ASSERT_EQ(list.size(), 2);
    const QJsonObject second = list.at(1).toObject();
    EXPECT_EQ(second.keys(),
              texts({"canLayout", "component", "id", "name", "resProperty", "source", "text"}));
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
    folder.list(s(""), {{1, "A"}});
    folder.library(s("A"));
    const auto run = folder.run({s("language"), s("tree"), s("switch")});
    EXPECT_EQ(run.said(s("translate")), texts({"translate A", "translate A"}));
}

TEST(ComponentMgr, LanguageSignal_ReachesAComponentLoadedByItselfOnce)
{
    ComponentFolder folder;
    folder.library(s("A"));
    folder.library(s("B"));
    const auto run = folder.run({s("language"), s("load:A"), s("list:B"), s("switch")});
    EXPECT_EQ(run.said(s("translate")), texts({"translate A", "translate B"}));
}

TEST(ComponentMgr, LanguageObjectThatIsItselfAComponent_IsLookedUpWhenTheWalkBegins)
{
    // The walk begins without a language object, so its own second connection is not made; the loading's is.
    ComponentFolder folder;
    folder.list(s(""), {{1, "Multilanguage"}, {2, "A"}});
    folder.library(s("Multilanguage"));
    folder.library(s("A"));
    const auto run = folder.run({s("engine"), s("tree"), s("tell")});
    EXPECT_EQ(run.said(s("translate")), texts({"translate Multilanguage", "translate A"}));
}

TEST(ComponentMgr, WithoutALanguageObject_ComponentsAreLoaded)
{
    ComponentFolder folder;
    folder.list(s(""), {{1, "A"}});
    folder.library(s("A"));
    const auto run = folder.run({s("engine"), s("tree"), s("switch")});
    EXPECT_EQ(run.said(s("new")).size(), 1);
    EXPECT_TRUE(run.said(s("translate")).isEmpty());
}

TEST(ComponentMgr, DestroyedComponent_LeavesTheList)
{
    ComponentFolder folder;
    for (const char* name : {"A", "B", "C"})
        folder.library(s(name));
    const auto run = folder.run({s("list:A,B,C"), s("delete:B"), s("components"), s("find:B")});
    EXPECT_EQ(namesOf(run), texts({"A", "C"}));
    EXPECT_EQ(run.said(s("found")), texts({"found nothing"}));
    EXPECT_EQ(componentsOf(run).at(1).toObject().value(s("id")), QJsonValue(1));
}

TEST(ComponentMgr, DestroyedAfterEarlierOnes_TakesTheEntryAtItsOldPlace)
{
    // A, B, C, D were filed at 0, 1, 2, 3. With A gone, B's old place holds C: C's entry goes, and B's stays
    // without an object.
    ComponentFolder folder;
    for (const char* name : {"A", "B", "C", "D"})
        folder.library(s(name));
    const auto run = folder.run({s("list:A,B,C,D"), s("delete:A"), s("delete:B"), s("components"),
                                 s("find:C"), s("find:B"), s("find:D"), s("close")});
    EXPECT_EQ(namesOf(run), texts({"D"}));
    EXPECT_EQ(componentsOf(run).at(0).toObject().value(s("id")), QJsonValue(0));
    EXPECT_EQ(run.said(s("found")), texts({"found nothing", "found nothing", "found D"}));
    EXPECT_EQ(run.said(s("release")), texts({"release D"}));
    EXPECT_EQ(run.lines.last(), s("destroyed D"));
}

TEST(ComponentMgr, DestroyedWithAnOldPlaceBeyondTheList_LeavesNoDanglingEntry)
{
    ComponentFolder folder;
    for (const char* name : {"A", "B", "C"})
        folder.library(s(name));
    const auto run = folder.run({s("list:A,B,C"), s("delete:A"), s("delete:C"), s("components"), s("find:C"),
                                 s("find:B"), s("close")});
    EXPECT_EQ(namesOf(run), texts({"B"}));
    EXPECT_EQ(run.said(s("release")), texts({"release B"}));
    EXPECT_FALSE(run.lines.contains(s("CRASHED")));
}

TEST(ComponentMgr, LoadedAfterARemoval_IsFiledAtTheSizeOfTheListThen)
{
    // A and B at 0 and 1; A goes; C is filed at 1, where it is, so that its own entry goes with it.
    ComponentFolder folder;
    for (const char* name : {"A", "B", "C"})
        folder.library(s(name));
    const auto run = folder.run({s("list:A,B"), s("delete:A"), s("load:C"), s("delete:C"), s("components")});
    EXPECT_EQ(namesOf(run), texts({"B"}));
}

TEST(ComponentMgr, Destruction_ReleasesEachBeforeItIsDeleted)
{
    ComponentFolder folder;
    folder.library(s("A"));
    folder.library(s("B"));
    const auto run = folder.run({s("engine"), s("list:A,B"), s("close"), s("components")});
    EXPECT_EQ(run.lines.mid(run.lines.indexOf(s("changed")) + 1),
              texts({"release A", "release B", "closed", "destroyed A", "destroyed B", "components []"}));
}

TEST(ComponentMgr, ReleaseThatDestroysAnotherComponent_TouchesNoDeadObject)
{
    ComponentFolder folder;
    folder.library(s("Killer"));
    folder.library(s("A"));
    folder.library(s("B"));
    const auto run = folder.run({s("list:Killer,A,B"), s("victim:A"), s("close")});
    EXPECT_EQ(
        run.lines.mid(run.lines.indexOf(s("changed")) + 1),
        texts({"release Killer", "destroyed A", "release B", "closed", "destroyed Killer", "destroyed B"}));
}

TEST(ComponentMgr, ComponentDestroyedWhenItIsToldOf_IsNotGivenBack)
{
    ComponentFolder folder;
    folder.library(s("A"));
    folder.list(s(""), {{1, "A"}});
    const auto run =
        folder.run({s("language"), s("refuse"), s("load:A"), s("tree"), s("switch"), s("components")});
    EXPECT_EQ(run.said(s("loaded")), texts({"loaded nothing"}));
    EXPECT_EQ(run.lines.mid(run.lines.lastIndexOf(s("new 'A' ''"))),
              texts({"new 'A' ''", "destroyed A", "components []"}));
}

TEST(ComponentMgr, ListThatNamesItsOwnFolder_EndsTheWalk)
{
    for (const char* name : {"", ".", "./", "A/..", "..//.//", "/"}) {
        ComponentFolder folder;
        folder.list(s(""), {{1, name}, {2, "B"}});
        folder.library(s("B"));
        folder.file(s("A/x"), "");
        EXPECT_EQ(folder.run({s("tree")}).said(s("new")), texts({"new 'B' ''"})) << name;
    }
}

TEST(ComponentMgr, ListsThatNameEachOther_EndTheWalk)
{
    ComponentFolder folder;
    folder.list(s(""), {{1, "A"}});
    folder.list(s("A"), {{1, "B"}});
    folder.list(s("B"), {{1, "A"}, {2, "B"}});
    folder.library(s("A"));
    folder.library(s("A/AB"));
    folder.library(s("B/BA"));
    folder.library(s("B/BB"));
    EXPECT_EQ(folder.run({s("tree")}).said(s("new")),
              texts({"new 'A' ''", "new 'B' 'A'", "new 'A' 'B'", "new 'B' 'B'"}));
}

TEST(ComponentMgr, GarbledBytesBeforeTheGroups_LeaveTheRestReadable)
{
    ComponentFolder folder;
    folder.file(s("components.ini"),
                QByteArray::fromHex("00ff") + "\n[[[=\n[COMPONENT1]\nname=A\n[COMPONENT2\n");
    folder.library(s("A"));
    const auto run = folder.run({s("tree"), s("components")});
    EXPECT_EQ(run.said(s("new")), texts({"new 'A' ''"}));
    EXPECT_EQ(namesOf(run), texts({"A"}));
}

TEST(ComponentMgr, LoadOfOneComponent_LogsItsStepsWithFunctionAndLine)
{
    ComponentFolder folder;
    folder.library(s("One"));
    const auto run = folder.run({s("load:One")});
    const QStringList steps = run.errors.filter(QRegularExpression(s("loadComponent.*\\(\\d+\\) \\d+ ms$")));
    EXPECT_EQ(steps.size(), 7) << qPrintable(run.errors.join(QLatin1Char('\n')));
}

TEST(ComponentMgr, SlowFactory_IsLoggedWithItsTimeAtTheCheckPointAfterIt)
{
    ComponentFolder folder;
    folder.library(s("Slow"), s("SlowFactory"));
    const auto run = folder.run({s("load:Slow")});
    const QStringList steps = run.errors.filter(QRegularExpression(s("loadComponent.* \\d+ ms$")));
    ASSERT_EQ(steps.size(), 7) << qPrintable(run.errors.join(QLatin1Char('\n')));
    // The factory sleeps for 150 ms.
    const auto match = QRegularExpression(s(" (\\d+) ms$")).match(steps.at(2));
    EXPECT_GE(match.captured(1).toInt(), 150) << qPrintable(steps.at(2));
}

} // namespace
