#pragma once

#include <QtCore/QString>

// Types and flags of partitions, in the form of the disk service.
namespace host {

constexpr quint64 kGptHidden = quint64(1) << 62;
constexpr quint64 kMbrActive = 0x80;

/// True for the MBR types of hidden partitions, such as "0x17".
bool isHiddenType(const QString& type);
/// The hidden variant of an MBR type, such as "0x17" of "0x07"; empty for a type without a hidden variant.
QString hiddenType(const QString& type);

} // namespace host
