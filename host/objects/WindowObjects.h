#pragma once

#include "host/objects/HostCore.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace host {

/// The application's main window, the root of the QML tree and its only window.
///
/// It and the two items below are C++ classes because the library reads their properties from threads of its
/// own, and a property declared in QML must not be touched there. For the same reason the QML file declares
/// no member on any of them, and keeps both items directly under the window: the library looks them up by
/// name from those threads, and so never walks into the part of the tree that the pages change.
class HostWindow : public QQuickWindow
{
    Q_OBJECT
    Q_PROPERTY(bool popuped READ isPopuped)

public:
    using QQuickWindow::QQuickWindow;
    void setCore(HostCore* core) { core_ = core; }

    /// True while a dialog covers the window. Any thread.
    bool isPopuped() const;
    /// Closes the guide that is open; the argument carries nothing. True if there was one.
    Q_INVOKABLE QVariant closeGuide(QVariant unused);
    /// Shows the address; nothing is fetched. True.
    Q_INVOKABLE QVariant openUrl(QVariant address);

Q_SIGNALS:
    /// The user closed the window.
    void closed();

protected:
    bool event(QEvent* event) override;

private:
    HostCore* core_ = nullptr;
};

/// The item `__zormain`: the application's other pages.
class MainPage : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(bool busy READ isBusy)

public:
    using QQuickItem::QQuickItem;
    void setCore(HostCore* core) { core_ = core; }

    /// True while a task runs. Any thread.
    bool isBusy() const;
    Q_INVOKABLE void doprfunction(QVariant task);
    Q_INVOKABLE QVariant createBootMediaEnabled(QVariant task);
    Q_INVOKABLE void dobmfunction(QVariant task);
    Q_INVOKABLE void opendiskhealth(QVariant task);
    Q_INVOKABLE QVariant passwordResetEnabled();
    Q_INVOKABLE QVariant bootrepairEnabled();
    Q_INVOKABLE QVariant doToolBox(QVariant index, QVariant record);

private:
    bool isToolEnabled(int index);

    HostCore* core_ = nullptr;
};

/// The item `__qml_executer`: takes the telemetry events, which go into the log and nowhere else.
class QmlExecuter : public QQuickItem
{
    Q_OBJECT

public:
    using QQuickItem::QQuickItem;
    void setCore(HostCore* core) { core_ = core; }

    Q_INVOKABLE QVariant sendUserInfo(QVariant category, QVariant event, QVariant info, QVariant extra);

private:
    HostCore* core_ = nullptr;
};

/// Makes the three classes known to QML, as module `Sandbox` 1.0.
void registerWindowTypes();

} // namespace host
