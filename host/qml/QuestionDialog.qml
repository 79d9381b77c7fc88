import QtQuick 2.15
import QtQuick.Controls 2.15

// A question about data that can be lost. The button with the focus keeps the data. A click outside has no effect.
Popup {
    id: dialog

    property Item keepButton

    parent: Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(600 * theme.unit, parent.width - 40)
    padding: 24
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    onOpened: keepButton.forceActiveFocus()
    Overlay.modal: Rectangle { color: theme.shade }
    background: Rectangle {
        radius: 10
        color: theme.surface
        border { width: 2; color: theme.bad }
    }
}
