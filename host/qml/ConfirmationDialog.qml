import QtQuick 2.15
import QtQuick.Controls 2.15

// The question before an order destroys data on a disk. Escape and the button with the focus keep the data.
QuestionDialog {
    id: dialog

    keepButton: dataButton
    onClosed: if (confirmation.open) confirmation.reject()

    Connections {
        target: confirmation
        function onChanged() { confirmation.open ? dialog.open() : dialog.close() }
    }

    contentItem: Column {
        objectName: "confirmationDialog"
        spacing: 14
        Accessible.role: Accessible.AlertMessage
        Accessible.name: [confirmation.operation, confirmation.disk, notice.warning].concat(confirmation.losses).join(". ")

        SpokenWords { objectName: "confirmationTitle"; width: parent.width; text: confirmation.operation; font { pixelSize: theme.title; weight: Font.DemiBold } }
        SpokenWords { objectName: "confirmationDisk"; width: parent.width; text: confirmation.disk; elide: Text.ElideMiddle }
        LossNotice {
            id: notice
            prefix: "confirmation"
            width: parent.width
            realDisk: true
            risk: confirmation.risk
            losses: confirmation.losses
            listLimit: dialog.parent.height - 280 * theme.unit
        }
        Row {
            anchors.right: parent.right
            spacing: 10
            PushButton { objectName: "confirmationConfirm"; text: qsTr("Change the disk"); onClicked: confirmation.confirm() }
            PushButton { id: dataButton; objectName: "confirmationKeep"; primary: true; text: qsTr("Do not change"); onClicked: confirmation.reject() }
        }
    }
}
