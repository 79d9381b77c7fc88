#include "host/Screenshot.h"

#include <QtCore/QBuffer>
#include <QtCore/QEventLoop>
#include <QtCore/QSharedPointer>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>
#include <QtQuick/QQuickWindow>

namespace host {

namespace {

// PNG is lossless; "quality" 0 means the best compression.
constexpr int kSmallest = 0;
constexpr int kFrameLimitMs = 10000;

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

namespace {

// Serves the event loop until the next frame contains the picture.
QImage scaledPictureOf(QQuickWindow& window)
{
    const QSize size = window.size() * window.effectiveDevicePixelRatio();
    const QSharedPointer<QQuickItemGrabResult> grabbed = window.contentItem()->grabToImage(size);
    if (!grabbed)
        return QImage();
    QEventLoop loop;
    QObject::connect(grabbed.data(), &QQuickItemGrabResult::ready, &loop, &QEventLoop::quit);
    QTimer::singleShot(kFrameLimitMs, &loop, &QEventLoop::quit);
    window.update();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    return grabbed->image();
}

} // namespace

QImage pictureOf(QQuickWindow& window)
{
    const QImage drawn = window.grabWindow();
    if (!drawn.isNull())
        return drawn;
    // On the offscreen platform the window cannot be grabbed. Its screen can, but only without a scale
    // factor.
    if (window.effectiveDevicePixelRatio() != 1)
        return scaledPictureOf(window);
    return window.screen()->grabWindow(window.winId()).toImage();
}

} // namespace host
