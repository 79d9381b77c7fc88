#include "recscan/BootChecker.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>

#include <memory>
#include <mutex>
#include <vector>

namespace {

// The destructor of QProcess kills its program, but a running checker must not be interrupted. The object
// cannot move to another thread on every system, so it exists until the process ends.
void leaveRunning(std::unique_ptr<QProcess> process)
{
    static std::mutex mutex;
    static auto* const running = new std::vector<QProcess*>();
    const std::lock_guard<std::mutex> lock(mutex);
    running->push_back(process.release());
}

} // namespace

bool bootCheckerFindsError(int timeoutMs)
{
    const QString folder = QDir::currentPath();
    const QString program =
        QDir::cleanPath(folder + QLatin1String("/../BootRepair")) + QLatin1String("/BootRepair_Console.exe");
    auto process = std::make_unique<QProcess>();
    process->setWorkingDirectory(folder);
    process->start(program, {QStringLiteral("checkBCD")}, QIODevice::ReadWrite);
    process->waitForFinished(timeoutMs);
    const bool found = process->exitCode() != 0 && process->readAllStandardOutput().contains("FindErrorItem");
    if (process->state() != QProcess::NotRunning)
        leaveRunning(std::move(process));
    return found;
}
