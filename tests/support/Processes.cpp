#include "tests/support/Processes.h"

#include <csignal>

bool processRuns(const QByteArray& number)
{
    const int process = number.trimmed().toInt();
    return process > 0 && ::kill(process, 0) == 0;
}

bool endProcess(const QByteArray& number)
{
    const int process = number.trimmed().toInt();
    return process > 0 && ::kill(process, SIGKILL) == 0;
}
