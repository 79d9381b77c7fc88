import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15

// Content that scrolls if it is higher than the area. The item with the keyboard focus is scrolled into view.
Flickable {
    id: area

    default property alias content: inner.data
    property alias spacing: inner.spacing
    readonly property real step: 40 * theme.unit
    readonly property Item focusItem: Window.activeFocusItem

    function holds(item) {
        for (; item !== null; item = item.parent) {
            if (item === inner)
                return true
        }
        return false
    }
    function reveal() {
        if (focusItem === null || !holds(focusItem))
            return
        const top = focusItem.mapToItem(inner, 0, 0).y
        if (top < contentY || top + focusItem.height > contentY + height)
            scrollTo(top + focusItem.height - height < top ? top + focusItem.height - height : top)
    }
    function scrollTo(position) { contentY = Math.max(0, Math.min(position, contentHeight - height)) }

    implicitHeight: inner.height
    contentWidth: width
    contentHeight: inner.height
    clip: true
    interactive: contentHeight > height
    activeFocusOnTab: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: Scroller {}
    Keys.onUpPressed: scrollTo(contentY - step)
    Keys.onDownPressed: scrollTo(contentY + step)
    onFocusItemChanged: reveal()
    onHeightChanged: scrollTo(contentY)
    onContentHeightChanged: scrollTo(contentY)

    Column {
        id: inner
        // The scroll bar never covers the content.
        width: area.width - 12
    }
    FocusRing { parent: area; shown: area.activeFocus; anchors.margins: 0 }
}
