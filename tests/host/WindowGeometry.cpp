#include "tests/host/WindowGeometry.h"

#include <QtQuick/QQuickItem>

#include <vector>

namespace geometry {

namespace {

// Positions are rounded to whole pixels while drawing.
constexpr double kTolerance = 1.01;
// A scrollable area with less height shows less than a line of text.
constexpr double kMinHeight = 20;

struct Control
{
    QQuickItem* item;
    QRectF place;      ///< in the window
    QRectF shown;      ///< the part that no scrollable area hides
    QQuickItem* layer; ///< the page or the dialogs
};

bool isButton(const QQuickItem* item)
{
    return item->inherits("QQuickAbstractButton");
}

bool isText(const QQuickItem* item)
{
    return item->inherits("QQuickText") && !item->property("text").toString().isEmpty();
}

bool isArea(const QQuickItem* item)
{
    return item->inherits("QQuickFlickable");
}

QRectF placeInWindow(const QQuickItem* item)
{
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

// A text that is narrower than its item does not use the whole item.
QRectF placeOfControl(const QQuickItem* item)
{
    QRectF place = placeInWindow(item);
    constexpr int kAlignLeft = Qt::AlignLeft;
    if (isText(item) && item->property("horizontalAlignment").toInt() == kAlignLeft)
        place.setWidth(std::min(place.width(), item->property("contentWidth").toDouble()));
    return place;
}

QString nameOf(const QQuickItem* item)
{
    const QString text = item->property("text").toString().left(40);
    const QQuickItem* named = item;
    while (named != nullptr && named->objectName().isEmpty())
        named = named->parentItem();
    const QRectF place = placeOfControl(item);
    return QStringLiteral("%1 \"%2\" (%3, %4, %5 x %6)")
        .arg(named == nullptr ? QStringLiteral("item") : named->objectName(), text)
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height());
}

Control controlOf(QQuickItem* item, const QQuickItem* root)
{
    Control control{item, placeOfControl(item), placeOfControl(item), item};
    for (QQuickItem* each = item->parentItem(); each != root; each = each->parentItem()) {
        if (isArea(each))
            control.shown = control.shown.intersected(placeInWindow(each));
        control.layer = each;
    }
    return control;
}

void collect(QQuickItem* parent, const QQuickItem* root, std::vector<Control>& found)
{
    const QList<QQuickItem*> children = parent->childItems();
    for (QQuickItem* child : children) {
        if (!child->isVisible() || child->opacity() == 0)
            continue;
        if (isButton(child) || isText(child))
            found.push_back(controlOf(child, root));
        // A button's text belongs to the button.
        if (!isButton(child))
            collect(child, root, found);
    }
}

std::vector<Control> controlsOf(QQuickWindow& window)
{
    std::vector<Control> found;
    collect(window.contentItem(), window.contentItem(), found);
    return found;
}

bool contains(const QRectF& outer, const QRectF& inner)
{
    return inner.left() >= outer.left() - kTolerance && inner.right() <= outer.right() + kTolerance &&
           inner.top() >= outer.top() - kTolerance && inner.bottom() <= outer.bottom() + kTolerance;
}

// The reason why a user cannot reach the control; empty if it can be reached.
QString obstacle(const Control& control, const QRectF& window)
{
    QRectF place = control.place;
    for (QQuickItem* each = control.item->parentItem(); each != nullptr; each = each->parentItem()) {
        if (!isArea(each))
            continue;
        const QRectF area = placeInWindow(each);
        if (place.left() < area.left() - kTolerance || place.right() > area.right() + kTolerance)
            return QStringLiteral("wider than its area");
        const bool hidden = !contains(area, place);
        if (hidden && !each->property("interactive").toBool())
            return QStringLiteral("in an area that does not scroll");
        if (hidden && area.height() < kMinHeight)
            return QStringLiteral("in an area of %1 pixels").arg(area.height());
        place = area;
    }
    return contains(window, place) ? QString() : QStringLiteral("outside the window");
}

QString elidedText(const QQuickItem* button)
{
    const QList<QQuickItem*> children = button->childItems();
    for (const QQuickItem* child : children) {
        if (child->inherits("QQuickText") && child->property("truncated").toBool())
            return child->property("text").toString();
    }
    return QString();
}

bool isAncestor(const QQuickItem* ancestor, const QQuickItem* item)
{
    for (; item != nullptr; item = item->parentItem()) {
        if (item == ancestor)
            return true;
    }
    return false;
}

bool overlap(const Control& a, const Control& b)
{
    if (a.layer != b.layer || isAncestor(a.item, b.item) || isAncestor(b.item, a.item))
        return false;
    const QRectF common = a.shown.intersected(b.shown);
    return common.width() > kTolerance && common.height() > kTolerance;
}

} // namespace

QStringList misplaced(QQuickWindow& window)
{
    QStringList found;
    const QRectF whole(0, 0, window.width(), window.height());
    for (const Control& control : controlsOf(window)) {
        const QString reason = obstacle(control, whole);
        if (!reason.isEmpty())
            found.append(QStringLiteral("%1 is %2").arg(nameOf(control.item), reason));
        if (isButton(control.item) && !elidedText(control.item).isEmpty())
            found.append(QStringLiteral("%1 has an elided text").arg(nameOf(control.item)));
    }
    return found;
}

QStringList overlapping(QQuickWindow& window)
{
    QStringList found;
    const std::vector<Control> controls = controlsOf(window);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            if (overlap(controls[i], controls[j]))
                found.append(
                    QStringLiteral("%1 covers %2").arg(nameOf(controls[i].item), nameOf(controls[j].item)));
        }
    }
    return found;
}

} // namespace geometry
