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
    // The file's buffer holds both until it closes, so they reach the disk in one write.
    QDataStream stream(&file);
    stream << state.nextCaseIndex << state.referralDone;
}
