import QtQuick 2.15
import QtQuick.Controls 2.15

// The button for the theme, the help and the description of the program.
PushButton {
    id: button

    signal helpRequested()
    signal aboutRequested()

    readonly property var themes: [{ mode: "system", text: qsTr("Colours of the system") },
                                   { mode: "light", text: qsTr("Light") }, { mode: "dark", text: qsTr("Dark") }]

    objectName: "menuButton"
    text: qsTr("Menu")
    onClicked: menu.visible ? menu.close() : menu.popup(button, button.width - menu.width, button.height + 4)

    Menu {
        id: menu

        objectName: "menu"
        width: 230 * theme.unit
        margins: 4
        verticalPadding: 6
        onClosed: if (button.visible) button.forceActiveFocus()
        background: Rectangle {
            radius: 8
            color: theme.surface
            border { width: 1; color: theme.border }
        }

        Repeater {
            model: button.themes
            MenuLine {
                objectName: "themeItem"
                text: modelData.text
                choice: true
                chosen: theme.mode === modelData.mode
                onTriggered: theme.mode = modelData.mode
            }
        }
        MenuSeparator { contentItem: Rectangle { implicitHeight: 1; color: theme.border } }
        MenuLine { objectName: "helpItem"; text: qsTr("Keys"); keys: "F1"; onTriggered: button.helpRequested() }
        MenuLine { objectName: "aboutItem"; text: qsTr("About"); onTriggered: button.aboutRequested() }
    }
}
