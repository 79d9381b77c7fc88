#pragma once

#include <QtCore/QString>

#include <vector>

class QQmlApplicationEngine;

/// Reports which of the host's objects and members the library can use. The library itself does not report
/// missing ones. A host's own tests can call this after they have created the main window:
///
///     const std::vector<hostcheck::Finding> findings = hostcheck::checkHost(engine);
///     std::puts(qPrintable(hostcheck::tableOf(findings)));
///     return hostcheck::isComplete(findings) ? 0 : 1;
///
/// The check does not call, read or write the host's members and keeps no pointer to its objects.
namespace hostcheck {

enum class Kind { Object, Method, Property, Signal };

enum class State {
    Found,
    Missing,       ///< the object has no member of that name
    OtherSignature ///< the object has such a member, but the library does not call it or cannot convert its
                   ///< type
};

/// The result for one object or member. A plain value.
struct Finding
{
    Kind kind;
    State state;
    QString object;   ///< "deviceMgr"; "window" is the application's first top-level window
    QString expected; ///< the required member, "bool isRawPart(QVariant)"; empty for the object itself
    QString found;    ///< the member found instead; empty if found or missing
    QString effect;   ///< the effect on the library's answers; empty if found, and for an object
};

/// Checks the host that consists of this engine and this application: each object, in the order of
/// docs/host-contract.md, followed by its members. Members of a missing object are missing. Application
/// thread only; requires a QGuiApplication and the main window. Does not change the engine or take ownership
/// of it.
std::vector<Finding> checkHost(const QQmlApplicationEngine& engine);

/// True if every object and member is found.
bool isComplete(const std::vector<Finding>& findings);

/// The findings as a table in plain text: one line per finding, a second one with its effect, if any, and a
/// last line with the totals. It has no line feed at its end.
QString tableOf(const std::vector<Finding>& findings);

} // namespace hostcheck
