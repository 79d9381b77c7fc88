#pragma once

#include "tests/support/Wire.h"

#include <QtCore/QString>

#include <string>
#include <vector>

/// Every tool of the service by its name, with arguments that a whole host of these tests accepts.
namespace calls {

std::vector<std::string> methods();
/// The call's bytes.
std::string encode(const std::string& method, int sequence);
/// The answer as one text: a text as it is, true or false, a gate's answer as "true " or "false " and its
/// reason, records as "disk/partitions" and "disk/letter/capacity" with "/unaligned" and "/raw" where that is
/// so.
QString answerOf(const wire::Message& reply);

} // namespace calls
