#pragma once

#include "tests/agent/ZorcallProcess.h"
#include "tests/host/ZorhostProcess.h"

#include <gtest/gtest.h>

/// A running sandbox host with the machine "desktop", whose orders take no time.
class SandboxHost
{
public:
    SandboxHost()
    {
        started_ = host_.startReady({QStringLiteral("--headless"), QStringLiteral("--machine"),
                                     QStringLiteral("desktop"), QStringLiteral("--speed"),
                                     QStringLiteral("instant")});
        EXPECT_TRUE(started_) << host_.output().constData() << host_.errors().constData();
    }

    QByteArray port()
    {
        const QByteArray output = host_.output();
        const int at = output.indexOf("agent service on localhost:");
        return at < 0 ? QByteArray() : output.mid(at + 27, output.indexOf('\n', at) - at - 27);
    }
    /// The port as a variable of zorcall's environment.
    QString variable() { return QStringLiteral("AGENT_NATIVE_PORT=") + QString::fromLatin1(port()); }
    /// Runs zorcall with its output in a pipe.
    Ran call(const char* line) { return zorcall(words(line), port()); }
    ZorhostProcess& process() { return host_; }

private:
    ZorhostProcess host_;
    bool started_ = false;
};
