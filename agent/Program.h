#pragma once

#include <QtCore/QStringList>

#include <iosfwd>

namespace zorcall {

/// The whole program but its process: results go to @p out, one line for an error to @p err. Returns the exit
/// code. Needs a QCoreApplication.
int runProgram(const QStringList& arguments, const QString& nativePort, std::istream& in, std::ostream& out,
               std::ostream& err);

} // namespace zorcall
