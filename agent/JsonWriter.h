#pragma once

#include "agent/Interface.h"
#include "agent/Value.h"

#include <iosfwd>
#include <string>

namespace zorcall {

/// Writes @p value as JSON on one line: records with all their fields in id order, absent ones with their
/// default; integers with every digit; texts in UTF-8, of which only what JSON demands is escaped. Bytes that
/// are not UTF-8 become U+FFFD.
void writeJson(std::ostream& out, const Interface& service, const Type& type, const Value& value);
void writeJsonText(std::ostream& out, const std::string& text);

std::string toJson(const Interface& service, const Type& type, const Value& value);

} // namespace zorcall
