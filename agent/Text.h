#pragma once

#include <QtCore/QString>

#include <cstddef>
#include <string>
#include <vector>

namespace zorcall {

struct DecodedUtf8
{
    QString string;
    int invalidBytes = 0;
};

/// Decodes with QTextCodec, which rejects overlong forms, surrogates and values above U+10FFFF. Each invalid
/// byte becomes @p replacement, which is U+FFFD or U+0000.
DecodedUtf8 decodeUtf8(const std::string& bytes, QChar replacement = QChar::ReplacementCharacter);

bool isUtf8(const std::string& text);

/// @p text for one line of a terminal: control characters and invalid bytes become '?', and a string of more
/// than 1000 bytes ends in "...". Use it for all untrusted input.
std::string oneLine(const std::string& text);

std::string join(const std::vector<std::string>& parts, const std::string& separator);

/// Similar candidates: those that contain @p name (at least three letters), and those whose case-insensitive
/// edit distance to it is at most a third of the longer name, rounded up. Returns the one with the smallest
/// distance, and up to two more within a distance of two from it, in the order of distance; equal ones keep
/// their order.
std::vector<std::string> nearest(const std::string& name, const std::vector<std::string>& candidates);

/// Minimum number of inserted, deleted and replaced bytes (Levenshtein distance).
std::size_t editDistance(const std::string& left, const std::string& right);

} // namespace zorcall
