#pragma once

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMap>

/// How often each thread of this process has left the processor because it waited, by thread number. A thread
/// that waits is counted when it waits again, so an unchanged number means that it did not wake up. Linux
/// only.
inline QMap<int, qint64> threadSwitches()
{
    const QString tasks = QStringLiteral("/proc/self/task");
    QMap<int, qint64> switches;
    for (const QString& number : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile status(tasks + '/' + number + "/status");
        if (!status.open(QIODevice::ReadOnly))
            continue; // the thread has ended
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith("voluntary_ctxt_switches:"))
                switches[number.toInt()] = line.mid(line.indexOf(':') + 1).trimmed().toLongLong();
        }
    }
    return switches;
}
