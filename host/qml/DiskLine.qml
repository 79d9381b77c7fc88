import QtQuick 2.15

// The properties of a disk in one line, for the compact view.
Item {
    Words {
        id: name
        objectName: "diskName"
        anchors.verticalCenter: parent.verticalCenter
        text: model.name
        font.weight: Font.DemiBold
    }
    Words {
        id: size
        objectName: "diskSize"
        anchors { left: name.right; leftMargin: 8; baseline: name.baseline }
        text: model.sizeText
        font.pixelSize: theme.small
    }
    Words {
        objectName: "diskKind"
        anchors { left: size.right; leftMargin: 8; right: parent.right; baseline: name.baseline }
        visible: model.flags.length === 0
        text: model.kind
        font.pixelSize: theme.small
        color: theme.muted
    }
    Badge {
        objectName: "diskFlags"
        anchors { left: size.right; leftMargin: 8; verticalCenter: parent.verticalCenter }
        visible: model.flags.length > 0
        width: Math.max(0, Math.min(implicitWidth, parent.width - x))
        text: model.flags.join(", ")
        tone: model.alarm ? "bad" : "plain"
    }
}
