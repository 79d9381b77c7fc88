#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <ostream>

// So that a failed comparison of texts can be read.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* out)
{
    *out << "[\"" << list.join(QStringLiteral("\", \"")).toStdString() << "\"]";
}
