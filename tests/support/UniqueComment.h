#pragma once

#include <QtCore/QByteArray>

/// A comment line for an INI file, 64 bytes longer at each call. QSettings does not read a file again whose
/// size and time are unchanged.
inline QByteArray uniqueComment()
{
    static QByteArray line = ";";
    line += QByteArray(64, '-');
    return line + '\n';
}
