import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15

// A page that covers the window until the user closes it: boot media, toolbox, disk health. The
// focus returns when it closes.
Popup {
    id: dialog

    property Item focusBefore: null

    objectName: "pageDialog"
    parent: Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(520 * theme.unit, parent.width - 40)
    padding: 24
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    onAboutToShow: focusBefore = dialog.parent.Window.activeFocusItem
    onClosed: {
        if (guide.dialog)
            guide.dismiss()
        // A guide that has opened since then keeps the focus.
        if (!guide.open && focusBefore !== null && focusBefore.visible)
            focusBefore.forceActiveFocus()
    }
    onOpened: closeButton.forceActiveFocus()
    Overlay.modal: Rectangle { color: theme.shade }
    background: Rectangle {
        radius: 10
        color: theme.surface
        border { width: 1; color: theme.border }
    }

    Connections {
        target: guide
        function onChanged() { guide.dialog ? dialog.open() : dialog.close() }
    }

    contentItem: Column {
        Accessible.role: Accessible.Dialog
        Accessible.name: guide.title
        spacing: 16

        SpokenWords { objectName: "dialogTitle"; width: parent.width; text: guide.title; font { pixelSize: theme.title; weight: Font.DemiBold } }
        ScrollArea {
            objectName: "dialogLines"
            width: parent.width
            height: Math.min(implicitHeight, dialog.parent.height - 180 * theme.unit)
            spacing: 16

            FactList { width: parent.width }
            SpokenWords { objectName: "dialogText"; visible: text !== ""; width: parent.width; text: guide.text; wrapMode: Text.Wrap; color: theme.muted }
            LossNotice {
                prefix: "dialog"
                visible: guide.destructive
                width: parent.width
                realDisk: host.realDisks
                risk: guide.risk
                losses: guide.losses
            }
        }
        Row {
            anchors.right: parent.right
            spacing: 10
            PushButton { objectName: "dialogStart"; visible: guide.canStart; destructive: guide.destructive; text: qsTr("Start"); onClicked: guide.start() }
            PushButton { id: closeButton; objectName: "dialogClose"; primary: true; text: qsTr("Close"); onClicked: guide.dismiss() }
        }
    }
}
