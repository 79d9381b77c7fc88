#pragma once

#include "tests/support/Wire.h"

#include <QtCore/QString>

#include <string>
#include <vector>

/// Every tool of the service by its name, with arguments that a host without a fault accepts.
namespace calls {

std::vector<std::string> methods();
/// The bytes of the call.
std::string encode(const std::string& method, int sequence);
/// The answer as one string: a string unchanged, "true" or "false", a gate's answer as "true " or "false "
/// and its reason, records as "disk/partitions" and "disk/letter/capacity" with the flags "/unaligned" and
/// "/raw".
QString answerOf(const wire::Message& reply);

} // namespace calls
