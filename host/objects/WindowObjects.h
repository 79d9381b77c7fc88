#pragma once

#include "host/objects/HostCore.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace host {

/// The application's main window, the root of the QML tree and its only window.
///
/// It and the two items below are C++ classes, because the library reads their properties on its own threads,
/// where QML properties must not be accessed. For the same reason the QML file declares no member on them and
/// keeps both items directly under the window: the library finds them by name on those threads without
/// entering the part of the tree that the pages change.
class HostWindow : public QQuickWindow
{
    Q_OBJECT
    Q_PROPERTY(bool popuped READ isPopuped)

public:
    using QQuickWindow::QQuickWindow;
    void setCore(HostCore* core) { core_ = core; }

    /// True while a dialog covers the window. Any thread.
    bool isPopuped() const;
    /// Closes the open guide; the argument is ignored. True if a guide was open.
    Q_INVOKABLE QVariant closeGuide(QVariant unused);
    /// Shows the address without fetching it. Returns true.
    Q_INVOKABLE QVariant openUrl(QVariant address);

Q_SIGNALS:
    /// The user closed the window, and confirmed this if a task destroys data.
    void closed();

protected:
    bool event(QEvent* event) override;

private:
    HostCore* core_ = nullptr;
};

/// The item `__zormain`: the other pages.
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

/// The item `__qml_executer`: writes the telemetry events to the log only.
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

/// Registers the three classes with QML, as module `Sandbox` 1.0.
void registerWindowTypes();

} // namespace host
