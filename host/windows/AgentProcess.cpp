#include "host/AgentProcess.h"

#include <windows.h>

namespace host {

namespace {

// Exit code of a terminated process: 128 + SIGTERM, as shells report it.
constexpr unsigned kTerminatedExit = 128 + 15;

} // namespace

AgentProcess::~AgentProcess()
{
    CloseHandle(job_);
}

void AgentProcess::setupChildProcess() {}

void AgentProcess::startShell(const QString& command)
{
    // cmd parses its command line by its own rules, so Qt must not quote it.
    setProgram(QStringLiteral("cmd"));
    setNativeArguments(QStringLiteral("/S /C \"%1\"").arg(command));
    start();
    if (job_ == nullptr)
        job_ = CreateJobObjectW(nullptr, nullptr);
    if (!waitForStarted())
        return;
    // Processes that the shell starts join its job.
    const HANDLE shell =
        OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, static_cast<DWORD>(processId()));
    AssignProcessToJobObject(job_, shell);
    CloseHandle(shell);
}

void AgentProcess::terminateGroup()
{
    TerminateJobObject(job_, kTerminatedExit);
}

} // namespace host
