#pragma once

#include <QtCore/QString>

#include <vector>

class QQmlApplicationEngine;

/// Reports which of the host's objects and members the library can use. The library itself does not report
/// what is missing; a host's own tests can call this, once their window is up:
///
///     const std::vector<hostcheck::Finding> findings = hostcheck::checkHost(engine);
///     std::puts(qPrintable(hostcheck::tableOf(findings)));
///     return hostcheck::isComplete(findings) ? 0 : 1;
///
/// Nothing of the host is called, read or written, and nothing of it is kept.
namespace hostcheck {

enum class Kind { Object, Method, Property, Signal };

enum class State {
    Found,
    Missing,       ///< the object has no member of that name
    OtherSignature ///< it has one, which the library does not call, or cannot convert
};

/// One thing that the library looks for. A plain value.
struct Finding
{
    Kind kind;
    State state;
    QString object;   ///< "deviceMgr"; "window" is the application's first top-level window
    QString expected; ///< the member as it must be, "bool isRawPart(QVariant)"; empty for the object itself
    QString found;    ///< the member that is there instead; empty if found or missing
    QString effect;   ///< the effect on the library's answers; empty if found, and for an object
};

/// Looks for everything in the host that this engine and this application make up: each object, in the order
/// in which docs/host-contract.md has them, and behind it its members. Those of an object that is missing are
/// missing too. Application thread only, with a QGuiApplication, and after the main window has been made. The
/// engine stays the caller's and is only looked at.
std::vector<Finding> checkHost(const QQmlApplicationEngine& engine);

/// True if all are found.
bool isComplete(const std::vector<Finding>& findings);

/// The findings as a table in plain text: a line each, followed by a line with the effect where there is one,
/// and a last line with the sums; no line feed at its end.
QString tableOf(const std::vector<Finding>& findings);

} // namespace hostcheck
