import QtQuick 2.15
import QtQuick.Controls 2.15

// The question before a task that destroys data is interrupted.
QuestionDialog {
    id: dialog

    readonly property string warning: interruption.closesWindow
        ? qsTr("Closing the window cancels this task. The partitions that it changes remain incomplete and can be unusable.")
        : qsTr("This task is changing data. If it is cancelled, the partitions that it changes remain incomplete and can be unusable.")

    keepButton: continueButton
    onClosed: if (interruption.open) interruption.reject()

    Connections {
        target: interruption
        function onChanged() { interruption.open ? dialog.open() : dialog.close() }
    }

    contentItem: Column {
        objectName: "interruptionDialog"
        spacing: 14
        Accessible.role: Accessible.AlertMessage
        Accessible.name: [interruption.operation, interruption.work, dialog.warning].join(". ")

        SpokenWords { objectName: "interruptionTitle"; width: parent.width; text: interruption.operation; font { pixelSize: theme.title; weight: Font.DemiBold } }
        SpokenWords { objectName: "interruptionWork"; width: parent.width; text: interruption.work; elide: Text.ElideMiddle; color: theme.muted }
        SpokenWords { objectName: "interruptionWarning"; width: parent.width; text: dialog.warning; wrapMode: Text.Wrap; color: theme.bad; font.weight: Font.DemiBold }
        Row {
            anchors.right: parent.right
            spacing: 10
            PushButton {
                objectName: "interruptionConfirm"
                destructive: true
                text: interruption.closesWindow ? qsTr("Cancel the task and close") : qsTr("Cancel the task")
                onClicked: interruption.confirm()
            }
            PushButton { id: continueButton; objectName: "interruptionKeep"; primary: true; text: qsTr("Continue the task"); onClicked: interruption.reject() }
        }
    }
}
