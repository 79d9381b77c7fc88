#include "tests/support/ScratchApplication.h"

#include "tests/support/Script.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/private/qcoreapplication_p.h>

#include <stdexcept>

ScratchApplication::ScratchApplication()
    : previousExecutable_(QCoreApplication::applicationFilePath()),
      previousCurrent_(QDir::currentPath()),
      previousTemp_(qgetenv("TEMP"))
{
    for (const QString& path : {folder(), current(), temp()}) {
        if (!QDir().mkpath(path))
            throw std::runtime_error("no scratch folder");
    }
    moveTo(folder() + QLatin1String("/Partition Manager.exe"));
    QDir::setCurrent(current());
    qputenv("TEMP", QFile::encodeName(QDir::toNativeSeparators(temp())));
}

ScratchApplication::~ScratchApplication()
{
    moveTo(previousExecutable_);
    QDir::setCurrent(previousCurrent_);
    if (previousTemp_.isNull())
        qunsetenv("TEMP");
    else
        qputenv("TEMP", previousTemp_);
}

void ScratchApplication::moveTo(const QString& executable)
{
    // Qt has no public setter for either path.
    QCoreApplicationPrivate::setApplicationFilePath(executable);
    auto* application =
        static_cast<QCoreApplicationPrivate*>(QObjectPrivate::get(QCoreApplication::instance()));
    application->cachedApplicationDirPath = QFileInfo(executable).path();
}

void ScratchApplication::write(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

void ScratchApplication::script(const QString& path, const QByteArray& body)
{
    QDir().mkpath(QFileInfo(path).path());
    writeScript(path, body);
}

QByteArray ScratchApplication::read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
