#pragma once

#include <QtCore/QStringList>
#include <QtQuick/QQuickWindow>

/// Checks the places of the texts and buttons of a window. Each result is a sentence for a failed test.
namespace geometry {

/// Texts and buttons that are neither inside the window nor inside a scrollable area, areas without room for
/// their content, and buttons with an elided text.
QStringList misplaced(QQuickWindow& window);

/// Pairs of visible texts and buttons that cover each other.
QStringList overlapping(QQuickWindow& window);

} // namespace geometry
