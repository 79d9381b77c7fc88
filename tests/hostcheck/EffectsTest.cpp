// The effect of each member on a tool's answer, when it is missing and when it has a signature that the
// library does not call. Each case has a finding with an effect.
#include "hostcheck/HostCheck.h"
#include "tests/support/Answers.h"
#include "tests/support/Recorder.h"
#include "tests/tools/ToolRow.h"

#include <gtest/gtest.h>

namespace {

const QString kQueued = answers::queued;
const QString kNotValid = answers::notValid;

struct EffectRow
{
    const char* object;
    const char* member;
    QByteArray otherParameters;
    QByteArray type;
    const char* tool;
    QString missing;
    QString otherSignature;
};

void PrintTo(const EffectRow& row, std::ostream* out)
{
    *out << row.object << '.' << row.member << ' ' << row.tool;
}

hostcheck::Finding findingOf(ToolBench& bench, const EffectRow& row)
{
    for (const hostcheck::Finding& finding : hostcheck::checkHost(*bench.host().engine())) {
        if (finding.object == row.object && finding.expected.contains(QLatin1String(row.member)))
            return finding;
    }
    return {};
}

class Effects : public testing::TestWithParam<EffectRow>
{
protected:
    QString answer()
    {
        bench_.build();
        QString answer;
        bench_.onConnectionThread([&] { answer = toolRow(GetParam().tool).call(bench_.tools()); });
        return answer;
    }

    FakeSpec& specWithoutMember() { return bench_.host().spec(GetParam().object).remove(GetParam().member); }

