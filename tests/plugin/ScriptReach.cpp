#include "tests/plugin/ScriptReach.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtQml/QJSValue>
#include <QtQml/QQmlEngine>

namespace {

class Giver : public QObject
{
    Q_OBJECT

public:
    Giver(QObject* object, QObject* parent) : QObject(parent), object_(object) {}
    Q_INVOKABLE QObject* give() const { return object_; }

private:
    QObject* object_;
};

} // namespace

bool survivesScript(QQmlEngine& engine, QObject* object)
{
    const QPointer<QObject> guard(object);
    engine.globalObject().setProperty(QStringLiteral("giver"), engine.newQObject(new Giver(object, &engine)));
    engine.evaluate(
        QStringLiteral("(function() { for (var i = 0; i < 3; ++i) giver.give().objectName; })()"));
    engine.globalObject().deleteProperty(QStringLiteral("giver"));
    engine.collectGarbage();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return !guard.isNull();
}

#include "ScriptReach.moc"
