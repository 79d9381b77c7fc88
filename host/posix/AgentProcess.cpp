#include "host/AgentProcess.h"

#include <csignal>
#include <unistd.h>

namespace host {

AgentProcess::~AgentProcess() = default;

void AgentProcess::setupChildProcess()
{
    setpgid(0, 0);
}

void AgentProcess::startShell(const QString& command)
{
    start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
}

void AgentProcess::terminateGroup()
{
    if (processId() > 0)
        ::kill(-static_cast<pid_t>(processId()), SIGTERM);
}

} // namespace host
