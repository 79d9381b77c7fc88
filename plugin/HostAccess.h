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

/// How the host's objects are found and read. The host is known by names only; nothing that is found is owned
/// or kept: each use looks it up again. Any thread may call these, and nothing here reports what is missing:
/// a null object gives an invalid member, an invalid member reads as an invalid QVariant, which is false.

/// The object published in the engine's root context under @p name, null if there is none.
QObject* contextObject(const QQmlEngine* engine, const QString& name);

/// The first descendant named @p objectName of the engine's first root object, null if there is none.
QObject* findRootChild(const QQmlApplicationEngine* engine, const QString& objectName);

/// The application's main window, null if there is none.
QWindow* firstTopLevelWindow();

/// The method with that full signature, else the first one, by index, of that bare name.
QMetaMethod findHostMethod(const QObject* object, const QByteArray& name);

/// The property of that name.
QMetaProperty findHostProperty(const QObject* object, const QByteArray& name);

/// Calls a method of the main window that takes and gives one QVariant, under the window rule of HostCall.h.
QVariant callWindowMethod(const QByteArray& name, const QVariant& argument);

/// Reads a property of the main window on the calling thread.
QVariant readWindowProperty(const QByteArray& name);
