import QtQuick 2.15
import QtQuick.Controls 2.15

AbstractButton {
    id: toggle

    checkable: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: turn()
    Accessible.onPressAction: turn()
    focusPolicy: Qt.StrongFocus
    implicitWidth: knobs.width + 8 + label.implicitWidth
    implicitHeight: 32 * theme.unit
    Keys.onReturnPressed: turn()
    Keys.onEnterPressed: turn()

    function turn() {
        toggle.toggle()
        toggle.toggled()
    }

    background: FocusRing { anchors { topMargin: 0; bottomMargin: 0 } shown: toggle.activeFocus }
    contentItem: Item {
        Rectangle {
            id: knobs
            width: 32 * theme.unit
            height: 18 * theme.unit
            radius: height / 2
            anchors.verticalCenter: parent.verticalCenter
            color: toggle.checked ? theme.accent : theme.raised
            border { width: 1; color: toggle.checked ? theme.accent : theme.muted }

            Rectangle {
                x: (toggle.checked ? 16 : 2) * theme.unit
                y: 2 * theme.unit
                width: 14 * theme.unit
                height: 14 * theme.unit
                radius: height / 2
                color: toggle.checked ? theme.accentText : theme.muted
            }
        }
        Words {
            id: label
            text: toggle.text
            anchors { left: knobs.right; leftMargin: 8; verticalCenter: parent.verticalCenter }
        }
    }
}
