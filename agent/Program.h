#pragma once

#include <QtCore/QStringList>

#include <iosfwd>

namespace zorcall {

/// The environment of the program.
struct Environment
{
    QString nativePort;    ///< AGENT_NATIVE_PORT
    QString searchedPorts; ///< ZORCALL_PORTS
    bool terminal = false; ///< standard output is a terminal
    bool colour = false;   ///< standard output is a terminal whose user accepts colours
};

/// Runs the program: results go to @p out, an error as one line to @p err. Returns the exit code. Requires a
/// QCoreApplication.
int runProgram(const QStringList& arguments, const Environment& environment, std::istream& in,
               std::ostream& out, std::ostream& err);

} // namespace zorcall
