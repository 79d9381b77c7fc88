#include "host/OutputFile.h"

#include <QtCore/QFileInfo>

namespace host {

bool isSpecialFile(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() && !file.isFile();
}

QString writeAll(QFileDevice& file, const QByteArray& bytes)
{
    qint64 written = 0;
    while (written < bytes.size()) {
        // After a partial write only the next one reports the reason.
        const qint64 count = file.write(bytes.constData() + written, bytes.size() - written);
        if (count <= 0)
            return file.errorString();
        written += count;
    }
    return QString();
}

QString OutputFile::open()
{
    if (isSpecialFile(file_.fileName()))
        return QStringLiteral("not a regular file");
    // QSaveFile ignores an error when its buffer is flushed at the end, and would keep a truncated file.
    return file_.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ? QString() : file_.errorString();
}

QString OutputFile::commit()
{
    return file_.commit() ? QString() : file_.errorString();
}

QString OutputFile::write(const QByteArray& content)
{
    return writeAll(file_, content);
}

QString OutputFile::replace(const QString& path, const QByteArray& content)
{
    OutputFile file(path);
    QString error = file.open();
    if (error.isEmpty())
        error = file.write(content);
    return error.isEmpty() ? file.commit() : error;
}

QString OutputFile::tryReplace(const QString& path, const QByteArray& content)
{
    OutputFile file(path);
    const QString error = file.open();
    return error.isEmpty() ? file.write(content) : error;
}

} // namespace host
