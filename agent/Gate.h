#pragma once

#include "agent/Client.h"
#include "agent/Failure.h"

#include <string>

namespace zorcall {

class Report;

extern const char* const kPreProcessing;
extern const char* const kPostProcessing;

/// The answer of PreProcessing.
struct GateAnswer
{
    bool allow = false;
    std::string reasons; ///< why not, for the user
};

GateAnswer readGateAnswer(const Interface& service, const Value& taskInfo);

/// Whether an answer counts as a refusal: a tool that acts answered anything but "Task Queued", or
/// PreProcessing does not allow. Every other answer, also PostProcessing's false, is just an answer.
ExitCode verdict(const Interface& service, const Method& method, const Value& value);

/// Makes the call, through the gate if it says so, and reports every answer as it comes. A call that the gate
/// lets through always reaches PostProcessing, also after an exception message.
///
/// @p patient asks the gate again, up to the client's limit, while its refusal is the one that also stands
/// for a call too soon after another. Throws a Failure.
ExitCode perform(Client& client, const Call& call, bool patient, Report& report);

} // namespace zorcall
