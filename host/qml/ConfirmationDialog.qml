import QtQuick 2.15
import QtQuick.Controls 2.15

// The question before an order destroys data on a disk. Escape and the button with the focus keep the data.
Popup {
    id: dialog

    readonly property string warning: confirmation.risk
        ? qsTr("This order changes a real disk. If it fails, this data can be lost:")
        : qsTr("This order changes a real disk. It destroys this data permanently:")

    parent: Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(600, parent.width - 40)
    padding: 24
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    onClosed: if (confirmation.open) confirmation.reject()
    onOpened: keepButton.forceActiveFocus()
    Overlay.modal: Rectangle { color: theme.shade }
    background: Rectangle {
        radius: 10
        color: theme.surface
        border { width: 2; color: theme.bad }
    }

    Connections {
        target: confirmation
        function onChanged() { confirmation.open ? dialog.open() : dialog.close() }
    }

    contentItem: Column {
        objectName: "confirmationDialog"
        spacing: 14
        Accessible.role: Accessible.AlertMessage
        Accessible.name: [confirmation.operation, confirmation.disk, dialog.warning].concat(confirmation.losses).join(". ")

        Words { objectName: "confirmationTitle"; width: parent.width; text: confirmation.operation; font { pixelSize: 18; weight: Font.DemiBold } }
        Words { objectName: "confirmationDisk"; width: parent.width; text: confirmation.disk; elide: Text.ElideMiddle }
        Words { objectName: "confirmationWarning"; width: parent.width; text: dialog.warning; wrapMode: Text.Wrap; color: theme.bad; font.weight: Font.DemiBold }
        ListView {
            id: losses
            objectName: "confirmationLosses"
            width: parent.width
            height: Math.min(contentHeight, dialog.parent.height - 280)
            visible: count > 0
            clip: true
            spacing: 4
            model: confirmation.losses
            activeFocusOnTab: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: true
            highlightMoveDuration: 0
            ScrollBar.vertical: Scroller {}
            delegate: Words {
                objectName: "confirmationLoss"
                width: ListView.view.width - 12
                text: modelData
                font.pixelSize: 12
                wrapMode: Text.Wrap
            }
            FocusRing { shown: losses.activeFocus; anchors.margins: 0 }
        }
        Words {
            objectName: "confirmationNoPartition"
            visible: losses.count === 0
            width: parent.width
            text: qsTr("The disk has no known partition. Data without a partition is lost.")
            wrapMode: Text.Wrap
            font.pixelSize: 12
        }
        Row {
            anchors.right: parent.right
            spacing: 10
            PushButton { objectName: "confirmationConfirm"; text: qsTr("Change the disk"); onClicked: confirmation.confirm() }
            PushButton { id: keepButton; objectName: "confirmationKeep"; primary: true; text: qsTr("Do not change"); onClicked: confirmation.reject() }
        }
    }
}
