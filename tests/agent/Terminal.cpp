#include "tests/agent/Terminal.h"

#include "tests/support/Threads.h"

#include <QtCore/QProcess>

QString shellQuoted(const QString& word)
{
    return QLatin1Char('\'') + QString(word).replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

Ran zorcallAtTerminal(const QStringList& variables, const QStringList& arguments)
{
    QStringList command{shellQuoted(zorcallPath())};
    for (const QString& argument : arguments)
        command.append(shellQuoted(argument));
    QProcess process;
    process.setProcessEnvironment(zorcallEnvironment(QStringList{QStringLiteral("TERM=xterm")} + variables));
    process.start(QStringLiteral("script"),
                  {QStringLiteral("-qec"), command.join(QLatin1Char(' ')), QStringLiteral("/dev/null")});
    process.closeWriteChannel();
    if (!pumpUntil([&process] { return process.state() == QProcess::NotRunning; }, 50000)) {
        process.kill();
        process.waitForFinished();
    }
    // The terminal ends lines with a carriage return as well.
    return {process.exitCode(), process.readAllStandardOutput().replace("\r\n", "\n"),
            process.readAllStandardError()};
}
