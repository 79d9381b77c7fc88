#include "tests/support/Script.h"

#include <QtCore/QFile>

#include <stdexcept>

namespace {

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

} // namespace

#ifdef Q_OS_WIN

void writeScript(const QString& path, const QByteArray& body)
{
    const QString suffix = QStringLiteral(".exe");
    const QString program = path.endsWith(suffix, Qt::CaseInsensitive) ? path : path + suffix;
    write(program + QStringLiteral(".sh"), body);
    const QString standIn =
        qEnvironmentVariable("AIBRIDGE_BUILD_DIR") + QStringLiteral("/tests/shell/ShellProgram.exe");
    if (!QFile::exists(program) && !QFile::copy(standIn, program))
        throw std::runtime_error("cannot make " + program.toStdString());
}

#else

void writeScript(const QString& path, const QByteArray& body)
{
    // Written under another name first, because a program that is open for writing cannot be started.
    const QString fresh = path + QStringLiteral(".new");
    write(fresh, "#!/bin/sh\n" + body);
    QFile::setPermissions(fresh, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile::remove(path);
    if (!QFile::rename(fresh, path))
        throw std::runtime_error("cannot make " + path.toStdString());
}

#endif
