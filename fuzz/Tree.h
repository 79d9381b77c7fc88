#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <string>

class Bytes;

/// Trees of host values as bytes: a tag, then what the tag's kind needs. Any bytes are some tree.
namespace tree {

/// The keys of the host's maps, which one byte can name.
const QStringList& keys();

QVariant read(Bytes& bytes, int depth = 0);
/// What read() reads as @p value again. Of the kinds that an honest host sends.
std::string write(const QVariant& value);

} // namespace tree
