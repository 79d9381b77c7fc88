#pragma once

#include <QtCore/QStringList>

#include <iosfwd>

namespace zorcall {

/// Runs the program: results go to @p out, an error as one line to @p err. Returns the exit code. Requires a
/// QCoreApplication. @p nativePort: value of AGENT_NATIVE_PORT.
int runProgram(const QStringList& arguments, const QString& nativePort, std::istream& in, std::ostream& out,
               std::ostream& err);

} // namespace zorcall
