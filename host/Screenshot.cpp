#include "host/Screenshot.h"

#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtQuick/QQuickWindow>

namespace host {

namespace {

// PNG loses nothing; the "quality" is how much time is left for packing.
constexpr int kSmallest = 0;

} // namespace

QString Screenshot::open()
{
    return file_.open(QIODevice::WriteOnly) ? QString() : fault();
}

QString Screenshot::take(QQuickWindow& window)
{
    const QImage picture = pictureOf(window);
    if (picture.isNull())
        return QStringLiteral("the window could not be drawn");
    return picture.save(&file_, "PNG", kSmallest) && file_.commit() ? QString() : fault();
}

QString Screenshot::fault() const
{
    return QStringLiteral("screenshot %1: %2").arg(file_.fileName(), file_.errorString());
}

QImage pictureOf(QQuickWindow& window)
{
    const QImage drawn = window.grabWindow();
    // Without a display the window is drawn by now, but gives nothing away itself; its screen does.
    return drawn.isNull() ? window.screen()->grabWindow(window.winId()).toImage() : drawn;
}

} // namespace host
