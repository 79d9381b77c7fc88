#pragma once

#include <QtCore/QLibrary>
#include <QtCore/QString>

class CComponentBase;

/// The exported function of a component's library. It creates a component, which the caller owns; null if the
/// library cannot create one.
using ComponentFactory = CComponentBase* (*)();

/// Path of a component's library: `<application folder>/<name>.dll`, with a parent
/// `<application folder>/<parent>/<parent><name>.dll`. The extension is `.so` if that file does not exist and
/// the system is not Windows. Uses native separators.
QString componentLibraryPath(const QString& name, const QString& parent);

/// The factory of a loaded library; null if the library does not export one.
ComponentFactory componentFactory(QLibrary& library);
