#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a program of the system prints, as text whatever its encoding, with blanks and line ends cut from
/// both ends. Fails the test and gives an empty text if it cannot be run.
QString systemSays(const QString& program, const QStringList& arguments);

/// The values that `wmic <alias> get <property>` prints, one for each row. Fails the test if the list is empty.
QStringList wmicRows(const QString& alias, const QString& property);

/// The first of those values.
QString wmicSays(const QString& alias, const QString& property);

/// Whether this system has wmic, which newer Windows leaves out.
bool hasWmic();
