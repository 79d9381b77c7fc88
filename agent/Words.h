#pragma once

#include <string>
#include <vector>

namespace zorcall {

/// Splits a line into words as a shell does: blanks separate, '...' keeps everything, "..." keeps everything
/// but
/// \" and \\, a backslash elsewhere keeps the character after it, and # at the start of a word begins a
/// comment. Throws a Failure with code Usage where a quote is left open or a backslash ends the line.
std::vector<std::string> splitWords(const std::string& line);

/// A line that splitWords reads as @p words again.
std::string joinWords(const std::vector<std::string>& words);

} // namespace zorcall
