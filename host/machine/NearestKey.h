#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace host {

/// The key with the smallest case-insensitive edit distance to @p name; empty if that exceeds a third of the
/// longer one.
QString nearestKey(const QString& name, const QStringList& keys);

} // namespace host
