#include "host/objects/WindowSize.h"

#include <QtGui/QScreen>
#include <QtGui/QWindow>

namespace host {

namespace {

// The size of the frame is unknown until the window is shown. Usual title bars have less than 48 pixels.
constexpr QSize kFrame(16, 48);

} // namespace

QSize fittingSize(const QSize& wanted, const QSize& available)
{
    return wanted.boundedTo(available - kFrame);
}

void fitScreen(QWindow& window, double unit)
{
    if (window.screen() == nullptr)
        return;
    const QSize size = fittingSize(window.size() * unit, window.screen()->availableSize());
    window.setMinimumSize(window.minimumSize().boundedTo(size));
    window.resize(size);
}

} // namespace host
