// The library finds the window's objects on its own threads while pages open and close.
#include "tests/host/WindowTest.h"

#include "plugin/HostCall.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

#include <atomic>
#include <thread>
#include <vector>

namespace {

// The colours follow the palette, which each round changes.
class WindowThreads : public WindowTest
{
protected:
    WindowThreads() : WindowTest(host::ThemeMode::System) {}
};

void openAndClosePages(host::Scene& scene, QObject* page, AIBridge& bridge)
{
    orderHost(page, "opendiskhealth", ConnectionRule::Call, QVariant(QVariantMap{{"diskIndex", 1}}));
    scene.window()->grabWindow();
    callWindowMethod("closeGuide", QVariant());
    Q_EMIT bridge.sigCloneResult(QVariantMap{{"goToPageIndex", 2}, {"errMsg", "no"}});
    Q_EMIT bridge.sigRecScanResult(QVariantMap{{"msg", "Do it."}, {"buttons", QVariantList{"Accept"}}});
    Q_EMIT bridge.sigAbout2CallFun("Tool");
    Q_EMIT bridge.sigAfterCallFun(answers::notValid, false);
    scene.core().orders().order(31, {{"driveLetter", "D"}, {"newLabel", "Some"}});
    scene.link().answer(0);
    const bool dark = scene.theme().isDark();
    QGuiApplication::setPalette(QPalette(QColor(dark ? "#f0f0f0" : "#202020")));
    EXPECT_NE(scene.theme().isDark(), dark);
    scene.window()->grabWindow();
}

TEST_F(WindowThreads, ChildrenOfTheWindow_StayTheSameWhilePagesOpenAndClose)
{
    const QObjectList before = scene.window()->children();
    for (int round = 0; round < 3; ++round) {
        openAndClosePages(scene, mainPage(), bridge);
        EXPECT_EQ(scene.window()->children(), before);
    }
    ASSERT_TRUE(pumpUntil([&] { return !scene.core().status().isBusy(); }));
    EXPECT_EQ(scene.window()->children(), before);
    EXPECT_EQ(QGuiApplication::topLevelWindows().size(), 1);
}

TEST_F(WindowThreads, LookupsOnOtherThreads_SucceedWhilePagesOpenAndClose)
{
    std::atomic<bool> ended{false};
    std::atomic<int> lost{0};
    // Limits the reads per round: each posts an event, and the event queue would otherwise never be empty.
    std::atomic<int> allowed{0};
    std::vector<std::thread> readers;
    for (int number = 0; number < 2; ++number) {
        readers.emplace_back([&] {
            while (!ended) {
                if (allowed <= 0 || allowed.fetch_sub(1) <= 0) {
                    std::this_thread::yield();
                    continue;
                }
                QObject* page = findRootChild(&scene.engine(), "__zormain");
                QObject* executer = firstTopLevelWindow()->findChild<QObject*>("__qml_executer");
                readWindowProperty("popuped");
                lost += page == nullptr || executer == nullptr || !page->property("busy").isValid() ? 1 : 0;
            }
        });
    }
    for (int round = 0; round < 10; ++round) {
        allowed = 200;
        openAndClosePages(scene, mainPage(), bridge);
        int turns = 0;
        pumpUntil([&] { return ++turns > 2; });
    }
    ended = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(lost, 0);
}

} // namespace
