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
    std::string reasons; ///< rejection for the user, empty if allowed
};

GateAnswer readGateAnswer(const Interface& service, const Value& taskInfo);

/// Rejected if a tool that acts answered anything except TASK_QUEUED, or PreProcessing did not allow the
/// call. Every other answer is Answered, including false from PostProcessing.
ExitCode verdict(const Interface& service, const Method& method, const Value& value);

/// Executes the call, through the gate if `gated`, and reports every answer on arrival. PostProcessing
/// follows every allowed call, even after an exception message. Throws a Failure.
///
/// @p patient repeats PreProcessing, up to the client's timeout, while it reports an operation in progress.
ExitCode perform(Client& client, const Call& call, bool patient, Report& report);

} // namespace zorcall
