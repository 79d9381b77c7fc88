#include "tests/plugin/ComponentFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>

#include <stdexcept>

namespace {

#ifdef Q_OS_WIN
const char* const kLibraryEnding = ".dll";
const char* const kProgramEnding = ".exe";
#else
const char* const kLibraryEnding = ".so";
const char* const kProgramEnding = "";
#endif

QStringList linesOf(QByteArray bytes)
{
    return QString::fromUtf8(bytes.replace("\r\n", "\n")).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void copy(const QString& from, const QString& to)
{
    if (!QFile::copy(from, to))
        throw std::runtime_error("cannot copy " + from.toStdString());
}

} // namespace

QStringList ComponentFolder::Run::said(const QString& word) const
{
    QStringList result;
    for (const QString& line : lines) {
        if (line == word || line.startsWith(word + QLatin1Char(' ')))
            result.append(line);
    }
    return result;
}

QString ComponentFolder::libraryEnding()
{
    return QLatin1String(kLibraryEnding);
}

ComponentFolder::ComponentFolder()
{
    copy(QStringLiteral(COMPONENT_HOST),
         at(QStringLiteral("component_host") + QLatin1String(kProgramEnding)));
}

void ComponentFolder::library(const QString& path, const QString& kind, const QString& ending)
{
    makeFolderOf(path);
    copy(QStringLiteral(COMPONENT_FOLDER "/fixture_") + kind + libraryEnding(), at(path + ending));
}

void ComponentFolder::file(const QString& path, const QByteArray& bytes)
{
    makeFolderOf(path);
    QFile target(at(path));
    if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

void ComponentFolder::list(const QString& folder, const QMap<int, QByteArray>& names)
{
    QByteArray text;
    for (auto it = names.begin(); it != names.end(); ++it)
        text += "[COMPONENT" + QByteArray::number(it.key()) + "]\nname=" + it.value() + "\n";
    file(folder + (folder.isEmpty() ? QString() : QStringLiteral("/")) + QStringLiteral("components.ini"),
         text);
}

ComponentFolder::Run ComponentFolder::run(const QStringList& orders) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // Where standard error is no console, the log would go to the debugger on Windows.
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.start(at(QStringLiteral("component_host")), orders);
    const bool ended = process.waitForFinished(40000);
    Run run{linesOf(process.readAllStandardOutput()), linesOf(process.readAllStandardError())};
    run.lines = run.lines.mid(0, run.lines.indexOf(QStringLiteral("end")));
    if (!ended) {
        run.lines.append(QStringLiteral("HUNG"));
        process.kill();
        process.waitForFinished();
    } else if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        run.lines.append(QStringLiteral("CRASHED"));
    }
    return run;
}

void ComponentFolder::makeFolderOf(const QString& path) const
{
    QDir().mkpath(QFileInfo(at(path)).path());
}
