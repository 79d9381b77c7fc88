#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include <ostream>

/// How a run of the program ended.
struct Ran
{
    int code = -1; ///< -1 if it did not end by itself
    QByteArray out;
    QByteArray err;

    bool operator==(const Ran& other) const
    {
        return code == other.code && out == other.out && err == other.err;
    }
};

inline std::ostream& operator<<(std::ostream& stream, const Ran& ran)
{
    return stream << "code " << ran.code << "\nout: " << ran.out.constData()
                  << "\nerr: " << ran.err.constData();
}

/// Runs build/bin/zorcall while the test's event loop turns. @p nativePort is its AGENT_NATIVE_PORT, empty
/// for none;
/// @p input its whole standard input.
Ran zorcall(const QStringList& arguments, const QByteArray& nativePort = {}, const QByteArray& input = {});

/// Path of the program.
QString zorcallPath();

/// Words of a line without quotes.
QStringList words(const char* line);
