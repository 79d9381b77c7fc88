#pragma once

#include "bridge/AIBridge.h"
#include "host/objects/Scene.h"
#include "host/objects/WindowObjects.h"
#include "host/simulation/Simulation.h"

#include <QtCore/QStringList>
#include <QtQuick/QQuickItem>

#include <gtest/gtest.h>

/// The real window on a simulated machine, on the offscreen platform, with the real component without its
/// service. Items are found by name in drawing order; only visible items count.
class WindowTest : public testing::Test
{
protected:
    explicit WindowTest(host::ThemeMode theme = host::ThemeMode::Light);
    WindowTest(host::Machine machine, host::ThemeMode theme);
    WindowTest(std::unique_ptr<host::Simulation> backend, host::ThemeMode theme);

    /// Shows the window and waits until it has the keyboard focus.
    void SetUp() override;
    /// An error message of a QML page fails the test.
    void TearDown() override;

    std::vector<QQuickItem*> items(const QString& name);
    /// The first item of that name; null if not found.
    QQuickItem* item(const QString& name);
    /// Waits until an item of that name exists.
    QQuickItem* awaited(const QString& name);
    /// The property `text` of all items of that name.
    QStringList texts(const QString& name);
    QString text(const QString& name) { return texts(name).value(0); }
    /// Waits until the first item of that name has the text.
    bool waitForText(const QString& name, const QString& text);

    void click(QQuickItem* target);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The name of the focused item, or of its nearest named ancestor.
    QString focused();
    /// Presses Tab until the item of that name has the focus; false if it never gets it.
    bool tabTo(const QString& name);

    QObject* mainPage();
    static bool isPopuped();

    static void useSoftware();

    QStringList warnings_;
    bool software_ = (useSoftware(), true);
    host::Simulation& simulation; // owned by the scene
    host::Scene scene;
    AIBridge bridge;
};

/// The position of an item in the window, in whole pixels.
QRect placeOf(const QQuickItem* item);
