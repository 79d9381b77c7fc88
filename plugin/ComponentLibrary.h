#pragma once

#include <QtCore/QLibrary>
#include <QtCore/QString>

class CComponentBase;

/// The exported function of a component's library, which makes a component. The caller owns the result; null
/// if the library cannot make one.
using ComponentFactory = CComponentBase* (*)();

/// Path of the library of a component: `<application folder>/<name>.dll`, with a parent
/// `<application folder>/<parent>/<parent><name>.dll`. Where that file does not exist and the system is not
/// Windows, the ending is `.so`. With native separators.
QString componentLibraryPath(const QString& name, const QString& parent);

/// The factory of a library that is loaded; null if the library does not export one.
ComponentFactory componentFactory(QLibrary& library);
