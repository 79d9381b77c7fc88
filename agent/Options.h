#pragma once

#include "agent/Client.h"

#include <QtCore/QStringList>

#include <string>
#include <vector>

namespace zorcall {

/// The parsed command line.
struct Options
{
    enum Mode { Call, Script, List, Watch, Completion, Candidates, Help, Version };

    Mode mode = Call;
    std::vector<std::string> words; ///< Call: method and arguments; List, Help: at most one method; otherwise
                                    ///< the command and its argument
    std::string script;             ///< Script: a file name, or "-" for standard input
    QString host;                   ///< host, port and timeout are empty by default
    QString port;
    QString timeout;
    QString interval;
    bool gated = false;
    bool patient = false;
    bool allowMissing = false;
    bool table = false;
    bool json = false;
    bool noHeaders = false;
};

/// Parses the command line, including the program's name. Throws a Failure with code Usage.
Options parseOptions(const QStringList& arguments);

/// The interval of watch. Throws as parseOptions does.
std::chrono::milliseconds intervalOf(const Options& options);

/// The address of the service; port 0 if neither --port nor @p nativePort, the value of AGENT_NATIVE_PORT,
/// selects one. Throws as parseOptions does.
Address addressOf(const Options& options, const QString& nativePort);

} // namespace zorcall
