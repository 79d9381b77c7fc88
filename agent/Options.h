#pragma once

#include "agent/Client.h"

#include <QtCore/QStringList>

#include <string>
#include <vector>

namespace zorcall {

/// What the command line asks for.
struct Options
{
    enum Mode { Call, Script, List, Help, Version };

    Mode mode = Call;
    std::vector<std::string> words; ///< Call: method and arguments; List and Help: at most a method
    std::string script;             ///< Script: a file name, or "-" for standard input
    QString host;                   ///< this and the next two: empty where not given
    QString port;
    QString timeout;
    bool gated = false;
    bool patient = false;
    bool allowMissing = false;
    bool table = false;
};

/// Reads the command line, program name first. Throws a Failure with code Usage.
Options parseOptions(const QStringList& arguments);

/// Where to call. @p nativePort is what AGENT_NATIVE_PORT holds, empty for nothing. Throws as parseOptions
/// does.
Address addressOf(const Options& options, const QString& nativePort);

} // namespace zorcall
