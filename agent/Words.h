#pragma once

#include <string>
#include <vector>

namespace zorcall {

/// Splits a line into words as a shell does: spaces and tabs separate words; '...' keeps every character; in
/// "..." only \" and \\ are escapes; elsewhere a backslash keeps the next character; # at the start of a word
/// begins a comment. Throws a Failure with code Usage for an open quote or a backslash at the end.
std::vector<std::string> splitWords(const std::string& line);

/// Quotes the words as necessary: splitWords(joinWords(words)) returns @p words.
std::string joinWords(const std::vector<std::string>& words);

} // namespace zorcall
