import QtQuick 2.15
import QtQuick.Controls 2.15

// Filters the disks. Escape clears it; if it is empty, Escape reaches the open guide.
TextField {
    id: field

    objectName: "searchField"
    implicitHeight: 32 * theme.unit
    leftPadding: 10
    rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    font { family: theme.font; pixelSize: theme.normal }
    color: theme.text
    selectionColor: theme.accent
    selectedTextColor: theme.accentText
    selectByMouse: true
    maximumLength: 200
    placeholderText: qsTr("Search disks: name, letter, label, file system")
    placeholderTextColor: theme.muted
    Accessible.name: qsTr("Search disks")
    onTextChanged: shownDisks.text = text
    // Otherwise the shortcut of the open guide would get the key.
    Keys.onShortcutOverride: event.accepted = event.key === Qt.Key_Escape && text !== ""
    Keys.onEscapePressed: text === "" ? event.accepted = false : clear()

    background: Rectangle {
        radius: 6
        color: theme.surface
        border { width: 1; color: theme.border }
        FocusRing { shown: field.activeFocus }
    }
}
