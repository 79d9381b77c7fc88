#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a program of the system prints, as text whatever its encoding, with blanks and line ends cut from
/// both ends. Fails the test and gives an empty text if it cannot be run.
QString systemSays(const QString& program, const QStringList& arguments);

/// The one value that `wmic <alias> get <property>` prints: the first row under the head.
QString wmicSays(const QString& alias, const QString& property);
