#pragma once

#include "agent/Catalogue.h"
#include "agent/Display.h"

#include <iosfwd>

namespace zorcall {

using Tools = std::vector<const Tool*>;

/// Writes the signature of each method on one line.
void writeSignatures(std::ostream& out, const Tools& tools);

/// Writes the tools by group, each with its class and summary on one line.
void writeGroups(std::ostream& out, const Catalogue& catalogue, const Tools& tools, const Display& display);

/// Writes a JSON array with one object per tool, each on a line of its own.
void writeToolsJson(std::ostream& out, const Tools& tools);

/// Writes the documentation of a tool, of its arguments, and of the fields of its result.
void writeMethod(std::ostream& out, const Interface& service, const Tool& tool);

} // namespace zorcall
