#include "host/udisks/StateFile.h"

#include "host/OutputFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLockFile>

namespace host {

namespace {

constexpr int kLockMs = 2000;

QString stateFolder()
{
    const QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    // The standard for these folders ignores relative paths.
    return (QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QLatin1String("/.local/state")) +
           QLatin1String("/zorhost");
}

} // namespace

StateFile::StateFile(const QString& name) : path_(stateFolder() + QLatin1Char('/') + name) {}

QMap<QString, QString> StateFile::read(Rejection& problem) const
{
    QMap<QString, QString> strings;
    QFile file(path_);
    if (!file.exists())
        return strings;
    // Opening a pipe would wait for its writer.
    const bool isSpecial = isSpecialFile(path_);
    if (isSpecial || !file.open(QIODevice::ReadOnly)) {
        problem = Text(QT_TRANSLATE_NOOP("Sandbox", "The file %1 cannot be read: %2."),
                       {path_, isSpecial ? QStringLiteral("not a regular file") : file.errorString()});
        return strings;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject())
        problem =
            Text(QT_TRANSLATE_NOOP("Sandbox", "The file %1 is damaged, so its content is ignored."), {path_});
    const QJsonObject object = document.object();
    for (auto it = object.begin(); it != object.end(); ++it)
        strings.insert(it.key(), it->toString());
    return strings;
}

Rejection StateFile::write(const QMap<QString, QString>& changes) const
{
    const auto failure = [this](const QString& reason) {
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The file %1 cannot be written: %2."), {path_, reason});
    };
    QDir().mkpath(QFileInfo(path_).path());
    QLockFile lock(path_ + QLatin1String(".lock"));
    if (!lock.tryLock(kLockMs))
        return failure(lock.error() == QLockFile::LockFailedError
                           ? QStringLiteral("another program has locked it")
                           : QStringLiteral("its folder does not exist or cannot be written"));
    Rejection ignored;
    QMap<QString, QString> strings = read(ignored);
    for (auto it = changes.begin(); it != changes.end(); ++it)
        strings.insert(it.key(), it.value());
    QJsonObject object;
    for (auto it = strings.begin(); it != strings.end(); ++it) {
        if (!it->isEmpty())
            object.insert(it.key(), *it);
    }
    const QString error = OutputFile::replace(path_, QJsonDocument(object).toJson());
    return error.isEmpty() ? Rejection() : failure(error);
}

} // namespace host
