// What the check says of hosts that lack something, or have it otherwise.
#include "hostcheck/HostCheck.h"
#include "tests/support/RecordingHost.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using hostcheck::Finding;
using hostcheck::State;

class Languages : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void sigCurrentLanguageChanged();
};

// The fakes have no signals.
std::vector<Finding> check(RecordingHost& host)
{
    static Languages languages;
    host.build();
    host.engine()->rootContext()->setContextProperty("multilanguage", &languages);
    return hostcheck::checkHost(*host.engine());
}

std::vector<Finding> notFound(const std::vector<Finding>& findings)
{
    std::vector<Finding> rest;
    std::copy_if(findings.begin(), findings.end(), std::back_inserter(rest),
                 [](const Finding& finding) { return finding.state != State::Found; });
    return rest;
}

TEST(HostCheck, CompleteHost_HasEverything)
{
    RecordingHost host;
    const std::vector<Finding> findings = check(host);
    EXPECT_EQ(findings.size(), 38u);
    EXPECT_TRUE(hostcheck::isComplete(findings)) << hostcheck::tableOf(findings).toStdString();
    EXPECT_TRUE(hostcheck::tableOf(findings).endsWith(
        "38 looked for: 38 found, 0 missing, 0 with another signature"));
}

TEST(HostCheck, EmptyApplication_HasNothing)
{
    const QQmlApplicationEngine engine;
    const std::vector<Finding> findings = hostcheck::checkHost(engine);
    EXPECT_TRUE(hostcheck::tableOf(findings).endsWith(
        "38 looked for: 0 found, 38 missing, 0 with another signature"));
    EXPECT_FALSE(hostcheck::isComplete(findings));
}

struct MemberRow
{
    const char* object;
    const char* name;
    const char* expected;
};

class EachMember : public testing::TestWithParam<MemberRow>
{
};

TEST_P(EachMember, Missing_IsToldAndNothingElse)
{
    RecordingHost host;
    host.spec(GetParam().object).remove(GetParam().name);
    const std::vector<Finding> rest = notFound(check(host));
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].state, State::Missing);
    EXPECT_EQ(rest[0].object, GetParam().object);
    EXPECT_EQ(rest[0].expected, GetParam().expected);
    EXPECT_EQ(rest[0].found, "");
}

TEST_P(EachMember, WithAnotherSignature_IsToldWithWhatIsThere)
{
    RecordingHost host;
    const QByteArray name = GetParam().name;
    const bool isProperty = QByteArray(GetParam().expected).startsWith("property");
    host.spec(GetParam().object).remove(name);
    if (isProperty)
        host.spec(GetParam().object).property(name, "QStringList", QStringList());
    else
        host.spec(GetParam().object).method(name + "(QString)", "double");
    const std::vector<Finding> rest = notFound(check(host));
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].state, State::OtherSignature);
    EXPECT_EQ(rest[0].expected, GetParam().expected);
    EXPECT_EQ(rest[0].found, isProperty ? "property QStringList " + name : "double " + name + "(QString)");
}

