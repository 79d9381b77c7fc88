#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

#include <atomic>

class QQmlApplicationEngine;

/// Base of every component that the host loads by name (see CComponentMgr). The order of the virtual
/// functions is the binary contract between a host and its components: do not move, remove or insert any.
///
/// All members belong to the application thread, except engine(), which can be called on any thread.
class CComponentBase : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name NOTIFY sigNameChanged)
    Q_PROPERTY(QString displayName READ displayName NOTIFY sigDisplayNameChanged)
    Q_PROPERTY(QString icon READ icon NOTIFY sigIconChanged)
    Q_PROPERTY(bool canLayout READ canLayout NOTIFY sigCanLayoutChanged)

public:
    explicit CComponentBase(QObject* parent = nullptr);

    /// The name that the user sees; the component's name by default.
    virtual QString displayName() const;
    /// Address of the component's icon.
    virtual QString icon() const;
    /// The component's name. The host derives the paths of the library, icon, page and resource file from it.
    virtual QString name() const = 0;
    /// Reserved for the binary contract: empty and never called.
    virtual QString reservedText() const;
    /// Address of the component's page.
    virtual QString source() const;
    /// Called once by the loader, after setEngine. Registers the resource file `<name>.rcc`.
    virtual void init();
    /// True if the component has a page in the host's layout.
    virtual bool canLayout() const;
    /// Reserved for the binary contract: empty and never called.
    virtual QVariantList reservedList() const;
    /// Registers `<application folder>/<resourceName>.rcc`; a missing file is ignored.
    virtual void loadResource(QString resourceName);
    /// Stores @p engine (not owned, can be null) and publishes this object in its root context under the name
    /// in lower case. The object stays C++-owned.
    virtual void setEngine(QQmlApplicationEngine* engine);
    /// The engine passed to setEngine; null before that.
    virtual QQmlApplicationEngine* engine() const;
    /// Properties of this component that the host's layout displays.
    virtual QVariantMap resProperty() const;

Q_SIGNALS:
    void sigNameChanged();
    void sigDisplayNameChanged();
    void sigCurrentLanguageChanged();
    void sigIconChanged();
    void sigCanLayoutChanged();

protected:
    /// Called by the manager before it deletes the object. The component must stop all its activity.
    virtual void Release();
    /// Called after the language has changed and after sigDisplayNameChanged.
    virtual void retranslate();

protected Q_SLOTS:
    /// The loader connects the host's language signal to this slot.
    void onTranslate();

private:
    friend class CComponentMgr;

    std::atomic<QQmlApplicationEngine*> engine_{nullptr};
};
