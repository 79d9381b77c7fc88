#include "recscan/ScanStateFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

QString stateFilePath()
{
    return QDir(QCoreApplication::applicationDirPath()).absolutePath() + QLatin1String("/recscan.info");
}

} // namespace

ScanState readScanState()
{
    ScanState state;
    QFile file(stateFilePath());
    if (!file.open(QIODevice::ReadOnly))
        return state;
    QDataStream stream(&file);
    stream >> state.nextCaseIndex >> state.referralDone;
    return state;
}

void writeScanState(const ScanState& state)
{
    QFile file(stateFilePath());
    if (!file.open(QIODevice::WriteOnly))
        return;
    // Both values stay in the file's buffer until it closes, so one write stores them.
    QDataStream stream(&file);
    stream << state.nextCaseIndex << state.referralDone;
}
