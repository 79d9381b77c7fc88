#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>

#include <ostream>

/// Result of a run of the program.
struct Ran
{
    int code = -1; ///< -1 if it crashed or was killed
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

/// Runs build/bin/zorcall and processes the test's events meanwhile. @p nativePort: AGENT_NATIVE_PORT, unset
/// if empty; @p input: standard input.
Ran zorcall(const QStringList& arguments, const QByteArray& nativePort = {}, const QByteArray& input = {});

/// As zorcall(), with other variables of the environment: "NAME=value".
Ran zorcallWith(const QStringList& variables, const QStringList& arguments, const QByteArray& input = {});

/// The environment of a run: without the variables that zorcall reads, except @p variables.
QProcessEnvironment zorcallEnvironment(const QStringList& variables);

/// Path of the program.
QString zorcallPath();

/// Splits a line at its spaces.
QStringList words(const char* line);
