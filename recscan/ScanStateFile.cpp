#include "recscan/ScanStateFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QVariant>

namespace {

const char* const kScanStateFolder = "recscanFolder";

QString stateFilePath()
{
    const QCoreApplication* application = QCoreApplication::instance();
    const QString folder =
        application != nullptr ? application->property(kScanStateFolder).toString() : QString();
    return QDir(folder.isEmpty() ? QCoreApplication::applicationDirPath() : folder).absolutePath() +
           QLatin1String("/recscan.info");
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
