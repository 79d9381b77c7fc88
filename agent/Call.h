#pragma once

#include "agent/Interface.h"
#include "agent/Value.h"

#include <string>
#include <vector>

namespace zorcall {

/// One call as it was asked for.
struct Call
{
    const Method* method = nullptr;
    Value::Parts arguments; ///< one for each of the method's, absent where it is to be left off the wire
    std::string text;       ///< the call on one line, as it could be typed; this is what the gate is told
    bool gated = false;     ///< with PreProcessing before and PostProcessing after it
};

/// Reads METHOD name=value ... . Throws a Failure with code Usage where the method or an argument is unknown,
/// given twice, does not fit its type, or is missing while @p allowMissing is false.
Call parseCall(const Interface& service, const std::vector<std::string>& words, bool allowMissing);

/// Reads one value. Throws as parseCall does; @p field names it in the message.
Value parseValue(const Field& field, const std::string& text);

/// The method of that name. Throws a Failure with code Usage that names the nearest ones.
const Method& requireMethod(const Interface& service, const std::string& name);

/// Marks the call as one that goes through the gate. Throws where it is one of the gate's own.
void putThroughGate(Call* call);

} // namespace zorcall
