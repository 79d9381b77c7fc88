import QtQuick 2.15

// A task: its title, its progress, its sender, and a button that cancels it.
Item {
    id: row

    readonly property bool cancellable: model.state === "waiting" || model.state === "running"
    readonly property var states: ({ waiting: qsTr("waiting"), done: qsTr("done"), failed: qsTr("failed"), cancelled: qsTr("cancelled") })
    readonly property var tones: ({ waiting: "plain", running: "accent", done: "good", failed: "bad", cancelled: "warn" })

    signal cancelled()

    Accessible.role: Accessible.ListItem
    Accessible.name: model.title
    Accessible.description: [badge.text, model.detail, model.error].filter(text => text !== "").join(", ")
    height: lines.y + lines.height + 14 * theme.unit

    Words {
        objectName: "taskTitle"
        anchors { left: parent.left; leftMargin: 8; right: badge.left; rightMargin: 8; top: parent.top; topMargin: 4 * theme.unit }
        text: model.title
        font.weight: Font.DemiBold
    }
    Badge {
        id: badge
        width: Math.min(implicitWidth, parent.width * 0.4)
        objectName: "taskState"
        anchors { right: cancel.visible ? cancel.left : parent.right; rightMargin: 8; top: parent.top; topMargin: 3 * theme.unit }
        text: model.state !== "running" ? row.states[model.state]
              : confirmation.open ? qsTr("waiting for confirmation") : Math.floor(model.progress * 100) + " %"
        tone: row.tones[model.state] || "plain"
    }
    PushButton {
        id: cancel
        objectName: "cancelButton"
        anchors { right: parent.right; rightMargin: 8; top: parent.top; topMargin: theme.unit }
        small: true
        text: qsTr("Cancel")
        Accessible.description: model.title
        visible: row.cancellable
        onClicked: row.cancelled()
    }
    Column {
        id: lines
        anchors { left: parent.left; leftMargin: 8; right: parent.right; rightMargin: 8; top: parent.top; topMargin: 26 * theme.unit }

        Words { objectName: "taskDetail"; width: parent.width; text: model.detail; font.pixelSize: theme.small; color: theme.muted }
        Words {
            objectName: "taskAside"
            width: parent.width
            visible: text !== ""
            text: [model.remaining, model.client].filter(function(part) { return part !== "" }).join(" \u00b7 ")
            font.pixelSize: theme.small
            color: theme.muted
        }
        Words { objectName: "taskError"; width: parent.width; visible: text !== ""; text: model.error; font.pixelSize: theme.small; color: theme.bad }
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 8; bottomMargin: 4 }
        height: 4
        radius: 2
        color: theme.raised
        visible: model.state === "running"
        Accessible.role: Accessible.ProgressBar
        Accessible.name: model.title
        Accessible.description: badge.text
        Rectangle {
            objectName: "taskProgress"
            height: parent.height
            radius: 2
            width: parent.width * model.progress
            color: theme.accent
        }
    }
}