    ToolBench bench_;
};

TEST_P(Effects, MissingMember_HasTheListedEffectAndIsReported)
{
    specWithoutMember();
    EXPECT_EQ(answer(), GetParam().missing);
    const hostcheck::Finding finding = findingOf(bench_, GetParam());
    EXPECT_EQ(finding.state, hostcheck::State::Missing);
    EXPECT_NE(finding.effect, "");
}

TEST_P(Effects, OtherSignature_IsNotCalledAndIsReported)
{
    const EffectRow& row = GetParam();
    specWithoutMember().method(row.member + ("(" + row.otherParameters + ")"), row.type,
                               [](const QVariantList&) { return QVariant(true); });
    EXPECT_EQ(answer(), row.otherSignature);
    const QString where = QLatin1String(row.object) + '.' + row.member;
    EXPECT_FALSE(bench_.host().recorder().sequence().contains(where));
    const hostcheck::Finding finding = findingOf(bench_, row);
    EXPECT_EQ(finding.state, hostcheck::State::OtherSignature);
    EXPECT_NE(finding.effect, "");
}

const QString kNoDisk = "It seems that disk0 is not exist";
const QString kNotSystem = "It seems that disk0 is not os disk";

const EffectRow kRows[] = {
    {"partitionmanager", "doFunFromAI", "QString,QVariantMap", "bool", "WipeDisk", kNotValid, kNotValid},
    {"partitionmanager", "isWin11CheckerEnable", "int", "bool", "Windows11UpgradeCheck", kNotValid,
     kNotValid},
    {"partitionrecovery", "isDiskIndexValid", "int", "bool", "RecoverLostPartition", kNotValid, kNotValid},
    {"bootablemedia", "isAlreadyEnable", "int", "bool", "InstallAndEnablePreOS", kQueued, kQueued},
    {"bootablemedia", "isAlreadyEnable", "int", "bool", "DisablePreOS", kNotValid, kNotValid},
    {"deviceMgr", "disks", "QString,bool", "QVariantList", "CloneDiskToDisk", kNoDisk, kNoDisk},
    {"deviceMgr", "disks", "QString,bool", "QVariantList", "CloneOSDataFromDisk", kNotSystem, kNotSystem},
    {"deviceMgr", "disks", "QString,bool", "QVariantList", "ClonePartitionToDisk", kQueued, kQueued},
    {"deviceMgr", "disks", "QString,bool", "QVariantList", "ConvertDiskToGpt", kQueued, kQueued},
    {"deviceMgr", "disks", "QString,bool", "QVariantList", "RebuildMbr", kQueued, kQueued},
    {"clone", "invalidInfo", "int", "QString", "CloneDiskToDisk", "", kQueued},
    {"__zormain", "doprfunction", "int", "", "RecoverLostPartition", kNotValid, kQueued},
    {"__zormain", "createBootMediaEnabled", "int", "QVariant", "CreateBootableISO", kNotValid, kNotValid},
    {"__zormain", "dobmfunction", "int", "", "CreateBootableISO", kQueued, kQueued},
    {"__zormain", "dobmfunction", "int", "", "InstallAndEnablePreOS", kQueued, kQueued},
    {"__zormain", "opendiskhealth", "int", "", "DiskHealthCheck", kNotValid, kQueued},
    {"__zormain", "passwordResetEnabled", "int", "QVariant", "PasswordReset", kNotValid, kNotValid},
    {"__zormain", "bootrepairEnabled", "int", "QVariant", "RepairWindowsBoot", kNotValid, kNotValid},
    {"__zormain", "doToolBox", "int,QVariant", "QVariant", "RebuildMbr", kNotValid, kNotValid},
    {"__zormain", "doToolBox", "int,QVariant", "QVariant", "Windows11UpgradeCheck", kNotValid, kNotValid},
    {"__zormain", "doToolBox", "int,QVariant", "QVariant", "PasswordReset", kQueued, kNotValid},
    {"__zormain", "doToolBox", "int,QVariant", "QVariant", "RepairWindowsBoot", kQueued, kNotValid},
    {"__qml_executer", "sendUserInfo", "int", "QVariant", "PreProcessing", "true ", "true "},
    {"window", "closeGuide", "int", "QVariant", "WipeDisk", kQueued, kQueued},
};

INSTANTIATE_TEST_SUITE_P(Members, Effects, testing::ValuesIn(kRows), [](const auto& row) {
    return std::string(row.param.member) + "_" + row.param.tool;
});

QVariantMap cloneGuide(ToolBench& bench)
{
    for (const HostCallRecord& call : bench.host().recorder().calls()) {
        if (call.where() == "aibridge.sigCloneResult")
            return call.arguments.first().toMap();
    }
    return {};
}

TEST(CloneEffects, InvalidInfoOfAnotherSignature_OpensTheGuideAtPage3WithoutAnErrorMessage)
{
    ToolBench bench;
    bench.host().spec("clone").remove("invalidInfo").method("invalidInfo(int)", "QString");
    bench.build();
    EXPECT_EQ(toolRow("CloneDiskToDisk").call(bench.tools()), kQueued);
    EXPECT_EQ(cloneGuide(bench).value("goToPageIndex"), QVariant(3));
    EXPECT_EQ(cloneGuide(bench).value("errMsg"), QVariant(QString()));
}

TEST(CloneEffects, MissingCloneType_OpensNoGuide)
{
    ToolBench bench;
    bench.host().spec("clone").remove("cloneType");
    bench.build();
    EXPECT_EQ(toolRow("CloneDiskToDisk").call(bench.tools()), "");
    EXPECT_TRUE(cloneGuide(bench).isEmpty());
}

TEST(CloneEffects, CloneTypeWithoutAConversion_IsNotWrittenAndTheGuideReceivesTheType)
{
    ToolBench bench;
    bench.host()
        .spec("clone")
        .remove("cloneType")
        .property("cloneType", "QVariantMap", QVariantMap{{"a", 1}});
    bench.build();
    EXPECT_EQ(toolRow("CloneDiskToDisk").call(bench.tools()), kQueued);
    EXPECT_EQ(bench.host().object("clone")->value("cloneType").toMap(), (QVariantMap{{"a", 1}}));
    EXPECT_EQ(cloneGuide(bench).value("cloneType"), QVariant(2));
}

TEST(CloneEffects, CloneTypeWithAConversion_IsWritten)
{
    ToolBench bench;
    bench.host().spec("clone").remove("cloneType").property("cloneType", "qlonglong", qlonglong(9));
    bench.build();
    EXPECT_EQ(toolRow("CloneDiskToDisk").call(bench.tools()), kQueued);
    EXPECT_EQ(bench.host().object("clone")->value("cloneType").toInt(), 2);
}

struct GateRow
{
    const char* object;
    const char* property;
    QByteArray type;
    QVariant value;
    bool rejected;
};

TEST(GateEffects, PropertyOfAnotherType_IsConvertedToBool)
{
    const GateRow rows[] = {{"__zormain", "busy", "int", 1, true},
                            {"__zormain", "busy", "int", 0, false},
                            {"__zormain", "busy", "QString", "true", true},
                            {"__zormain", "busy", "QVariantMap", QVariantMap{{"a", 1}}, false},
                            {"window", "popuped", "int", 1, true},
                            {"window", "popuped", "QVariantMap", QVariantMap{{"a", 1}}, false}};
    for (const GateRow& row : rows) {
        ToolBench bench;
        bench.host().spec(row.object).remove(row.property).property(row.property, row.type, row.value);
        bench.build();
        QString answer;
        bench.onConnectionThread([&] { answer = toolRow("PreProcessing").call(bench.tools()); });
        EXPECT_EQ(answer.startsWith("false"), row.rejected) << row.property << ' ' << row.type.constData();
    }
}

} // namespace
