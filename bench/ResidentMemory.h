#pragma once

#include <QtCore/QFile>

#include <unistd.h>

/// The resident memory of this process in KiB; 0 if the system does not report it.
inline double residentKib()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}
