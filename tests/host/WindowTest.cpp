#include "tests/host/WindowTest.h"

#include "plugin/HostAccess.h"
#include "tests/host/MachineText.h"
#include "tests/support/Threads.h"

#include <QtQml/QQmlError>
#include <QtQuick/QSGRendererInterface>
#include <QtTest/QTest>

namespace {

constexpr int kTabLimit = 60;

void collect(QQuickItem* parent, const QString& name, std::vector<QQuickItem*>& found)
{
    const QList<QQuickItem*> children = parent->childItems();
    for (QQuickItem* child : children) {
        if (!child->isVisible())
            continue;
        if (child->objectName() == name)
            found.push_back(child);
        collect(child, name, found);
    }
}

} // namespace

WindowTest::WindowTest(host::ThemeMode theme) : WindowTest(testMachine(), theme) {}

WindowTest::WindowTest(host::Machine machine, host::ThemeMode theme)
    : WindowTest(std::make_unique<host::Simulation>(std::move(machine)), theme)
{
}

WindowTest::WindowTest(std::unique_ptr<host::Simulation> backend, host::ThemeMode theme)
    : simulation(*backend), scene(std::move(backend), -1, theme)
{
}

void WindowTest::useSoftware()
{
    static const bool once = (QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software), true);
    Q_UNUSED(once)
    host::setUsualTextSize();
}

void WindowTest::SetUp()
{
    ASSERT_NE(scene.window(), nullptr);
    QObject::connect(&scene.engine(), &QQmlEngine::warnings, [this](const QList<QQmlError>& errors) {
        for (const QQmlError& error : errors)
            warnings_.append(error.toString());
    });
    host::Pace pace;
    pace.instant = true;
    simulation.setPace(pace);
    bridge.setEngine(&scene.engine());
    scene.link().attach(&bridge);
    scene.window()->show();
    scene.window()->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(scene.window(), 20000));
    ASSERT_TRUE(QTest::qWaitForWindowActive(scene.window(), 20000));
}

void WindowTest::TearDown()
{
    EXPECT_EQ(warnings_.join("\n").toStdString(), "");
}

std::vector<QQuickItem*> WindowTest::items(const QString& name)
{
    std::vector<QQuickItem*> found;
    collect(scene.window()->contentItem(), name, found);
    return found;
}

QQuickItem* WindowTest::item(const QString& name)
{
    const std::vector<QQuickItem*> found = items(name);
    return found.empty() ? nullptr : found.front();
}

QQuickItem* WindowTest::awaited(const QString& name)
{
    pumpUntil([&] { return item(name) != nullptr; });
    return item(name);
}

QStringList WindowTest::texts(const QString& name)
{
    QStringList found;
    for (const QQuickItem* each : items(name))
        found.append(each->property("text").toString());
    return found;
}

bool WindowTest::waitForText(const QString& name, const QString& text)
{
    return pumpUntil([&] { return texts(name).value(0) == text; });
}

void WindowTest::click(QQuickItem* target)
{
    ASSERT_NE(target, nullptr);
    // Lays out new items.
    scene.window()->grabWindow();
    QTest::mouseClick(scene.window(), Qt::LeftButton, Qt::NoModifier, placeOf(target).center());
}

void WindowTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(scene.window(), key, modifiers);
}

QString WindowTest::focused()
{
    const QQuickItem* holder = scene.window()->activeFocusItem();
    // The entries of a bar have the focus of the list of disks.
    while (holder != nullptr && (holder->objectName().isEmpty() || holder->objectName() == "diskBar"))
        holder = holder->parentItem();
    return holder == nullptr ? QString() : holder->objectName();
}

bool WindowTest::tabTo(const QString& name)
{
    for (int presses = 0; presses < kTabLimit && focused() != name; ++presses)
        press(Qt::Key_Tab);
    return focused() == name;
}

QObject* WindowTest::mainPage()
{
    return findRootChild(&scene.engine(), "__zormain");
}

bool WindowTest::isPopuped()
{
    return readWindowProperty("popuped").toBool();
}

QRect placeOf(const QQuickItem* item)
{
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).toRect();
}
