#pragma once

#include "agent/Interface.h"
#include "agent/Value.h"

#include <iosfwd>
#include <string>

namespace zorcall {

/// Writes @p value as JSON on one line: ", " and ": " as separators, records with all their fields in id
/// order and the default of the type for an absent one, integers with every digit, strings as
/// writeJsonString. QJsonDocument sorts the keys of an object and doesn't write this layout, so it only
/// encodes the strings.
void writeJson(std::ostream& out, const Interface& service, const Type& type, const Value& value);

/// Writes a JSON string in UTF-8; only quotes, backslashes and control characters are escaped. Each byte that
/// is not UTF-8 becomes U+FFFD.
void writeJsonString(std::ostream& out, const std::string& string);

std::string toJson(const Interface& service, const Type& type, const Value& value);

} // namespace zorcall
