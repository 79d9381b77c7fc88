#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QString>
#include <QtCore/QVariant>

class QObject;
class QQmlApplicationEngine;
class QQmlEngine;
class QWindow;

/// Functions that find and read the host's objects by name. Each call looks the object up again; results are
/// not owned and must not be stored. Any thread. Missing objects are not reported: a null object gives an
/// invalid member, and an invalid member reads as an invalid QVariant, which converts to false.

/// The object published as @p name in the engine's root context; null if missing.
QObject* contextObject(const QQmlEngine* engine, const QString& name);

/// The first descendant named @p objectName of the engine's first root object; null if missing.
QObject* findRootChild(const QQmlApplicationEngine* engine, const QString& objectName);

/// The application's main window; null if missing.
QWindow* firstTopLevelWindow();

/// The method with @p name as its full signature, otherwise the first method, by index, with @p name as its
/// bare name.
QMetaMethod findHostMethod(const QObject* object, const QByteArray& name);

/// The property with that name; invalid if missing.
QMetaProperty findHostProperty(const QObject* object, const QByteArray& name);

/// Calls a method of the main window that takes and returns one QVariant, with ConnectionRule::Window.
QVariant callWindowMethod(const QByteArray& name, const QVariant& argument);

/// Reads a property of the main window on the calling thread.
QVariant readWindowProperty(const QByteArray& name);
