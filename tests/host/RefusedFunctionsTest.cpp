// Functions that a back end does not have, as the host's pages and guides show it.
#include "host/objects/Scene.h"
#include "host/simulation/Simulation.h"
#include "plugin/HostCall.h"
#include "tests/host/MachineText.h"

#include <gtest/gtest.h>

namespace {

const QString kReason = "This computer cannot do that.";
constexpr int kRebuildMbr = 4;
constexpr int kCloneOfDisk = 2;
constexpr int kToMbr = 1;
constexpr int kToGpt = 0;

// A back end with real disks that has only the orders of the partition page.
class LimitedBackend : public host::Simulation
{
public:
    using host::Simulation::Simulation;

    host::Rejection functionRejection(int function) const override
    {
        constexpr int kFirstGuide = 1000;
        return function < kFirstGuide ? host::kAccepted : host::Rejection(host::Text(kReason));
    }
    host::Rejection taskRejection(int function, const QVariantMap& params) const override
    {
        const host::Rejection rejection = functionRejection(function);
        return rejection ? rejection : host::Simulation::taskRejection(function, params);
    }
    bool isReal() const override { return true; }
};

class RefusedFunctions : public testing::Test
{
protected:
    QString log() { return scene.core().log()->stringList().join('\n'); }
    QVariantMap disk(int index)
    {
        return callHost<QVariantList>(contextObject(&scene.engine(), "deviceMgr"), "disks",
                                      ConnectionRule::Call, 0, false)
            .value()
            .at(index)
            .toMap();
    }

    host::Scene scene{std::make_unique<LimitedBackend>(testMachine()), -1};
};

TEST_F(RefusedFunctions, Guide_OpensWithTheReasonAndCannotStart)
{
    QObject* main = findRootChild(&scene.engine(), "__zormain");
    const auto opened =
        callHost<QVariant>(main, "doToolBox", ConnectionRule::Call, QVariant(kRebuildMbr), QVariant(disk(1)));
    EXPECT_TRUE(opened.value().toBool());
    ASSERT_NE(scene.core().guides().current(), nullptr);
    EXPECT_FALSE(scene.core().guides().canStart());
    EXPECT_EQ(scene.core().guides().current()->summary.english(), kReason);
    EXPECT_TRUE(log().contains("rejected Toolbox: rebuildMbr diskIndex=1: " + kReason))
        << log().toStdString();
}

TEST_F(RefusedFunctions, PreOsEnvironment_IsNotInstalled)
{
    QObject* main = findRootChild(&scene.engine(), "__zormain");
    orderHost(main, "dobmfunction", ConnectionRule::Call, QVariant(QVariantMap{{"isInstallPreOs", true}}));
    EXPECT_FALSE(scene.core().machine()->preOsEnabled);
    EXPECT_TRUE(log().contains("rejected InstallPreOs : " + kReason)) << log().toStdString();
    EXPECT_FALSE(log().contains("pre-OS environment installed"));
}

TEST_F(RefusedFunctions, ClonePage_NamesTheReason)
{
    QObject* page = contextObject(&scene.engine(), "clone");
    page->setProperty("cloneType", kCloneOfDisk);
    const auto info = callHost<QString>(page, "invalidInfo", ConnectionRule::Call, disk(0), QVariantMap(), 1,
                                        QVariantMap());
    EXPECT_EQ(info.value(), kReason);
}

TEST_F(RefusedFunctions, ConversionPage_NamesTheReason)
{
    QObject* page = contextObject(&scene.engine(), "diskconverter");
    const auto isValid = [&](int conversion) {
        return callHost<bool>(page, "isFunValid", ConnectionRule::Call, conversion, disk(1)).value();
    };
    EXPECT_FALSE(isValid(kToGpt));
    EXPECT_FALSE(isValid(kToMbr));
    EXPECT_EQ(callHost<QString>(page, "isMBR2GPTValid", ConnectionRule::Call, disk(1)).value(), kReason);
    EXPECT_EQ(callHost<QString>(page, "isGPT2MBRValid", ConnectionRule::Call, disk(1)).value(), kReason);
}

} // namespace
