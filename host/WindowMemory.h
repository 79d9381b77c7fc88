#pragma once

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QString>

class QWindow;

namespace host {

class Theme;

/// Remembers the size and the theme of the window between runs, in an INI file. A missing, damaged or
/// unwritable file has no other effect than that the defaults apply. Application thread.
class WindowMemory : public QObject
{
    Q_OBJECT

public:
    /// The file in the user's configuration folder.
    static QString userFile();

    /// @p window and @p theme must outlive this object. A theme that the user chooses is written at once.
    WindowMemory(const QString& file, QWindow& window, Theme& theme, QObject* parent = nullptr);

    QString file() const { return file_; }
    /// Applies the remembered values. The window becomes no larger than @p available, in logical pixels, and
    /// no smaller than its minimum. @p keepsTheme: the command line has chosen the theme.
    void restore(const QSize& available, bool keepsTheme);
    /// Writes the size of the window. Returns false if the file cannot be written.
    bool save();

private:
    bool write(const QVariantMap& values);

    QString file_;
    QWindow& window_;
    Theme& theme_;
};

} // namespace host
