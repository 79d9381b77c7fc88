#pragma once

#include <QtCore/QSaveFile>
#include <QtCore/QString>
#include <QtGui/QImage>

class QQuickWindow;

namespace host {

/// The window as it is now, drawn anew; null if that cannot be done. It must be shown, be it without a
/// display. Application thread.
QImage pictureOf(QQuickWindow& window);

/// The file that a picture of the window goes to. It is opened before anything else is done, so that a bad
/// path is known at once, and takes its name only when the picture is whole.
class Screenshot
{
public:
    explicit Screenshot(const QString& path) : file_(path) {}

    /// Makes the file ready. Gives what is wrong with it in one line, empty if nothing.
    QString open();
    /// Draws the window as it is now and writes it as PNG. Gives the error as open() does.
    QString take(QQuickWindow& window);

private:
    QString fault() const;

    QSaveFile file_;
};

} // namespace host
