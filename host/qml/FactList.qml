import QtQuick 2.15

// The facts of the open guide or page, one per line.
Column {
    spacing: 3

    Repeater {
        model: guide.facts
        Item {
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.name + ": " + modelData.value
            width: parent.width
            height: 20 * theme.unit
            Words {
                id: name
                width: 110 * theme.unit
                anchors.verticalCenter: parent.verticalCenter
                text: modelData.name
                font.pixelSize: theme.small
                color: theme.muted
            }
            Words {
                objectName: "factValue"
                anchors { left: name.right; right: parent.right; verticalCenter: parent.verticalCenter }
                text: modelData.value
            }
        }
    }
}
