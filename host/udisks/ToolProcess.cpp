#include "host/udisks/ToolProcess.h"

#include <QtCore/QStandardPaths>
#include <QtCore/QTimer>

#include <unistd.h>

#include <utility>

namespace host {

namespace {

constexpr int kKillMs = 5000;

// The folders of the tools are missing in the path of an ordinary user.
QString fileOf(const QString& program)
{
    return QStandardPaths::findExecutable(program, {QStringLiteral("/usr/sbin"), QStringLiteral("/sbin"),
                                                    QStringLiteral("/usr/bin"), QStringLiteral("/bin")});
}

} // namespace

ToolProcess::ToolProcess(UsedSpaceTool tool, const QDBusUnixFileDescriptor& device, Done done)
    : tool_(std::move(tool)), device_(device), done_(std::move(done))
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    setProcessEnvironment(environment);
    setStandardErrorFile(nullDevice());
    connect(this, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int code, QProcess::ExitStatus status) { end(status == NormalExit && code == 0); });
    connect(this, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == FailedToStart)
            end(false);
    });
}

ToolProcess::~ToolProcess()
{
    disconnect(this);
    kill();
    waitForFinished(kKillMs);
}

void ToolProcess::run(int limitMs)
{
    QTimer::singleShot(limitMs, this, &QProcess::kill);
    const QString file = fileOf(tool_.program);
    if (file.isEmpty())
        return end(false);
    start(file, tool_.arguments, ReadOnly);
}

// Between fork and exec: only async-signal-safe calls.
void ToolProcess::setupChildProcess()
{
    if (device_.isValid())
        dup2(device_.fileDescriptor(), STDIN_FILENO);
}

void ToolProcess::end(bool succeeded)
{
    // An open device blocks changes of the partition table.
    device_ = QDBusUnixFileDescriptor();
    const QString output = succeeded ? QString::fromLocal8Bit(readAllStandardOutput()) : QString();
    if (const Done done = std::exchange(done_, nullptr))
        done(succeeded ? tool_.parse(output) : std::nullopt);
}

} // namespace host
