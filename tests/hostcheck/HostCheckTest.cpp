// Findings for hosts with missing members and with members of other signatures.
#include "hostcheck/HostCheck.h"
#include "plugin/HostCall.h"
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

// The fakes of RecordingHost cannot declare signals, so a real object replaces the language object.
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

TEST(HostCheck, CompleteHost_HasEveryMember)
{
    RecordingHost host;
    const std::vector<Finding> findings = check(host);
    EXPECT_EQ(findings.size(), 38u);
    EXPECT_TRUE(hostcheck::isComplete(findings)) << hostcheck::tableOf(findings).toStdString();
    EXPECT_TRUE(
        hostcheck::tableOf(findings).endsWith("38 checked: 38 found, 0 missing, 0 with another signature"));
}

TEST(HostCheck, EmptyApplication_LacksEveryMember)
{
    const QQmlApplicationEngine engine;
    const std::vector<Finding> findings = hostcheck::checkHost(engine);
    EXPECT_TRUE(
        hostcheck::tableOf(findings).endsWith("38 checked: 0 found, 38 missing, 0 with another signature"));
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

TEST_P(EachMember, Missing_IsTheOnlyFinding)
{
    RecordingHost host;
    host.spec(GetParam().object).remove(GetParam().name);
    const std::vector<Finding> rest = notFound(check(host));
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].state, State::Missing);
    EXPECT_EQ(rest[0].object, GetParam().object);
    EXPECT_EQ(rest[0].expected, GetParam().expected);
    EXPECT_EQ(rest[0].found, "");
    EXPECT_NE(rest[0].effect, "");
}

TEST_P(EachMember, WithAnotherSignature_IsReportedWithTheSignatureFound)
{
    RecordingHost host;
    const QByteArray name = GetParam().name;
    const bool isProperty = QByteArray(GetParam().expected).startsWith("property");
    host.spec(GetParam().object).remove(name);
    if (isProperty)
        host.spec(GetParam().object).property(name, "QStringList", QStringList());
    else
        host.spec(GetParam().object).method(name + "(QString)", "double");
    const std::vector<Finding> findings = check(host);
    EXPECT_FALSE(hostcheck::isComplete(findings));
    const std::vector<Finding> rest = notFound(findings);
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].state, State::OtherSignature);
    EXPECT_EQ(rest[0].expected, GetParam().expected);
    EXPECT_EQ(rest[0].found, isProperty ? "property QStringList " + name : "double " + name + "(QString)");
    EXPECT_NE(rest[0].effect, "");
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

TEST_P(EachObject, Missing_IsReportedWithItsMembers)
{
    RecordingHost host;
    host.without(GetParam());
    const std::vector<Finding> rest = notFound(check(host));
    ASSERT_FALSE(rest.empty());
    for (const Finding& finding : rest) {
        EXPECT_EQ(finding.state, State::Missing);
        // The executer is a child of the window.
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

TEST(HostCheck, MethodInsteadOfTheSignal_IsAnotherSignature)
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

TEST(HostCheck, MissingLanguageObject_IsReportedWithItsSignal)
{
    RecordingHost host;
    host.without("multilanguage");
    host.build();
    EXPECT_EQ(notFound(hostcheck::checkHost(*host.engine())).size(), 2u);
}

// The library looks up a method by name only and uses the overload with the lowest index.
TEST(HostCheck, RightOverloadAfterAWrongOne_IsAnotherSignature)
{
    RecordingHost host;
    host.spec("deviceMgr")
        .remove("disks")
        .method("disks(QString,bool)", "QVariantList")
        .method("disks(int,bool)", "QVariantList");
    const std::vector<Finding> rest = notFound(check(host));
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].found, "QVariantList disks(QString, bool)");
}

struct SignatureRow
{
    const char* object;
    const char* name;
    const char* signature;
    const char* type;
    bool found;
};

// Compares each row with the library, which calls the member if and only if the check finds it.
TEST(HostCheck, Signatures_AreFoundIfAndOnlyIfTheLibraryCallsThem)
{
    const SignatureRow rows[] = {
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(int)", "bool", true},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(uint)", "bool", true},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(long)", "bool",
         sizeof(long) == sizeof(int)},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError()", "bool", true},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(short)", "bool", false},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(qlonglong)", "bool", false},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(bool)", "bool", false},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(int,int)", "bool", false},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(int)", "int", false},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(int)", "QVariant", false},
        {"partitionmanager", "hasDiskSmartInfoError", "hasDiskSmartInfoError(int)", "", false},
    };
    for (const SignatureRow& row : rows) {
        RecordingHost host;
        host.spec(row.object).remove(row.name).method(row.signature, row.type);
        EXPECT_EQ(notFound(check(host)).empty(), row.found) << row.signature << ' ' << row.type;
        const bool called =
            callHost<bool>(host.object(row.object), row.name, ConnectionRule::Direct, 5).has_value();
        EXPECT_EQ(called, row.found) << row.signature << ' ' << row.type;
    }
}

class Page : public QObject
{
    Q_OBJECT

public:
    enum class Function { Create = 18 };
    Q_ENUM(Function)
    enum Undeclared { None };
    Q_INVOKABLE bool doFunFromAI(Function, QVariantMap) { return true; }
    Q_INVOKABLE bool isWin11CheckerEnable() { return true; }
    Q_INVOKABLE bool hasDiskSmartInfoError(Undeclared) { return true; }
};

