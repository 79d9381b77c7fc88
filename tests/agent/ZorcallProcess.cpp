#include "tests/agent/ZorcallProcess.h"

#include "tests/support/Threads.h"

#include <QtCore/QProcess>

QString zorcallPath()
{
    return qEnvironmentVariable("AIBRIDGE_BUILD_DIR") + QStringLiteral("/bin/zorcall");
}

QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

Ran zorcall(const QStringList& arguments, const QByteArray& nativePort, const QByteArray& input)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("AGENT_NATIVE_PORT"));
    if (!nativePort.isEmpty())
        environment.insert(QStringLiteral("AGENT_NATIVE_PORT"), QString::fromLatin1(nativePort));
    // Strings are UTF-8 in every locale.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.start(zorcallPath(), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!pumpUntil([&process] { return process.state() == QProcess::NotRunning; }, 50000)) {
        process.kill();
        process.waitForFinished();
    }
    const bool ended =
        process.exitStatus() == QProcess::NormalExit && process.error() == QProcess::UnknownError;
    return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}
