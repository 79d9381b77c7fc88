import QtQuick 2.15

// The open guide at its current step, with the reason for a rejection. Escape closes it.
Panel {
    id: pane

    objectName: "guidePane"
    visible: guide.open && !guide.dialog
    implicitHeight: 38 + lines.height + 12
    title: guide.title
    border.color: guide.destructive ? theme.bad : theme.accent
    Keys.onEscapePressed: guide.dismiss()
    tools: [
        PushButton {
            objectName: "guideStart"
            small: true
            primary: true
            destructive: guide.destructive
            visible: guide.canStart
            enabled: guide.rejection === ""
            text: qsTr("Start")
            onClicked: guide.start()
        },
        PushButton { objectName: "guideClose"; small: true; text: qsTr("Close"); onClicked: guide.dismiss() }
    ]

    Column {
        id: lines
        x: 6
        width: parent.width - 12
        spacing: 8

        StepRow { visible: guide.steps.length > 0 }
        FactList { width: parent.width }
        LossNotice {
            prefix: "guide"
            visible: guide.destructive
            width: parent.width
            realDisk: host.realDisks
            risk: guide.risk
            losses: guide.losses
        }
        Words { visible: text !== ""; width: parent.width; text: guide.text; font.pixelSize: 12; color: theme.muted; wrapMode: Text.Wrap }
        Rectangle {
            visible: guide.rejection !== ""
            width: parent.width
            height: rejection.height + 12
            radius: 6
            color: theme.badSurface
            Words {
                id: rejection
                objectName: "guideRejection"
                anchors { left: parent.left; right: parent.right; margins: 10; verticalCenter: parent.verticalCenter }
                text: guide.rejection
                color: theme.bad
                wrapMode: Text.Wrap
            }
        }
    }
}
