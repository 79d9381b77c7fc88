#include "host/Screenshot.h"

#include <QtCore/QBuffer>
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
    return described(file_.open());
}

QString Screenshot::take(QQuickWindow& window)
{
    const QImage picture = pictureOf(window);
    if (picture.isNull())
        return QStringLiteral("the window could not be drawn");
    // Encoded in memory, because the encoder gives no reason for a failed write.
    QByteArray png;
    QBuffer buffer(&png);
    if (!buffer.open(QIODevice::WriteOnly) || !picture.save(&buffer, "PNG", kSmallest))
        return QStringLiteral("the picture could not be encoded");
    const QString error = file_.write(png);
    return described(error.isEmpty() ? file_.commit() : error);
}

QString Screenshot::described(const QString& error) const
{
    return error.isEmpty() ? QString() : QStringLiteral("screenshot %1: %2").arg(path_, error);
}

QImage pictureOf(QQuickWindow& window)
{
    const QImage drawn = window.grabWindow();
    // On the offscreen platform the window cannot be grabbed, but its screen can.
    return drawn.isNull() ? window.screen()->grabWindow(window.winId()).toImage() : drawn;
}

} // namespace host
