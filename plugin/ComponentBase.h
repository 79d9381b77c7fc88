#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

#include <atomic>

class QQmlApplicationEngine;

/// Base of every component that the host loads by name (see CComponentMgr). The order of the virtual
/// operations is the binary contract between a host and its components: none may be moved, removed or put in
/// between.
///
/// All members are called on the application thread; engine() may be called from any thread.
class CComponentBase : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name NOTIFY sigNameChanged)
    Q_PROPERTY(QString displayName READ displayName NOTIFY sigDisplayNameChanged)
    Q_PROPERTY(QString icon READ icon NOTIFY sigIconChanged)
    Q_PROPERTY(bool canLayout READ canLayout NOTIFY sigCanLayoutChanged)

public:
    explicit CComponentBase(QObject* parent = nullptr);

    /// The name shown to the user; the component's own name unless overridden.
    virtual QString displayName() const;
    /// Address of the component's icon.
    virtual QString icon() const;
    /// The component's name: by it the host finds the library, the icon, the page and the resource file.
    virtual QString name() const = 0;
    /// Held for the binary contract; empty, and nothing calls it.
    virtual QString reservedText() const;
    /// Address of the component's page.
    virtual QString source() const;
    /// Called once by the loader, after setEngine. Registers the resource file `<name>.rcc`.
    virtual void init();
    /// Whether the component has a page in the host's layout.
    virtual bool canLayout() const;
    /// Held for the binary contract; empty, and nothing calls it.
    virtual QVariantList reservedList() const;
    /// Registers `<application folder>/<resourceName>.rcc`; a missing file is ignored.
    virtual void loadResource(QString resourceName);
    /// Stores @p engine (not owned, may be null) and publishes this object in its root context under the
    /// lower-cased name. The object stays C++-owned.
    virtual void setEngine(QQmlApplicationEngine* engine);
    /// The engine given to setEngine, null before that.
    virtual QQmlApplicationEngine* engine() const;
    /// Properties that the host's layout shows for this component.
    virtual QVariantMap resProperty() const;

Q_SIGNALS:
    void sigNameChanged();
    void sigDisplayNameChanged();
    void sigCurrentLanguageChanged();
    void sigIconChanged();
    void sigCanLayoutChanged();

protected:
    /// Called by the manager before the object is deleted: the component stops all that it has running.
    virtual void Release();
    /// Called when the language has changed, after sigDisplayNameChanged.
    virtual void retranslate();

protected Q_SLOTS:
    /// The loader connects the host's language signal to this.
    void onTranslate();

private:
    friend class CComponentMgr;

    std::atomic<QQmlApplicationEngine*> engine_{nullptr};
};
