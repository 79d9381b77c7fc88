#pragma once

#include "agent/Client.h"
#include "agent/Failure.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace zorcall {

class Report;

struct ScriptOptions
{
    std::string name; ///< of the file, for messages
    bool allowMissing = false;
    bool patient = false;
};

/// Parses one line; nullopt for an empty line or a comment. Throws a Failure with code Usage.
std::optional<Call> parseLine(const Interface& service, const std::string& line, bool allowMissing);

/// Executes a script line by line on one connection, and continues after a rejection. Every other failure is
/// thrown as a Failure with the line number. Returns the highest code.
ExitCode runScript(Client& client, std::istream& lines, const ScriptOptions& options, Report& report);

} // namespace zorcall
