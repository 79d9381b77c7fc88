#pragma once

#include <QtCore/QString>

#include <vector>

class QQmlApplicationEngine;

/// Says what the library would find of what it looks for in a host. The library itself stays silent about
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
    Missing,       ///< there is none of that name
    OtherSignature ///< there is one of that name, which the library would not or not rightly reach
};

/// One thing that the library looks for. A plain value.
struct Finding
{
    Kind kind;
    State state;
    QString object;   ///< "deviceMgr"; "window" is the application's first top-level window
    QString expected; ///< the member as it must be, "bool isRawPart(QVariant)"; empty for the object itself
    QString found;    ///< what is there in its place, where that is another; else empty
};

/// Looks for everything in the host that this engine and this application make up: each object, in the order
/// in which docs/host-contract.md has them, and behind it its members. Those of an object that is missing are
/// missing too. Application thread only, with a QGuiApplication, and after the main window has been made. The
/// engine stays the caller's and is only looked at.
std::vector<Finding> checkHost(const QQmlApplicationEngine& engine);

/// True if all are found.
bool isComplete(const std::vector<Finding>& findings);

/// The findings as a table in plain text, a line each, and a last line with the sums; no line feed at its
/// end.
QString tableOf(const std::vector<Finding>& findings);

} // namespace hostcheck
