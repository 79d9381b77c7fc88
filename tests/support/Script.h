#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Writes a program with the body of a shell script to @p path, replacing an existing file. On Windows it is
/// a stand-in that runs the body with the host system's shell, with the suffix .exe if the path has no
/// suffix. Throws std::runtime_error if it cannot be written.
void writeScript(const QString& path, const QByteArray& body);
