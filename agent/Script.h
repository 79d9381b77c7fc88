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
    std::string name; ///< for messages
    bool allowMissing = false;
    bool patient = false;
};

/// The call of one line; none for a blank line or a comment. Throws a Failure with code Usage.
std::optional<Call> parseLine(const Interface& service, const std::string& line, bool allowMissing);

/// Makes the calls of a script, line by line as they can be read, on one connection. A refusal doesn't stop
/// it; whatever else goes wrong is thrown as a Failure that names the line. Returns the highest code.
ExitCode runScript(Client& client, std::istream& lines, const ScriptOptions& options, Report& report);

} // namespace zorcall
