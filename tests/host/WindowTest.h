#pragma once

#include "host/objects/Scene.h"
#include "host/objects/WindowObjects.h"
#include "plugin/AIBridge.h"

#include <QtCore/QStringList>
#include <QtQuick/QQuickItem>

#include <gtest/gtest.h>

/// The real window on a simulated machine, shown without a display, with the real component beside it
/// (without its service). Items are found by their names, in the order in which they are drawn; only those
/// count that can be seen.
class WindowTest : public testing::Test
{
protected:
    explicit WindowTest(host::ThemeMode theme = host::ThemeMode::Light);
    WindowTest(host::Machine machine, host::ThemeMode theme);

    /// Shows the window and waits until it has the keyboard.
    void SetUp() override;
    /// A page with a mistake in it says so on the way; that fails the test.
    void TearDown() override;

    std::vector<QQuickItem*> items(const QString& name);
    /// The first of that name, null if there is none.
    QQuickItem* item(const QString& name);
    /// Waits until there is one of that name.
    QQuickItem* awaited(const QString& name);
    /// The property `text` of all items of that name.
    QStringList texts(const QString& name);
    QString text(const QString& name) { return texts(name).value(0); }
    /// Waits until the first item of that name has the text.
    bool waitForText(const QString& name, const QString& text);

    void click(QQuickItem* target);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The name of the item that the keyboard acts on, or of the nearest one around it that has a name.
    QString focused();
    /// Presses Tab until the item of that name has the keyboard; false if it never gets it.
    bool tabTo(const QString& name);

    QObject* mainPage();
    static bool isPopuped();

    static void useSoftware();

    QStringList warnings_;
    bool software_ = (useSoftware(), true);
    host::Scene scene;
    AIBridge bridge;
};

/// The place of an item in the window, in whole pixels.
QRect placeOf(const QQuickItem* item);
