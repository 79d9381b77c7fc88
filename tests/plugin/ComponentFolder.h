#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/// A scratch application folder with component libraries and the host program that loads them.
class ComponentFolder
{
public:
    /// The suffix of this system's libraries, including the dot.
    static QString librarySuffix();

    /// Output of one run of the host. After a crash or a timeout the last line is "CRASHED" or "HUNG".
    struct Run
    {
        QStringList lines;  ///< standard output
        QStringList errors; ///< standard error
        /// The lines of standard output whose first word is @p firstWord.
        QStringList linesWith(const QString& firstWord) const;
    };

    ComponentFolder();

    /// Copies the library of the fixture @p kind (the base name of a file in components/) to @p path + @p
    /// suffix.
    void addLibrary(const QString& path, const QString& kind = QStringLiteral("Component"),
                    const QString& suffix = librarySuffix());
    void writeFile(const QString& path, const QByteArray& bytes);
    /// Writes `components.ini` with the given groups; an empty @p folder is the application's.
    void writeList(const QString& folder, const QMap<int, QByteArray>& names);
    Run run(const QStringList& commands) const;

private:
    QString at(const QString& path) const { return folder_.filePath(path); }
    void makeParentFolder(const QString& path) const;

    QTemporaryDir folder_;
};
