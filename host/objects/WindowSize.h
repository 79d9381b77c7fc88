#pragma once

#include <QtCore/QSize>

class QWindow;

namespace host {

/// The largest size up to @p wanted at which a window and its frame fit @p available, the part of the screen
/// without panels. Device-independent pixels.
QSize fittingSize(const QSize& wanted, const QSize& available);

/// Sets the size of a window that is not shown yet: its own size times @p unit, the scale of its texts, if it
/// fits the screen. Application thread.
void fitScreen(QWindow& window, double unit);

} // namespace host
