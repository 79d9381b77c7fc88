#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <string>

class Bytes;

/// Trees of host values as bytes: a tag, followed by the tag's data. Every byte string is a valid tree.
namespace tree {

/// The keys of the host's maps. One byte selects a key.
const QStringList& keys();

QVariant read(Bytes& bytes, int depth = 0);
/// The bytes from which read() returns @p value. Supports the types that a real host sends.
std::string write(const QVariant& value);

} // namespace tree
