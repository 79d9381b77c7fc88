#pragma once

#include "agent/Interface.h"

#include <iosfwd>

namespace zorcall {

/// Writes the signature of each method on one line.
void writeList(std::ostream& out, const Interface& service);

/// Writes the documentation of a method, of its arguments, and of the fields of its result.
void writeMethod(std::ostream& out, const Interface& service, const Method& method);

} // namespace zorcall
