#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

/// During the lifetime of this object, the path of the application's executable is in a scratch folder. A
/// sibling of that folder is the working directory, another is TEMP. One at a time, on the application
/// thread, while no other thread runs.
class ScratchApplication
{
public:
    ScratchApplication();
    ~ScratchApplication();
    ScratchApplication(const ScratchApplication&) = delete;
    ScratchApplication& operator=(const ScratchApplication&) = delete;

    /// Gives the application's executable another name in the same folder.
    void rename(const QString& fileName) { moveTo(folder() + QLatin1Char('/') + fileName); }

    /// The application's folder.
    QString folder() const { return dir_.path() + QLatin1String("/app"); }
    /// The working directory, a sibling of the application's folder.
    QString current() const { return dir_.path() + QLatin1String("/work"); }
    /// The parent of both.
    QString root() const { return dir_.path(); }
    /// The value of TEMP.
    QString temp() const { return dir_.path() + QLatin1String("/temp"); }

    /// Writes a file, with the folders above it.
    static void write(const QString& path, const QByteArray& content);
    /// Writes an executable shell script.
    static void script(const QString& path, const QByteArray& body);
    /// The content of a file, empty if it is missing.
    static QByteArray read(const QString& path);

private:
    void moveTo(const QString& executable);

    QTemporaryDir dir_;
    QString previousExecutable_;
    QString previousCurrent_;
    QByteArray previousTemp_;
};
