#include "bench/peers/PrivateBus.h"

#include <stdexcept>

namespace {

constexpr int kStartTimeoutMs = 20000;

} // namespace

PrivateBus::PrivateBus()
{
    process_.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address=1"});
    while (process_.state() != QProcess::NotRunning && !process_.canReadLine() &&
           process_.waitForReadyRead(kStartTimeoutMs)) {
    }
    address_ = QString::fromLocal8Bit(process_.readLine()).trimmed();
    if (address_.isEmpty())
        throw std::runtime_error("dbus-daemon did not start: " +
                                 (process_.errorString() + process_.readAllStandardError()).toStdString());
}

PrivateBus::~PrivateBus()
{
    process_.terminate();
    process_.waitForFinished();
}
