import QtQuick 2.15

InformationDialog {
    objectName: "helpDialog"
    title: qsTr("Keys")
    lines: [
        { term: qsTr("Tab, Shift+Tab"), meaning: qsTr("Next part of the window, previous part.") },
        { term: qsTr("Up, Down"), meaning: qsTr("In the disks: previous disk, next disk. In other lists: scroll.") },
        { term: qsTr("Left, Right"), meaning: qsTr("In the disks: previous entry of the disk, next entry.") },
        { term: qsTr("Home, End"), meaning: qsTr("In a list: start, end.") },
        { term: qsTr("Menu, Shift+F10"), meaning: qsTr("In the disks: open the menu of the entry.") },
        { term: qsTr("Shift+Up, Shift+Down"), meaning: qsTr("In the log: select lines.") },
        { term: qsTr("Ctrl+A, Ctrl+C"), meaning: qsTr("In the log: select all lines, copy the selected lines.") },
        { term: qsTr("Enter, Space"), meaning: qsTr("Press the button or change the switch.") },
        { term: qsTr("Escape"), meaning: qsTr("Close a dialog or the guide, clear the search, decline a recommendation.") },
        { term: qsTr("Ctrl+F"), meaning: qsTr("Search the disks.") },
        { term: qsTr("Ctrl+Q"), meaning: qsTr("Close the window. A question follows if a task is destroying data.") },
        { term: qsTr("F1"), meaning: qsTr("Show this list.") }
    ]
}
