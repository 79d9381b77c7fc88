import QtQuick 2.15
import QtQuick.Controls 2.15

// Shows one pane in a window that is too small for all panes. Each control sets its own role for screen readers, so that
// this is a TabButton.
TabButton {
    id: tab

    property bool current: false
    property bool important: false

    implicitWidth: label.implicitWidth + 24 * theme.unit
    implicitHeight: 30 * theme.unit
    checkable: false
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.selected: current
    Accessible.onPressAction: tab.clicked()
    Keys.onReturnPressed: tab.clicked()
    Keys.onEnterPressed: tab.clicked()

    background: Rectangle {
        radius: 6
        color: tab.current ? theme.surface : tab.important ? theme.accentSurface : "transparent"
        border { width: tab.current ? 1 : 0; color: theme.border }
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 6; bottomMargin: 1 }
            height: 2
            visible: tab.current
            color: theme.accent
        }
        FocusRing { shown: tab.activeFocus; anchors.margins: 0 }
    }
    contentItem: Words {
        id: label
        text: tab.text
        font.pixelSize: theme.small
        font.weight: tab.current ? Font.DemiBold : Font.Normal
        color: tab.current || tab.important ? theme.text : theme.muted
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
