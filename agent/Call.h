#pragma once

#include "agent/Interface.h"
#include "agent/Value.h"

#include <string>
#include <vector>

namespace zorcall {

/// One call, as given on the command line or in a script.
struct Call
{
    const Method* method = nullptr;
    Value::Parts arguments; ///< one per argument of the method; absent ones are not sent
    std::string text;       ///< the call as one line of a script; the argument of PreProcessing
    bool gated = false;     ///< call PreProcessing first and PostProcessing afterwards
};

/// Parses METHOD name=value ... . Throws a Failure with code Usage for an unknown method, an argument that is
/// unknown, repeated or invalid for its type, and a missing argument unless @p allowMissing.
Call parseCall(const Interface& service, const std::vector<std::string>& words, bool allowMissing);

/// Parses one value of @p field. Throws as parseCall does.
Value parseValue(const Field& field, const std::string& text);

/// The method of that name. Throws a Failure with code Usage that suggests the nearest names.
const Method& requireMethod(const Interface& service, const std::string& name);

/// Sets `gated`. Throws a Failure with code Usage for a method of the gate.
void putThroughGate(Call* call);

} // namespace zorcall
