#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSaveFile>
#include <QtCore/QString>

namespace host {

/// A file that is replaced as a whole: the new content is written to a temporary file next to it, synced and
/// renamed. On a failure the old file remains. Only a regular file is replaced, because a rename would turn a
/// device or a pipe into an ordinary file. A symbolic link remains, and the file that it leads to is
/// replaced.
///
/// Each member returns the error in one line; empty on success.
class OutputFile
{
public:
    explicit OutputFile(const QString& path) : file_(path) {}

    /// Creates the temporary file.
    QString open();
    /// Writes to the temporary file.
    QString write(const QByteArray& content);
    /// Replaces the file.
    QString commit();

    static QString replace(const QString& path, const QByteArray& content);
    /// Writes the content to the temporary file and removes it, so that the file itself remains.
    static QString tryReplace(const QString& path, const QByteArray& content);

private:
    QSaveFile file_;
};

/// Writes all bytes to a file that was opened without a buffer. Returns the error; empty on success.
QString writeAll(QFileDevice& file, const QByteArray& bytes);

/// Whether the path exists and is not a regular file. Symbolic links are followed.
bool isSpecialFile(const QString& path);

} // namespace host
