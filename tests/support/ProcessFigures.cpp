#include "tests/support/ProcessFigures.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

long statusNumber(const QByteArray& key)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = file.readAll();
    const int at = text.indexOf("\n" + key + ":");
    return at < 0 ? 0
                  : text.mid(at + key.size() + 2).trimmed().split('\n').first().split(' ').first().toLong();
}

} // namespace

ProcessFigures ProcessFigures::now()
{
    ProcessFigures figures;
    // The listing opens one descriptor itself, each time.
    figures.fileDescriptors = QDir(QStringLiteral("/proc/self/fd"))
                                  .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                                  .size();
    figures.threads = static_cast<int>(statusNumber("Threads"));
    figures.peakKilobytes = statusNumber("VmHWM");
    return figures;
}
