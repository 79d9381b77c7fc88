#pragma once

#include "agent/Interface.h"

#include <iosfwd>

namespace zorcall {

/// The program's own help.
void writeHelp(std::ostream& out);

/// One line a method: name, arguments with their types, type of the answer.
void writeList(std::ostream& out, const Interface& service);

/// All that the interface file says about one method, its arguments, and the fields of the record that it
/// answers.
void writeMethod(std::ostream& out, const Interface& service, const Method& method);

} // namespace zorcall
