#pragma once

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>

class CComponentBase;
class QQmlApplicationEngine;

/// Finds, loads and lists the components of a host.
///
/// The file `components.ini` of a folder names its components: groups COMPONENT1 to COMPONENT99, key `name`.
/// ComponentLibrary.h describes the paths of their libraries. A loaded library is never unloaded.
///
/// A component that cannot be loaded is not reported; hostcheck::checkComponent explains why.
///
/// All members belong to the application thread.
class CComponentMgr : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList components READ components NOTIFY sigComponentsChanged)

public:
    /// @p engine is not owned. With null, components are loaded but not published to QML.
    explicit CComponentMgr(QQmlApplicationEngine* engine = nullptr, QObject* parent = nullptr);

    /// Releases every component and deletes it with deleteLater. Has no timeout: Release of a component can
    /// wait indefinitely.
    ~CComponentMgr() override;

    /// Loads each name as a top-level component, then emits sigComponentsChanged.
    Q_INVOKABLE void loadComponents(QStringList list);
    /// Loads the tree of `components.ini` files, starting at @p componentName; an empty name is the
    /// application folder. A missing file, or a folder that is already being walked, ends that branch
    /// silently.
    Q_INVOKABLE void loadComponents(QString componentName = QString());
    /// The component with that name, compared case-insensitively; null if it is not loaded. Owned by the
    /// manager.
    Q_INVOKABLE QObject* component(QString name);
    /// Loads one component; null on any failure. Owned by the manager.
    Q_INVOKABLE QObject* loadComponent(QString name, QString parentCom = QString());

    /// One map per component: id, name, resProperty, text, source, component, canLayout.
    QVariantList components() const;

Q_SIGNALS:
    void sigNewComponent(QString name = QString(), QString parent = QString());
    void sigComponentsChanged();

private:
    void registerComponent(CComponentBase* component);
    void unregisterComponent(QObject* component);
    static void connectLanguage(QObject* language, QObject* component);

    QVariantList componentList;
    QQmlApplicationEngine* engine;
    QSet<QString> activeFolders_;
};
