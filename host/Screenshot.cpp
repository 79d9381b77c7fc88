#include "host/Screenshot.h"

#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtQuick/QQuickWindow>

namespace host {

namespace {

// PNG is lossless; "quality" 0 means the best compression.
constexpr int kSmallest = 0;

} // namespace

QString Screenshot::open()
{
    return file_.open(QIODevice::WriteOnly) ? QString() : error();
}

QString Screenshot::take(QQuickWindow& window)
{
    const QImage picture = pictureOf(window);
    if (picture.isNull())
        return QStringLiteral("the window could not be drawn");
    return picture.save(&file_, "PNG", kSmallest) && file_.commit() ? QString() : error();
}

QString Screenshot::error() const
{
    return QStringLiteral("screenshot %1: %2").arg(file_.fileName(), file_.errorString());
}

QImage pictureOf(QQuickWindow& window)
{
    const QImage drawn = window.grabWindow();
    // On the offscreen platform the window cannot be grabbed, but its screen can.
    return drawn.isNull() ? window.screen()->grabWindow(window.winId()).toImage() : drawn;
}

} // namespace host
