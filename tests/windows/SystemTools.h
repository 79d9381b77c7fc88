#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Decoded and trimmed output of a system program. Fails the test and returns an empty string if the program
/// does not run.
QString programOutput(const QString& program, const QStringList& arguments);

/// The values that `wmic <alias> get <property>` prints, one per row. Fails the test if the list is empty.
QStringList wmicRows(const QString& alias, const QString& property);

/// The first value of wmicRows.
QString wmicValue(const QString& alias, const QString& property);

/// Newer versions of Windows do not contain wmic.
bool hasWmic();
