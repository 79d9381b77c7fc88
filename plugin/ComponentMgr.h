#pragma once

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>

class CComponentBase;
class QQmlApplicationEngine;

/// Finds, loads and lists the components of a host.
///
/// A folder's components are named in its `components.ini`, groups COMPONENT1 to COMPONENT99, key `name`.
/// ComponentLibrary.h describes where their libraries are. A loaded library is never unloaded.
///
/// A component that cannot be loaded is not reported; hostcheck::checkComponent explains why.
///
/// All members run on the application thread.
class CComponentMgr : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList components READ components NOTIFY sigComponentsChanged)

public:
    /// @p engine is not owned; null loads components without publishing them to QML.
    explicit CComponentMgr(QQmlApplicationEngine* engine = nullptr, QObject* parent = nullptr);

    /// Releases every component and deletes it with deleteLater. Release of a component may wait without
    /// limit.
    ~CComponentMgr() override;

    /// Loads each name as a top-level component, then emits sigComponentsChanged.
    Q_INVOKABLE void loadComponents(QStringList list);
    /// Walks the tree of `components.ini` files from @p componentName, empty for the application folder. A
    /// missing file ends that branch without a message; so does a folder that is already being walked.
    Q_INVOKABLE void loadComponents(QString componentName = QString());
    /// The component of that name in any letter case, null if none. Owned by the manager.
    Q_INVOKABLE QObject* component(QString name);
    /// Loads one component, null on any failure.
    Q_INVOKABLE QObject* loadComponent(QString name, QString parentCom = QString());

    /// One map a component: id, name, resProperty, text, source, component, canLayout.
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
    QSet<QString> foldersInWalk_;
};
