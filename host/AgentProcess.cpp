#include "host/AgentProcess.h"

namespace host {

namespace {

constexpr int kSignalExit = 128;

} // namespace

AgentProcess::AgentProcess(QObject* parent) : QProcess(parent)
{
    setProcessChannelMode(QProcess::ForwardedChannels);
}

void AgentProcess::run(const QString& command)
{
    setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    startShell(command);
}

void AgentProcess::endGroup()
{
    if (state() != QProcess::NotRunning)
        terminateGroup();
}

int AgentProcess::shellExitCode() const
{
    // After a crash exitCode() is the number of the signal.
    return exitStatus() == QProcess::CrashExit ? kSignalExit + exitCode() : exitCode();
}

} // namespace host
