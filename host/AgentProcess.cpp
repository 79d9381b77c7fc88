#include "host/AgentProcess.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <csignal>
#include <unistd.h>
#endif

namespace host {

namespace {

constexpr int kSignalExit = 128;
#ifdef Q_OS_WIN
// What a process ends with that was told to, as a shell elsewhere tells it of the signal.
constexpr unsigned kEndedExit = 128 + 15;
#endif

} // namespace

AgentProcess::AgentProcess(QObject* parent) : QProcess(parent)
{
    setProcessChannelMode(QProcess::ForwardedChannels);
}

void AgentProcess::run(const QString& command)
{
    setProcessEnvironment(QProcessEnvironment::systemEnvironment());
#ifdef Q_OS_WIN
    // The shell there reads its command line itself, by rules of its own.
    setProgram(QStringLiteral("cmd"));
    setNativeArguments(QStringLiteral("/S /C \"%1\"").arg(command));
    start();
    joinGroup();
#else
    start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
#endif
}

void AgentProcess::endGroup()
{
    if (state() == QProcess::NotRunning)
        return;
#ifdef Q_OS_WIN
    TerminateJobObject(group_, kEndedExit);
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

#ifdef Q_OS_WIN

AgentProcess::~AgentProcess()
{
    CloseHandle(group_);
}

// The shell is put into a job, which what it starts then belongs to as well.
void AgentProcess::joinGroup()
{
    if (group_ == nullptr)
        group_ = CreateJobObjectW(nullptr, nullptr);
    if (!waitForStarted())
        return;
    const HANDLE shell =
        OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, static_cast<DWORD>(processId()));
    AssignProcessToJobObject(group_, shell);
    CloseHandle(shell);
}

#else

AgentProcess::~AgentProcess() = default;

void AgentProcess::joinGroup() {}

#endif

void AgentProcess::setupChildProcess()
{
#ifndef Q_OS_WIN
    setpgid(0, 0);
#endif
}

} // namespace host
