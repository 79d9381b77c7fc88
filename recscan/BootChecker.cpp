// The case of faulty boot entries, and the program that looks for them.
#include "recscan/BootChecker.h"

#include "recscan/CaseTools.h"
#include "recscan/RecActions.h"
#include "telemetry/Telemetry.h"

#include <QtCore/QDir>
#include <QtCore/QObject>
#include <QtCore/QProcess>

#include <memory>
#include <mutex>
#include <vector>

namespace {

// A QProcess takes its program with it when it goes. A checker that is still at work must not be cut off, and
// the object cannot move to another thread on every system, so it stays until the end of the process.
void leaveRunning(std::unique_ptr<QProcess> process)
{
    static std::mutex mutex;
    static auto* const running = new std::vector<QProcess*>();
    const std::lock_guard<std::mutex> lock(mutex);
    running->push_back(process.release());
}

} // namespace

bool bootCheckerFindsError(int limitMs)
{
    const QString folder = QDir::currentPath();
    const QString program =
        QDir::cleanPath(folder + QLatin1String("/../BootRepair")) + QLatin1String("/BootRepair_Console.exe");
    auto process = std::make_unique<QProcess>();
    process->setWorkingDirectory(folder);
    process->start(program, {QStringLiteral("checkBCD")}, QIODevice::ReadWrite);
    process->waitForFinished(limitMs);
    const bool found = process->exitCode() != 0 && process->readAllStandardOutput().contains("FindErrorItem");
    if (process->state() != QProcess::NotRunning)
        leaveRunning(std::move(process));
    return found;
}

std::optional<Recommendation> checkBootEntries(const ScanSubject&)
{
    if (isArm64Machine() || !bootCheckerFindsError())
        return std::nullopt;
    return recommend(
        ActionRepairBoot,
        QObject::tr("Invalid or duplicate boot entries were found in the system boot menu. We recommend "
                    "removing them with one click! "));
}
