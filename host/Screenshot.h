#pragma once

#include "host/OutputFile.h"

#include <QtCore/QString>
#include <QtGui/QImage>

class QQuickWindow;

namespace host {

/// Renders the window; null on failure. The window must be visible, possibly on the offscreen platform.
/// Application thread.
QImage pictureOf(QQuickWindow& window);

/// The file for a picture of the window. It is opened at the start, so that an invalid path is reported at
/// once, and replaced only by a complete picture.
class Screenshot
{
public:
    explicit Screenshot(const QString& path) : path_(path), file_(path) {}

    /// Opens the file. Returns the error in one line; empty on success.
    QString open();
    /// Renders the window and writes it as PNG. Returns the error like open().
    QString take(QQuickWindow& window);

private:
    QString described(const QString& error) const;

    QString path_;
    OutputFile file_;
};

} // namespace host
