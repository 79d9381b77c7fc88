#pragma once

#include "host/machine/Text.h"

#include <optional>

namespace host {

/// Why the host does not accept something: a sentence that the user reads. Empty if the host accepts it.
using Rejection = std::optional<Text>;

constexpr std::nullopt_t kAccepted = std::nullopt;

/// @p reason: a pattern of a Text.
inline Rejection rejectIf(bool condition, const char* reason)
{
    return condition ? Rejection(reason) : kAccepted;
}

} // namespace host
