#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace host {

/// The line of a key or an array's entry in a valid JSON document, counted from 1; 0 if the path is not
/// found. A path has the form `disks[0].size`. Of a repeated key, the last one counts, as for QJsonDocument.
int lineOfPath(const QByteArray& json, const QString& path);

/// The line of a byte offset, and the last key before it, as a person finds it in an editor.
QString placeOfOffset(const QByteArray& json, int offset);

} // namespace host
