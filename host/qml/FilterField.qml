import QtQuick 2.15
import QtQuick.Controls 2.15

// A small field that filters a list. Escape clears it; if it is empty, Escape reaches the open guide.
TextField {
    id: field

    implicitHeight: 26 * theme.unit
    leftPadding: 8
    rightPadding: 8
    topPadding: 0
    bottomPadding: 0
    verticalAlignment: TextInput.AlignVCenter
    font { family: theme.font; pixelSize: theme.small }
    color: theme.text
    selectionColor: theme.accent
    selectedTextColor: theme.accentText
    selectByMouse: true
    maximumLength: 200
    placeholderTextColor: theme.muted
    Accessible.name: placeholderText
    // Otherwise the shortcut of the open guide would get the key.
    Keys.onShortcutOverride: event.accepted = event.key === Qt.Key_Escape && text !== ""
    Keys.onEscapePressed: text === "" ? event.accepted = false : clear()

    background: Rectangle {
        radius: 6
        color: theme.raised
        border { width: 1; color: theme.border }
        FocusRing { shown: field.activeFocus }
    }
}
