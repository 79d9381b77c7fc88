#pragma once

#include <QtCore/QString>

/// Explains why a component does not load. CComponentMgr reports a failure only by a null component, so a
/// host calls this after a failure:
///
///     if (components.component("AIBridge") == nullptr)
///         std::fputs(qPrintable(hostcheck::textOf(hostcheck::checkComponent("AIBridge")) + '\n'), stderr);
namespace hostcheck {

/// The step of the loading that fails.
enum class LoadStep {
    Complete,    ///< every step succeeds
    FindFile,    ///< the library's file is missing
    LoadFile,    ///< the system's loader rejects the file: a library that it needs is missing, or the file is
                 ///< not a library for this system
    FindFactory, ///< the library does not export `getInstance`
    CallFactory  ///< `getInstance` returns null
};

/// A plain value.
struct LoadReport
{
    LoadStep step;
    QString name;    ///< the component's name, with its parent's name in front
    QString path;    ///< where the manager looks for the library
    QString message; ///< the loader's message; empty if it loaded the library
};

/// Repeats the steps of CComponentMgr::loadComponent up to the call of `getInstance` and reports the first
/// one that fails. Deletes the created component without calling setEngine or init, and registers nothing. A
/// library that can be loaded remains loaded. Application thread only.
LoadReport checkComponent(const QString& name, const QString& parent = QString());

/// The report as one sentence, followed by the loader's message, if any. It has no line feed at its end.
QString textOf(const LoadReport& report);

} // namespace hostcheck
