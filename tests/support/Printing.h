#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <ostream>

// How GoogleTest shows Qt's texts when an expectation fails.

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* out)
{
    *out << '{';
    for (const QString& text : list)
        *out << "\n  \"" << text.toStdString() << '"';
    *out << '}';
}