TEST(HostCheck, EnumerationParameter_IsFoundOnlyIfDeclaredToQt)
{
    Page page;
    RecordingHost host;
    host.build();
    host.engine()->rootContext()->setContextProperty("partitionmanager", &page);
    for (const Finding& finding : hostcheck::checkHost(*host.engine())) {
        if (finding.object != "partitionmanager")
            continue;
        const bool undeclared = finding.expected.contains("hasDiskSmartInfoError");
        EXPECT_EQ(finding.state, undeclared ? State::OtherSignature : State::Found)
            << qPrintable(finding.expected);
    }
}

TEST(HostCheck, Finding_HasTheEffectOfItsState)
{
    RecordingHost missing;
    missing.spec("__zormain").remove("opendiskhealth");
    EXPECT_EQ(notFound(check(missing)).at(0).effect, "DiskHealthCheck answers \"Task NotValid\".");
    RecordingHost other;
    other.spec("__zormain").remove("opendiskhealth").method("opendiskhealth(int)");
    EXPECT_EQ(notFound(check(other)).at(0).effect,
              "DiskHealthCheck answers \"Task Queued\", and nothing happens.");
    RecordingHost whole;
    for (const Finding& finding : check(whole))
        EXPECT_EQ(finding.effect, "");
}

TEST(HostCheck, UnusedResult_MayHaveAnyType)
{
    RecordingHost host;
    host.spec("__zormain").remove("doprfunction").method("doprfunction(QVariant)", "QVariant");
    EXPECT_TRUE(hostcheck::isComplete(check(host)));
}

TEST(HostCheck, VariantProperty_IsFound)
{
    RecordingHost host;
    host.spec("__zormain").remove("busy").property("busy", "QVariant", true);
    EXPECT_TRUE(hostcheck::isComplete(check(host)));
}

TEST(HostCheck, PropertyThatQtConverts_IsFound)
{
    for (const char* type : {"int", "QString", "double"}) {
        RecordingHost host;
        host.spec("__zormain").remove("busy").property("busy", type, QVariant());
        EXPECT_TRUE(hostcheck::isComplete(check(host))) << type;
    }
    for (const char* type : {"uint", "qlonglong", "double", "QVariant"}) {
        RecordingHost host;
        host.spec("clone").remove("cloneType").property("cloneType", type, QVariant());
        EXPECT_TRUE(hostcheck::isComplete(check(host))) << type;
    }
    for (const char* type : {"bool", "QVariantMap", "QDateTime"}) {
        RecordingHost host;
        host.spec("clone").remove("cloneType").property("cloneType", type, QVariant());
        EXPECT_EQ(notFound(check(host)).size(), 1u) << type;
    }
}

// The signal is looked up by its full signature, so an overload with arguments does not hide it.
class OverloadedLanguages : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void sigCurrentLanguageChanged(int language);
    void sigCurrentLanguageChanged();
};

class LanguagesWithAnArgument : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void sigCurrentLanguageChanged(int language);
};

TEST(HostCheck, SignalAmongOverloads_IsFoundByItsFullSignature)
{
    RecordingHost host;
    host.build();
    OverloadedLanguages overloaded;
    host.engine()->rootContext()->setContextProperty("multilanguage", &overloaded);
    EXPECT_TRUE(hostcheck::isComplete(hostcheck::checkHost(*host.engine())));
    LanguagesWithAnArgument other;
    host.engine()->rootContext()->setContextProperty("multilanguage", &other);
    const std::vector<Finding> rest = notFound(hostcheck::checkHost(*host.engine()));
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].state, State::OtherSignature);
    EXPECT_EQ(rest[0].found, "signal void sigCurrentLanguageChanged(int)");
}

class ReadOnlyClone : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int cloneType MEMBER type CONSTANT)

public:
    Q_INVOKABLE QString invalidInfo(QVariantMap, QVariantMap, int, QVariantMap) { return QString(); }
    const int type = 0;
};

TEST(HostCheck, ReadOnlyProperty_IsAnotherSignature)
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

// Functions in QML have QVariant parameters and results.
TEST(HostCheck, HostWrittenInQml_IsFoundWhereTypesMatch)
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
        function passwordResetEnabled(extra) { return true }
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

TEST(HostCheck, Table_HasALineForEachFindingAndEachEffect)
{
    const QString table =
        hostcheck::tableOf({{hostcheck::Kind::Object, State::Found, "toolbox", "", "", ""},
                            {hostcheck::Kind::Method, State::OtherSignature, "toolbox",
                             "bool check4kAlign(QVariant)", "int check4kAlign()", "The effect."}});
    const QStringList lines = table.split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith("found"));
    EXPECT_TRUE(lines[1].startsWith("other signature"));
    EXPECT_TRUE(lines[1].endsWith("(found instead: int check4kAlign())"));
    EXPECT_EQ(lines[2].trimmed(), "The effect.");
    EXPECT_EQ(lines[3], "2 checked: 1 found, 0 missing, 1 with another signature");
}

} // namespace

#include "HostCheckTest.moc"