const MemberRow kMembers[] = {
    {"partitionmanager", "doFunFromAI", "bool doFunFromAI(int, QVariantMap)"},
    {"partitionmanager", "isWin11CheckerEnable", "bool isWin11CheckerEnable()"},
    {"partitionmanager", "hasDiskSmartInfoError", "bool hasDiskSmartInfoError(int)"},
    {"toolbox", "check4kAlign", "bool check4kAlign(QVariant)"},
    {"partitionrecovery", "isDiskIndexValid", "bool isDiskIndexValid(QVariant)"},
    {"partitionrecovery", "isRawPart", "bool isRawPart(QVariant)"},
    {"bootablemedia", "isAlreadyEnable", "bool isAlreadyEnable()"},
    {"deviceMgr", "disks", "QVariantList disks(int, bool)"},
    {"deviceMgr", "bootDisks", "QVariantList bootDisks(int, bool)"},
    {"clone", "cloneType", "property int cloneType, read and written"},
    {"clone", "invalidInfo", "QString invalidInfo(QVariantMap, QVariantMap, int, QVariantMap)"},
    {"diskconverter", "isFunValid", "bool isFunValid(int, QVariantMap)"},
    {"diskconverter", "isGPT2MBRValid", "QString isGPT2MBRValid(QVariantMap)"},
    {"diskconverter", "isMBR2GPTValid", "QString isMBR2GPTValid(QVariantMap)"},
    {"__zormain", "busy", "property bool busy"},
    {"__zormain", "doprfunction", "doprfunction(QVariant)"},
    {"__zormain", "createBootMediaEnabled", "QVariant createBootMediaEnabled(QVariant)"},
    {"__zormain", "dobmfunction", "dobmfunction(QVariant)"},
    {"__zormain", "opendiskhealth", "opendiskhealth(QVariant)"},
    {"__zormain", "passwordResetEnabled", "QVariant passwordResetEnabled()"},
    {"__zormain", "bootrepairEnabled", "QVariant bootrepairEnabled()"},
    {"__zormain", "doToolBox", "QVariant doToolBox(QVariant, QVariant)"},
    {"__qml_executer", "sendUserInfo", "QVariant sendUserInfo(QVariant, QVariant, QVariant, QVariant)"},
    {"window", "closeGuide", "QVariant closeGuide(QVariant)"},
    {"window", "popuped", "property bool popuped"},
    {"window", "openUrl", "QVariant openUrl(QVariant)"},
};

INSTANTIATE_TEST_SUITE_P(All, EachMember, testing::ValuesIn(kMembers), [](const auto& row) {
    return std::string(row.param.object) + "_" + row.param.name;
});

class EachObject : public testing::TestWithParam<const char*>
{
};

TEST_P(EachObject, Missing_IsToldWithItsMembers)
{
    RecordingHost host;
    host.without(GetParam());
    const std::vector<Finding> rest = notFound(check(host));
    ASSERT_FALSE(rest.empty());
    for (const Finding& finding : rest) {
        EXPECT_EQ(finding.state, State::Missing);
        // The executer lies in the window.
        EXPECT_TRUE(finding.object == GetParam() || finding.object == "__qml_executer");
    }
    const auto isObject = [](const Finding& finding) {
        return finding.kind == hostcheck::Kind::Object && finding.object == GetParam();
    };
    EXPECT_EQ(std::count_if(rest.begin(), rest.end(), isObject), 1);
}

INSTANTIATE_TEST_SUITE_P(All, EachObject,
                         testing::Values("partitionmanager", "toolbox", "partitionrecovery", "bootablemedia",
                                         "deviceMgr", "clone", "diskconverter", "__zormain", "__qml_executer",
                                         "window"));

TEST(HostCheck, MethodInThePlaceOfTheSignal_IsAnotherSignature)
{
    RecordingHost host;
    host.build();
    const std::vector<Finding> rest = notFound(hostcheck::checkHost(*host.engine()));
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].kind, hostcheck::Kind::Signal);
    EXPECT_EQ(rest[0].state, State::OtherSignature);
    EXPECT_EQ(rest[0].expected, "signal sigCurrentLanguageChanged()");
    EXPECT_EQ(rest[0].found, "void sigCurrentLanguageChanged()");
}

TEST(HostCheck, MissingLanguageObject_IsToldWithItsSignal)
{
    RecordingHost host;
    host.without("multilanguage");
    host.build();
    EXPECT_EQ(notFound(hostcheck::checkHost(*host.engine())).size(), 2u);
}

