#pragma once

#include "agent/Interface.h"
#include "agent/Value.h"

#include <iosfwd>
#include <string>

namespace zorcall {

/// Writes @p value as JSON on one line. Records have all fields in id order, with the default of the type for
/// absent ones; integers keep all digits. QJsonDocument would sort the keys and cannot write this layout, so
/// it encodes only the strings.
void writeJson(std::ostream& out, const Interface& service, const Type& type, const Value& value);

/// Writes a JSON string in UTF-8; only quotes, backslashes and control characters are escaped. Each byte that
/// is not UTF-8 becomes U+FFFD.
void writeJsonString(std::ostream& out, const std::string& string);

std::string toJson(const Interface& service, const Type& type, const Value& value);

} // namespace zorcall
