import QtQuick 2.15

// The effect of the open orders on an entry: hatching for data that will be lost, dashed places for new partitions, and the
// remaining time of the running order.
Item {
    id: overlay

    property bool lost: false
    property bool busy: false
    property var ghosts: []

    Hatching {
        objectName: "lostHatching"
        anchors { fill: parent; margins: 1 }
        visible: overlay.lost
        opacity: 0.4
    }
    Repeater {
        model: overlay.ghosts
        Rectangle {
            objectName: "ghost"
            property string text: modelData.title
            x: overlay.width * modelData.begin
            width: Math.max(4, overlay.width * (modelData.end - modelData.begin))
            height: overlay.height
            radius: 5
            color: theme.accentSurface
            border { width: 2; color: theme.accent }
            Hatching { anchors { fill: parent; margins: 2 } ink: theme.accent; opacity: 0.25 }
            Words {
                anchors { left: parent.left; right: parent.right; margins: 6; top: parent.top; topMargin: 9 }
                visible: parent.width >= 40 * theme.unit
                text: parent.text
                font { pixelSize: theme.small; weight: Font.DemiBold }
                color: theme.accent
            }
        }
    }
    Badge {
        objectName: "remainingBadge"
        anchors { right: parent.right; bottom: parent.bottom; margins: 5 }
        visible: overlay.busy && host.remaining !== "" && overlay.width >= implicitWidth + 10
        height: 18 * theme.unit
        tone: "accent"
        text: host.remaining
    }
}
