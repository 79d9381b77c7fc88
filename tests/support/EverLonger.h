#pragma once

#include <QtCore/QByteArray>

/// A comment line for an INI file, longer at each call by more than any two texts of one test differ:
/// QSettings takes a file of the same size and time for the one that it has read already.
inline QByteArray everLonger()
{
    static QByteArray line = ";";
    line += QByteArray(64, '-');
    return line + '\n';
}
