import QtQuick 2.15

// Up, Down, Home and End scroll a list, which forwards its keys to this item.
Item {
    id: keys

    property ListView view
    readonly property real step: 40 * theme.unit
    readonly property real lowest: Math.max(view.originY, view.originY + view.contentHeight - view.height)

    // Before and after a key scrolls the list.
    signal starting()
    signal scrolled()

    function scrollTo(position) { view.contentY = Math.max(view.originY, Math.min(lowest, position)) }

    function scroll(key) {
        if (key === Qt.Key_Home)
            view.positionViewAtBeginning()
        else if (key === Qt.Key_End)
            view.positionViewAtEnd()
        else
            scrollTo(view.contentY + (key === Qt.Key_Up ? -step : step))
    }

    Keys.onPressed: {
        event.accepted = [Qt.Key_Up, Qt.Key_Down, Qt.Key_Home, Qt.Key_End].includes(event.key)
        if (!event.accepted)
            return
        starting()
        scroll(event.key)
        scrolled()
    }
}
