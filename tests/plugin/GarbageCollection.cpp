#include "tests/plugin/GarbageCollection.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtQml/QJSValue>
#include <QtQml/QQmlEngine>

namespace {

class ObjectProvider : public QObject
{
    Q_OBJECT

public:
    ObjectProvider(QObject* object, QObject* parent) : QObject(parent), object_(object) {}
    Q_INVOKABLE QObject* object() const { return object_; }

private:
    QObject* object_;
};

} // namespace

bool survivesGarbageCollection(QQmlEngine& engine, QObject* object)
{
    const QPointer<QObject> guard(object);
    engine.globalObject().setProperty(QStringLiteral("provider"),
                                      engine.newQObject(new ObjectProvider(object, &engine)));
    engine.evaluate(
        QStringLiteral("(function() { for (var i = 0; i < 3; ++i) provider.object().objectName; })()"));
    engine.globalObject().deleteProperty(QStringLiteral("provider"));
    engine.collectGarbage();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return !guard.isNull();
}

#include "GarbageCollection.moc"