// The library asks by the bare name and gets the overload of the lowest index.
TEST(HostCheck, RightOverloadBehindAWrongOne_IsAnotherSignature)
{
    RecordingHost host;
    host.spec("deviceMgr")
        .remove("disks")
        .method("disks(int)", "QVariantList")
        .method("disks(int,bool)", "QVariantList");
    const std::vector<Finding> rest = notFound(check(host));
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].found, "QVariantList disks(int)");
}

TEST(HostCheck, ResultThatNobodyAsksFor_IsFound)
{
    RecordingHost host;
    host.spec("__zormain").remove("doprfunction").method("doprfunction(QVariant)", "QVariant");
    EXPECT_TRUE(hostcheck::isComplete(check(host)));
}

TEST(HostCheck, PropertyWithoutAFixedType_IsFound)
{
    RecordingHost host;
    host.spec("__zormain").remove("busy").property("busy", "QVariant", true);
    EXPECT_TRUE(hostcheck::isComplete(check(host)));
}

class ReadOnlyClone : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int cloneType MEMBER type CONSTANT)

public:
    Q_INVOKABLE QString invalidInfo(QVariantMap, QVariantMap, int, QVariantMap) { return QString(); }
    const int type = 0;
};

TEST(HostCheck, PropertyThatCannotBeWritten_IsAnotherSignature)
{
    ReadOnlyClone clone;
    RecordingHost host;
    host.build();
    host.engine()->rootContext()->setContextProperty("clone", &clone);
    const std::vector<Finding> rest = notFound(hostcheck::checkHost(*host.engine()));
    const auto found = std::find_if(rest.begin(), rest.end(),
                                    [](const Finding& finding) { return finding.object == "clone"; });
    ASSERT_NE(found, rest.end());
    EXPECT_EQ(found->state, State::OtherSignature);
    EXPECT_EQ(found->found, "property int cloneType, read only");
}

// Hosts write their pages in QML too: its functions take and give QVariant.
TEST(HostCheck, HostWrittenInQml_IsFoundWhereTypesAgree)
{
    QQmlApplicationEngine engine;
    engine.loadData(R"(import QtQuick 2.15
import QtQuick.Window 2.15
Window {
    property bool popuped: false
    function closeGuide(v) { return true }
    function openUrl(v) { return true }
    Item {
        objectName: "__zormain"
        property bool busy: false
        function doToolBox(index, info) { return true }
        function passwordResetEnabled(surplus) { return true }
    }
})");
    ASSERT_FALSE(engine.rootObjects().isEmpty());
    const std::vector<Finding> findings = hostcheck::checkHost(engine);
    const auto stateOf = [&](const QString& expected) {
        const auto found = std::find_if(findings.begin(), findings.end(),
                                        [&](const Finding& finding) { return finding.expected == expected; });
        return found == findings.end() ? State::Missing : found->state;
    };
    EXPECT_EQ(stateOf("property bool popuped"), State::Found);
    EXPECT_EQ(stateOf("QVariant closeGuide(QVariant)"), State::Found);
    EXPECT_EQ(stateOf("QVariant doToolBox(QVariant, QVariant)"), State::Found);
    EXPECT_EQ(stateOf("QVariant passwordResetEnabled()"), State::OtherSignature);
    EXPECT_EQ(stateOf("QVariant bootrepairEnabled()"), State::Missing);
}

TEST(HostCheck, Table_HasALineForEachFinding)
{
    const QString table = hostcheck::tableOf({{hostcheck::Kind::Object, State::Found, "toolbox", "", ""},
                                              {hostcheck::Kind::Method, State::OtherSignature, "toolbox",
                                               "bool check4kAlign(QVariant)", "int check4kAlign()"}});
    const QStringList lines = table.split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].startsWith("found"));
    EXPECT_TRUE(lines[1].startsWith("other signature"));
    EXPECT_TRUE(lines[1].endsWith("(there is: int check4kAlign())"));
    EXPECT_EQ(lines[2], "2 looked for: 1 found, 0 missing, 1 with another signature");
}

} // namespace

#include "HostCheckTest.moc"
