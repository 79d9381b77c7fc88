#include "host/objects/HostLog.h"

#include <QtCore/QTime>

#include <cstdio>

namespace host {

namespace {

// Lines in the window; standard output has all lines.
constexpr int kKeptLines = 500;

} // namespace

void HostLog::write(const QString& line)
{
    const QString timed =
        QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz")) + QLatin1Char(' ') + line;
    print(timed);
    if (rowCount() == kKeptLines)
        removeRows(0, 1);
    const int row = rowCount();
    insertRows(row, 1);
    setData(index(row), timed);
}

void HostLog::print(const QString& line)
{
    const QByteArray bytes = line.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

} // namespace host
