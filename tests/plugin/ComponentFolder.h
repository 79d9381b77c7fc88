#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/// An application folder with components in it, and the host that loads them as a process of its own.
class ComponentFolder
{
public:
    /// The ending of a library of this system, with its dot.
    static QString libraryEnding();

    /// The output of one run of the host; after a crash or a timeout its last line is "CRASHED" or "HUNG".
    struct Run
    {
        QStringList lines;  ///< standard output
        QStringList errors; ///< standard error
        /// The lines that begin with @p word.
        QStringList said(const QString& word) const;
    };

    ComponentFolder();

    /// Puts a library of the fixture @p kind (the name of a file in components/ without its ending) at @p
    /// path, which has no ending.
    void library(const QString& path, const QString& kind = QStringLiteral("Component"),
                 const QString& ending = libraryEnding());
    /// Writes a file.
    void file(const QString& path, const QByteArray& bytes);
    /// Writes `components.ini` of a folder, empty for the application's, with the named groups.
    void list(const QString& folder, const QMap<int, QByteArray>& names);
    Run run(const QStringList& orders) const;

private:
    QString at(const QString& path) const { return folder_.filePath(path); }
    void makeFolderOf(const QString& path) const;

    QTemporaryDir folder_;
};
