#include "tests/plugin/ComponentFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>

#include <stdexcept>

namespace {

#ifdef Q_OS_WIN
const char* const kLibrarySuffix = ".dll";
const char* const kProgramSuffix = ".exe";
#else
const char* const kLibrarySuffix = ".so";
const char* const kProgramSuffix = "";
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

QStringList ComponentFolder::Run::linesWith(const QString& firstWord) const
{
    QStringList result;
    for (const QString& line : lines) {
        if (line == firstWord || line.startsWith(firstWord + QLatin1Char(' ')))
            result.append(line);
    }
    return result;
}

QString ComponentFolder::librarySuffix()
{
    return QLatin1String(kLibrarySuffix);
}

ComponentFolder::ComponentFolder()
{
    copy(QStringLiteral(COMPONENT_HOST),
         at(QStringLiteral("component_host") + QLatin1String(kProgramSuffix)));
}

void ComponentFolder::addLibrary(const QString& path, const QString& kind, const QString& suffix)
{
    makeParentFolder(path);
    copy(QStringLiteral(COMPONENT_FOLDER "/fixture_") + kind + librarySuffix(), at(path + suffix));
}

void ComponentFolder::writeFile(const QString& path, const QByteArray& bytes)
{
    makeParentFolder(path);
    QFile target(at(path));
    if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

void ComponentFolder::writeList(const QString& folder, const QMap<int, QByteArray>& names)
{
    QByteArray text;
    for (auto it = names.begin(); it != names.end(); ++it)
        text += "[COMPONENT" + QByteArray::number(it.key()) + "]\nname=" + it.value() + "\n";
    writeFile(folder + (folder.isEmpty() ? QString() : QStringLiteral("/")) +
                  QStringLiteral("components.ini"),
              text);
}

ComponentFolder::Run ComponentFolder::run(const QStringList& commands) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // On Windows the log would otherwise go to the debugger, because standard error is not a console.
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.start(at(QStringLiteral("component_host")), commands);
    const bool finished = process.waitForFinished(40000);
    Run run{linesOf(process.readAllStandardOutput()), linesOf(process.readAllStandardError())};
    run.lines = run.lines.mid(0, run.lines.indexOf(QStringLiteral("end")));
    if (!finished) {
        run.lines.append(QStringLiteral("HUNG"));
        process.kill();
        process.waitForFinished();
    } else if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        run.lines.append(QStringLiteral("CRASHED"));
    }
    return run;
}

void ComponentFolder::makeParentFolder(const QString& path) const
{
    QDir().mkpath(QFileInfo(at(path)).path());
}
