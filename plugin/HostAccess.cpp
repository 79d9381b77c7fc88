#include "plugin/HostAccess.h"

#include "plugin/HostCall.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>

QObject* contextObject(const QQmlEngine* engine, const QString& name)
{
    return engine == nullptr ? nullptr : engine->rootContext()->contextProperty(name).value<QObject*>();
}

QObject* findRootChild(const QQmlApplicationEngine* engine, const QString& objectName)
{
    if (engine == nullptr)
        return nullptr;
    // rootObjects() does not modify the engine but is not const.
    const QList<QObject*> roots = const_cast<QQmlApplicationEngine*>(engine)->rootObjects();
    if (roots.isEmpty() || roots.first() == nullptr)
        return nullptr;
    return roots.first()->findChild<QObject*>(objectName, Qt::FindChildrenRecursively);
}

QWindow* firstTopLevelWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return windows.isEmpty() ? nullptr : windows.first();
}

QMetaMethod findHostMethod(const QObject* object, const QByteArray& name)
{
    const QMetaObject* meta = object == nullptr ? nullptr : object->metaObject();
    if (meta == nullptr)
        return QMetaMethod();
    const int exact = meta->indexOfMethod(QMetaObject::normalizedSignature(name.constData()).constData());
    if (exact != -1)
        return meta->method(exact);
    for (int i = 0; i < meta->methodCount(); ++i) {
        if (meta->method(i).name() == name)
            return meta->method(i);
    }
    return QMetaMethod();
}

QMetaProperty findHostProperty(const QObject* object, const QByteArray& name)
{
    const QMetaObject* meta = object == nullptr ? nullptr : object->metaObject();
    if (meta == nullptr)
        return QMetaProperty();
    const int exact = meta->indexOfProperty(name.constData());
    if (exact != -1)
        return meta->property(exact);
    for (int i = 0; i < meta->propertyCount(); ++i) {
        if (name == meta->property(i).name())
            return meta->property(i);
    }
    return QMetaProperty();
}

QVariant callWindowMethod(const QByteArray& name, const QVariant& argument)
{
    return callHost<QVariant>(firstTopLevelWindow(), name, ConnectionRule::Window, argument)
        .value_or(QVariant());
}

QVariant readWindowProperty(const QByteArray& name)
{
    const QWindow* window = firstTopLevelWindow();
    return window == nullptr ? QVariant() : findHostProperty(window, name).read(window);
}
