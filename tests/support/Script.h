#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Makes a program at @p path out of a shell script's body, replacing what is there. On Windows the program
/// is a stand-in that runs the body with the shell of the system below Wine, and gets the suffix .exe if the
/// path has none. Throws std::runtime_error if it cannot be written.
void writeScript(const QString& path, const QByteArray& body);
