#include "host/AgentProcess.h"

#ifndef Q_OS_WIN
#include <csignal>
#include <unistd.h>
#endif

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
#ifdef Q_OS_WIN
    start(QStringLiteral("cmd"), {QStringLiteral("/C"), command});
#else
    start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
#endif
}

void AgentProcess::endGroup()
{
    if (state() == QProcess::NotRunning)
        return;
#ifdef Q_OS_WIN
    terminate();
#else
    if (processId() > 0)
        ::kill(-static_cast<pid_t>(processId()), SIGTERM);
#endif
}

int AgentProcess::shellExitCode() const
{
    // After a crash the exit code is the number of the signal.
    return exitStatus() == QProcess::CrashExit ? kSignalExit + exitCode() : exitCode();
}

void AgentProcess::setupChildProcess()
{
#ifndef Q_OS_WIN
    setpgid(0, 0);
#endif
}

} // namespace host
