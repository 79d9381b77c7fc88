#pragma once

#include <QtCore/QObject>

class QQmlEngine;

/// Passes @p object, which must not have a parent, to a script of @p engine and collects the garbage. Returns
/// whether the object still exists: a script owns and deletes an object whose ownership is not set.
bool survivesGarbageCollection(QQmlEngine& engine, QObject* object);
