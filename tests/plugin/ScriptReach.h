#pragma once

#include <QtCore/QObject>

class QQmlEngine;

/// Returns @p object, which has no parent, to a script of @p engine, drops the script's references and
/// collects the garbage. True if the object still exists: an object whose ownership is not set belongs to the
/// script and is deleted.
bool survivesScript(QQmlEngine& engine, QObject* object);
