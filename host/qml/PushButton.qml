import QtQuick 2.15
import QtQuick.Controls 2.15

AbstractButton {
    id: button

    property bool primary: false
    property bool destructive: false
    property bool small: false

    implicitWidth: label.implicitWidth + (small ? 18 : 28) * theme.unit
    implicitHeight: (small ? 24 : 32) * theme.unit
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: if (!event.isAutoRepeat) button.clicked()
    Keys.onEnterPressed: if (!event.isAutoRepeat) button.clicked()

    background: Rectangle {
        radius: 6
        color: button.destructive ? theme.bad : button.primary ? theme.accent : button.down || button.hovered ? theme.accentSurface : theme.raised
        border { width: button.primary || button.destructive ? 0 : 1; color: theme.border }
        FocusRing { shown: button.activeFocus }
    }
    contentItem: Words {
        id: label
        text: button.text
        font.pixelSize: button.small ? theme.small : theme.normal
        font.weight: Font.DemiBold
        color: button.destructive ? theme.surface : button.primary ? theme.accentText : theme.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
