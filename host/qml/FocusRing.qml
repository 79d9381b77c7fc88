import QtQuick 2.15

// The frame around the item with the keyboard focus.
Rectangle {
    property bool shown: parent.activeFocus

    objectName: "focusRing"

    anchors.fill: parent
    anchors.margins: -3
    visible: shown
    color: "transparent"
    radius: 8
    border { width: 2; color: theme.accent }
}
