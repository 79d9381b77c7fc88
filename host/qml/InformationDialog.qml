import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15

// A dialog with information: terms and their meanings. It covers the window, so the gate rejects calls. The focus returns when it closes, and a
// question about data closes it.
Popup {
    id: dialog

    property alias title: heading.text
    property var lines: []
    property Item focusBefore: null

    parent: Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(560 * theme.unit, parent.width - 40)
    padding: 24
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    onAboutToShow: { focusBefore = parent.Window.activeFocusItem; host.helpOpen = true }
    onOpened: closeButton.forceActiveFocus()
    onClosed: {
        host.helpOpen = false
        if (focusBefore !== null && focusBefore.visible)
            focusBefore.forceActiveFocus()
    }
    Overlay.modal: Rectangle { color: theme.shade }
    background: Rectangle {
        radius: 10
        color: theme.surface
        border { width: 1; color: theme.border }
    }

    Connections {
        target: confirmation
        function onChanged() { if (confirmation.open) dialog.close() }
    }
    Connections {
        target: interruption
        function onChanged() { if (interruption.open) dialog.close() }
    }
    Connections {
        target: guide
        function onChanged() { if (guide.dialog) dialog.close() }
    }

    contentItem: Column {
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title
        spacing: 16
        Keys.onUpPressed: list.scroll(-40)
        Keys.onDownPressed: list.scroll(40)
        Keys.onPressed: if (event.key === Qt.Key_Home || event.key === Qt.Key_End) list.scroll(event.key === Qt.Key_Home ? -list.lowest : list.lowest)

        Words { id: heading; objectName: "informationTitle"; width: parent.width; font { pixelSize: theme.title; weight: Font.DemiBold } }
        Flickable {
            id: list
            objectName: "informationList"
            width: parent.width
            height: Math.max(0, Math.min(contentHeight, dialog.parent.height - 220 * theme.unit))
            contentHeight: rows.height
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: Scroller {}
            readonly property real lowest: Math.max(0, contentHeight - height)
            function scroll(distance) { contentY = Math.max(0, Math.min(lowest, contentY + distance)) }
            Column {
                id: rows
                width: parent.width - 12
                spacing: 6
                Repeater {
                    model: dialog.lines
                    InformationLine { width: rows.width; term: modelData.term; meaning: modelData.meaning }
                }
            }
        }
        PushButton { id: closeButton; objectName: "informationClose"; anchors.right: parent.right; primary: true; text: qsTr("Close"); onClicked: dialog.close() }
    }
}
