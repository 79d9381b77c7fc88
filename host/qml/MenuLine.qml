import QtQuick 2.15
import QtQuick.Controls 2.15

// An entry of the menu, with its key.
MenuItem {
    id: line

    property string keys: ""
    property bool choice: false
    property bool chosen: false

    implicitHeight: 30 * theme.unit
    Accessible.role: choice ? Accessible.RadioButton : Accessible.MenuItem
    Accessible.name: text
    Accessible.checked: chosen

    indicator: Rectangle {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 10 * theme.unit
        height: width
        radius: width / 2
        visible: line.choice
        color: line.chosen ? theme.accent : "transparent"
        border { width: 1; color: line.chosen ? theme.accent : theme.muted }
    }
    background: Rectangle {
        color: line.highlighted ? theme.accentSurface : "transparent"
        radius: 4
    }
    contentItem: Item {
        Words {
            anchors { left: parent.left; leftMargin: 24 * theme.unit; right: key.left; verticalCenter: parent.verticalCenter }
            text: line.text
        }
        Words {
            id: key
            anchors { right: parent.right; rightMargin: 6; verticalCenter: parent.verticalCenter }
            text: line.keys
            color: theme.muted
        }
    }
}
