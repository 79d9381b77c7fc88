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

QProcessEnvironment zorcallEnvironment(const QStringList& variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"AGENT_NATIVE_PORT", "ZORCALL_PORTS", "NO_COLOR"})
        environment.remove(QString::fromLatin1(name));
    // Strings are UTF-8 in every locale.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    for (const QString& variable : variables)
        environment.insert(variable.section(QLatin1Char('='), 0, 0), variable.section(QLatin1Char('='), 1));
    return environment;
}

Ran zorcall(const QStringList& arguments, const QByteArray& nativePort, const QByteArray& input)
{
    QStringList variables;
    if (!nativePort.isEmpty())
        variables.append(QStringLiteral("AGENT_NATIVE_PORT=") + QString::fromLatin1(nativePort));
    return zorcallWith(variables, arguments, input);
}

Ran zorcallWith(const QStringList& variables, const QStringList& arguments, const QByteArray& input)
{
    QProcess process;
    process.setProcessEnvironment(zorcallEnvironment(variables));
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
