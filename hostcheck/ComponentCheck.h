#pragma once

#include <QtCore/QString>

/// Explains why a component does not load. CComponentMgr reports a failure only by a null component; a host
/// calls this afterwards:
///
///     if (components.component("AIBridge") == nullptr)
///         std::fputs(qPrintable(hostcheck::textOf(hostcheck::checkComponent("AIBridge")) + '\n'), stderr);
namespace hostcheck {

/// The step of the loading that fails.
enum class LoadStep {
    Complete, ///< every step succeeds
    FindFile, ///< the library's file is missing
    LoadFile, ///< the system's loader rejects the file: another library that it needs is missing, or the file
              ///< is not a library of this system
    FindFactory, ///< the library does not export `getInstance`
    CallFactory  ///< `getInstance` returns null
};

/// A plain value.
struct LoadReport
{
    LoadStep step;
    QString name;    ///< the component's name, with its parent's name in front
    QString path;    ///< where the manager looks for the library
    QString message; ///< the loader's own message; empty if it has loaded the library
};

/// Takes the steps of CComponentMgr::loadComponent up to the call of `getInstance`, and reports the first one
/// that fails. The component of the last step is deleted at once, without setEngine and init, and nothing is
/// registered. A library that could be loaded stays loaded, as the manager leaves it. Application thread
/// only.
LoadReport checkComponent(const QString& name, const QString& parent = QString());

/// The report as one sentence, followed by the loader's message where there is one; without a line feed.
QString textOf(const LoadReport& report);

} // namespace hostcheck
