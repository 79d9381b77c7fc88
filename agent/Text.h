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

/// @p text fit for one line of a terminal: control bytes and what is not UTF-8 become '?', and a text of more
/// than a thousand bytes is cut, with "..." at its end. What another program sent goes through here.
std::string oneLine(const std::string& text);

std::string join(const std::vector<std::string>& parts, const std::string& separator);

/// The nearest of @p candidates to @p name by edit distance without regard to case, and up to two more that
/// are nearly as near; nearest first, among equals in their own order.
std::vector<std::string> nearest(const std::string& name, const std::vector<std::string>& candidates);

/// Insertions, deletions and replacements of one byte that turn one text into the other.
std::size_t editDistance(const std::string& left, const std::string& right);

} // namespace zorcall
